#include "platform/quicktime/Recording.h"

#include <algorithm>
#include <cmath>
#include <system_error>

extern "C" {
#include <libavutil/frame.h>
}

#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

constexpr double kLongestWait = 2;          // for the first picture, in seconds of sound
constexpr double kSecondsPerPixel = 30e-9;  // of a movie's picture, to scale and to encode it

double likelyWork(const Recording::Plan& plan) {
  return plan.picture ? kSecondsPerPixel * plan.picture->width * plan.picture->height : 0;
}

}  // namespace

Result<std::unique_ptr<Recording>> Recording::start(const Plan& plan) {
  std::optional<MovieWriter::Sound> sound;
  if (plan.soundInputRate) sound = {SoundTrack::kRate, static_cast<int>(SoundTrack::kChannels)};
  Result<std::unique_ptr<MovieWriter>> writer = MovieWriter::open(plan.path, plan.picture, sound);
  if (!writer) return writer.error();
  try {
    return std::unique_ptr<Recording>(new Recording(plan, std::move(*writer)));
  } catch (const std::system_error&) {
    return cocoaError(kFileWriteUnknownError, localized("Recording", "The recording could not be started."));
  }
}

Recording::Recording(const Plan& plan, std::unique_ptr<MovieWriter> writer)
    : plan_(plan),
      thread_(std::make_unique<RecordingThread>(std::move(writer), likelyWork(plan))),
      earliest_(plan.startedAt) {
  if (plan.soundInputRate) track_.emplace(*plan.soundInputRate, plan.soundIsMaster);
  if (!plan.picture) begin(plan.startedAt);
}

void Recording::begin(double start) {
  start_ = start;
  if (track_) track_->begin(start);
}

void Recording::beginWithoutPicture() {
  const double rate = plan_.picture ? plan_.picture->framesPerSecond : 1;
  begin(earliest_ - static_cast<double>(firstPlace_) / rate);
}

// Where the sound is the master, the pictures' time follows from it; but to the writer the pictures go first:
// sound that is far ahead would make it show the last picture on and on.
void Recording::add(CaptureSource::Delivery& sound, const CaptureSource::Delivery& pictures) {
  std::vector<float> samples;
  if (track_) {
    takeSound(sound);
    if (start_) samples = track_->take(false);
  }
  if (plan_.picture) {
    if (pictures.hasLostPictures) {
      handOnCandidate();  // which came before the lost ones
      hasLost_ = true;
    }
    for (const CapturedPicture& picture : pictures.pictures) addPicture(picture);
  }
  thread_->addSound(std::move(samples));
}

void Recording::takeSound(CaptureSource::Delivery& delivery) {
  for (CapturedSound& sound : delivery.sounds) {
    const double time = timeOf(sound.time, sound.deviceTime);
    if (time <= earliest_) continue;
    track_->add(std::move(sound.samples), time);
    if (!start_ && time - earliest_ > kLongestWait) beginWithoutPicture();
  }
}

// A picture takes the place that it is nearest to, and of several the nearest one does.
void Recording::addPicture(const CapturedPicture& picture) {
  const double time = timeOf(picture.time, picture.deviceTime);
  if (time < earliest_) return;
  const double rate = plan_.picture->framesPerSecond;
  if (!start_) begin(time - static_cast<double>(firstPlace_) / rate);
  const double exact = (track_ ? track_->soundTime(time) : time - *start_) * rate;
  const std::int64_t place = std::llround(exact);
  const double distance = std::abs(exact - static_cast<double>(place));
  if (place < nextPlace_ || (candidate_ && place == candidatePlace_ && distance >= candidateDistance_))
    return;
  if (place != candidatePlace_) handOnCandidate();
  if (place < nextPlace_) return;
  candidate_.reset(av_frame_clone(picture.frame.get()));
  candidatePlace_ = place;
  candidateDistance_ = distance;
}

void Recording::handOnCandidate() {
  if (!candidate_) return;
  if (hasLost_) dropped_ += candidatePlace_ - nextPlace_;
  hasLost_ = false;
  const double time = static_cast<double>(candidatePlace_) / plan_.picture->framesPerSecond;
  if (!thread_->addPicture(*candidate_, time)) ++dropped_;
  candidate_.reset();
  nextPlace_ = candidatePlace_ + 1;
}

void Recording::pause(double time) {
  pausedAt_ = time;
  handOnCandidate();
  if (track_ && start_) thread_->addSound(track_->take(true));
}

// What comes next stands behind all that there is, the first picture on its place.
void Recording::resume(double time) {
  earliest_ = time;
  if (!start_) return;
  if (!plan_.picture) return begin(*start_ + time - pausedAt_);
  const double reached = (pausedAt_ - *start_) * plan_.picture->framesPerSecond;
  firstPlace_ = std::max(nextPlace_, static_cast<std::int64_t>(std::ceil(reached)));
  start_.reset();
}

Result<void> Recording::finish() {
  if (!start_) beginWithoutPicture();
  handOnCandidate();
  if (track_) thread_->addSound(track_->take(true));
  return thread_->finish();
}

}  // namespace clipwave
