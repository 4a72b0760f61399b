#include "platform/quicktime/Recording.h"

#include <cmath>
#include <system_error>

namespace clipwave {
namespace {

constexpr double kLongestWait = 2;  // for the first picture, in seconds of sound

}  // namespace

Result<std::unique_ptr<Recording>> Recording::start(const Plan& plan) {
  std::optional<MovieWriter::Sound> sound;
  if (plan.soundInputRate) sound = {SoundTrack::kRate, static_cast<int>(SoundTrack::kChannels)};
  Result<std::unique_ptr<MovieWriter>> writer = MovieWriter::open(plan.path, plan.picture, sound);
  if (!writer) return writer.error();
  try {
    return std::unique_ptr<Recording>(new Recording(plan, std::move(*writer)));
  } catch (const std::system_error&) {
    return cocoaError(kFileWriteUnknownError, "The recording could not be started.");
  }
}

Recording::Recording(const Plan& plan, std::unique_ptr<MovieWriter> writer)
    : plan_(plan), thread_(std::make_unique<RecordingThread>(std::move(writer))), earliest_(plan.startedAt) {
  if (plan.soundInputRate) track_.emplace(*plan.soundInputRate, plan.soundIsMaster);
  if (!plan.picture) begin(plan.startedAt);
}

void Recording::begin(double start) {
  start_ = start;
  if (track_) track_->begin(start);
}

void Recording::addSound(CaptureSource::Delivery& delivery) {
  if (!track_) return;
  for (CapturedSound& sound : delivery.sounds) {
    const double time = timeOf(sound.time, sound.deviceTime);
    if (time <= earliest_) continue;
    track_->add(std::move(sound.samples), time);
    if (!start_ && time - earliest_ > kLongestWait) begin(earliest_);
  }
  if (start_) thread_->addSound(track_->take(false));
}

void Recording::addPictures(const CaptureSource::Delivery& delivery) {
  if (!plan_.picture) return;
  hasLost_ = hasLost_ || delivery.hasLostPictures;
  for (const CapturedPicture& picture : delivery.pictures) addPicture(picture);
}

void Recording::addPicture(const CapturedPicture& picture) {
  const double time = timeOf(picture.time, picture.deviceTime);
  if (time < earliest_) return;
  if (!start_) begin(time);
  const double rate = plan_.picture->framesPerSecond;
  const double recordingTime = track_ ? track_->soundTime(time) : time - *start_;
  const std::int64_t place = std::llround(recordingTime * rate);
  if (place <= lastPlace_) return;
  if (hasLost_) dropped_ += place - lastPlace_ - 1;
  hasLost_ = false;
  if (!thread_->addPicture(*picture.frame, static_cast<double>(place) / rate)) ++dropped_;
  lastPlace_ = place;
}

void Recording::pause(double time) {
  pausedAt_ = time;
  if (track_ && start_) thread_->addSound(track_->take(true));
}

void Recording::resume(double time) {
  earliest_ = time;
  if (start_) begin(*start_ + time - pausedAt_);
}

Result<void> Recording::finish() {
  if (!start_) begin(earliest_);
  if (track_) thread_->addSound(track_->take(true));
  return thread_->finish();
}

}  // namespace clipwave
