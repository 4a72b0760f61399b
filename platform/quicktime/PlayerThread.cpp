#include "platform/quicktime/PlayerThread.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "platform/foundation/FileManager.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

using std::chrono::steady_clock;
using Interval = std::chrono::duration<double>;

constexpr double kSoundLead = 0.6;          // seconds of sound kept ready for the device
constexpr double kSoundTolerance = 0.03;    // by which time stamps may be off without being followed
constexpr double kSilenceAtOnce = 0.25;     // at most, so that a damaged time stamp asks for little memory
constexpr double kPictureTolerance = 5e-4;  // time stamps are rounded to milliseconds in some containers
constexpr double kLongestStep = 0.05;       // also how often time is told
constexpr double kShowDuringSearch = 0.1;   // how long a search keeps the old picture up
constexpr double kLate = 0.25;              // pictures this late are decoded with less care
constexpr double kCatchUp = 0.1;            // and shown nevertheless after this long
// How far before the target a search begins anew where the file's index leads too far, and at last at 0.
constexpr double kStepsBack[] = {0, 3, 15, 1e9};

double secondsSince(steady_clock::time_point time) {
  return Interval(steady_clock::now() - time).count();
}

int isQuitting(void* link) {
  return static_cast<const PlayerLink*>(link)->hasQuit() ? 1 : 0;
}

}  // namespace

void PlayerThread::run() {
  try {
    if (!open()) return;
    TimePoint wake = TimePoint::max();
    for (;;) {
      const PlayerWishes wishes = link_.awaitWishes(wake);
      if (wishes.quit) return;
      obey(wishes);
      wake = playing_ ? step() : TimePoint::max();
      link_.setMoment({now(), steady_clock::now(), playing_, serial_});
    }
  } catch (const std::exception& exception) {
    const std::string reason = exception.what();
    link_.report([&](PlayerNews& news) {
      news.error = cocoaError(kFileReadUnknownError,
                              filledIn(localized("Movies", "The movie cannot be played: %1."), {reason}));
    });
  }
}

bool PlayerThread::open() {
  Result<std::unique_ptr<MovieReader>> reader = MovieReader::open(path_, {isQuitting, &link_});
  if (!reader) {
    link_.report([&](PlayerNews& news) { news.error = reader.error(); });
    return false;
  }
  reader_ = std::move(*reader);
  shape_.pixelAspect = reader_->pixelAspect();
  shape_.quarterTurns = reader_->quarterTurns();
  link_.report([&](PlayerNews& news) {
    news.opened = PlayerFacts{reader_->duration(), reader_->hasPicture(), reader_->hasSound(),
                              reader_->naturalWidth(), reader_->naturalHeight()};
  });
  return true;
}

void PlayerThread::obey(const PlayerWishes& wishes) {
  serial_ = wishes.serial;
  volume_ = wishes.volume;
  if (output_) output_->setVolume(volume_);
  const bool isNewSize = shape_.areaWidth != wishes.frameWidth || shape_.areaHeight != wishes.frameHeight;
  shape_.areaWidth = wishes.frameWidth;
  shape_.areaHeight = wishes.frameHeight;
  if (wishes.time)
    goTo(*wishes.time);
  else if (isNewSize)
    show();
  // Another time is wished already; what else is to be done comes after it.
  if (link_.isOvertaken()) return;
  if (wishes.playing && !playing_) start();
  if (!wishes.playing && playing_) pause();
}

void PlayerThread::goTo(double target) {
  target = std::max(target, 0.0);
  if (reader_->duration() > 0) target = std::min(target, reader_->duration());
  if (output_) output_->setRunning(false);
  atEnd_ = false;
  if (!reader_->hasPicture()) {
    reader_->seek(target);
  } else if (!findPicture(target)) {
    if (shown_ && secondsSince(shownAt_) > kShowDuringSearch) show();
    return;
  }
  begin(target);
  show();
  if (!playing_) return;
  feedSound();
  if (output_) output_->setRunning(true);
}

// False when the search was overtaken by another one.
bool PlayerThread::findPicture(double target) {
  // Sound that was decoded beyond the target is not to be had again without seeking.
  if (shown_ && soundPosition_ <= target && reader_->isAhead(shown_->time, target)) {
    begin(target);
    return decodeTo(target, true) != Search::Overtaken;
  }
  begin(target);
  for (const double back : kStepsBack) {
    const double from = std::max(target - back, 0.0);
    if (!reader_->seek(from)) continue;
    ahead_.reset();
    const Search search = decodeTo(target, false);
    if (search == Search::Overtaken) return false;
    if (search == Search::Found || from == 0) break;
  }
  return true;
}

// Leaves the picture of that time in shown_ and the one after it in ahead_. `found` says whether shown_ holds
// one from before that time already.
PlayerThread::Search PlayerThread::decodeTo(double target, bool found) {
  for (;;) {
    if (!ahead_) ahead_ = reader_->nextPicture();
    if (!ahead_) return found ? Search::Found : Search::Nothing;
    if (ahead_->time > target + kPictureTolerance) break;
    shown_ = std::exchange(ahead_, std::nullopt);
    found = true;
    if (link_.isOvertaken()) return Search::Overtaken;
  }
  if (found) return Search::Found;
  // The movie's first picture may come after its beginning.
  shown_ = std::exchange(ahead_, std::nullopt);
  return Search::OnlyLater;
}

// Sets the clock, and lets the sound begin anew there.
void PlayerThread::begin(double position) {
  position_ = soundBase_ = soundPosition_ = position;
  soundIsNew_ = true;
  waitingSound_.reset();
  startedAt_ = steady_clock::now();
  if (output_) output_->clear();
}

void PlayerThread::start() {
  if (atEnd_) goTo(0);
  prepareSound();
  feedSound();
  startedAt_ = steady_clock::now();
  playing_ = true;
  if (output_) output_->setRunning(true);
}

void PlayerThread::pause() {
  position_ = now();
  playing_ = false;
  if (output_) output_->setRunning(false);
}

// The device is asked for when the first movie is played: one that is only looked at needs none.
void PlayerThread::prepareSound() {
  if (std::exchange(soundIsPrepared_, true) || !reader_->hasSound()) return;
  output_ = SoundOutput::open();
  if (output_)
    output_->setVolume(volume_);
  else
    reader_->ignoreSound();
}

PlayerThread::TimePoint PlayerThread::step() {
  feedSound();
  showDuePictures();
  if (hasEnded()) {
    finish();
    return TimePoint::max();
  }
  if (secondsSince(toldTimeAt_) >= kLongestStep) {
    toldTimeAt_ = steady_clock::now();
    link_.report([](PlayerNews& news) { news.timeHasChanged = true; });
  }
  const double wait = ahead_ ? std::clamp(ahead_->time - now(), 0.001, kLongestStep) : kLongestStep / 2;
  return steady_clock::now() + std::chrono::duration_cast<steady_clock::duration>(Interval(wait));
}

void PlayerThread::feedSound() {
  while (output_ && output_->waitingSeconds() < kSoundLead && !link_.isOvertaken()) {
    auto sound = waitingSound_ ? std::exchange(waitingSound_, std::nullopt) : reader_->nextSound();
    if (sound) {
      appendSound(std::move(*sound));
    } else if (reader_->soundHasEnded()) {
      output_->finish();
      return;
    } else {
      // The file holds none for a while; its pictures go on in silence.
      output_->appendSilence(kSilenceAtOnce);
      soundPosition_ += kSilenceAtOnce;
    }
  }
}

// Puts the sound where it belongs: what is past is cut off, gaps are filled.
void PlayerThread::appendSound(MovieReader::Sound sound) {
  const double length = static_cast<double>(sound.samples.size()) / kSoundChannels / kSoundRate;
  const double offset = sound.time - soundPosition_;
  std::size_t skipped = 0;
  if (offset < (soundIsNew_ ? 0 : -kSoundTolerance)) {
    if (-offset >= length) return;
    skipped = static_cast<std::size_t>(std::lround(-offset * kSoundRate)) * kSoundChannels;
  } else if (offset > (soundIsNew_ ? 0 : kSoundTolerance)) {
    const double gap = std::min(offset, kSilenceAtOnce);
    output_->appendSilence(gap);
    soundPosition_ += gap;
    waitingSound_ = std::move(sound);
    soundIsNew_ = true;
    return;
  }
  const auto samples = std::span(sound.samples).subspan(std::min(skipped, sound.samples.size()));
  output_->append(samples);
  soundPosition_ += static_cast<double>(samples.size()) / kSoundChannels / kSoundRate;
  soundIsNew_ = false;
}

void PlayerThread::showDuePictures() {
  if (!reader_->hasPicture()) return;
  const TimePoint began = steady_clock::now();
  const double due = now();
  bool isNew = false;
  while (!link_.isOvertaken() && secondsSince(began) < kCatchUp) {
    if (!ahead_) ahead_ = reader_->nextPicture();
    if (!ahead_ || ahead_->time > due + kPictureTolerance) break;
    shown_ = std::exchange(ahead_, std::nullopt);
    isNew = true;
  }
  if (!isNew) return;
  reader_->setHurried(now() - shown_->time > kLate);
  show();
}

void PlayerThread::show() {
  if (!shown_) return;
  auto buffer = scaler_.scaled(*shown_->frame, shape_);
  if (!buffer) return;
  buffer->time = shown_->time;
  shownAt_ = steady_clock::now();
  link_.report([&](PlayerNews& news) { news.picture = std::move(buffer); });
}

bool PlayerThread::hasEnded() const {
  return reader_->pictureHasEnded() && !ahead_ && reader_->soundHasEnded() && !waitingSound_ &&
         now() >= contentEnd();
}

void PlayerThread::finish() {
  const bool isBroken = (reader_->hasPicture() || output_) && reader_->hasBrokenOff(contentEnd());
  pause();
  position_ = isBroken || reader_->duration() <= 0 ? contentEnd() : reader_->duration();
  atEnd_ = true;
  std::optional<Error> error;
  if (isBroken) {
    error =
        cocoaError(kFileReadUnknownError,
                   filledIn(localized("Movies", "The movie “%1” is damaged: it breaks off before its end."),
                            {lastPathComponent(path_)}));
  }
  link_.setMoment({position_, steady_clock::now(), false, serial_});
  link_.reportStop(serial_, std::move(error));
}

// How far the file's own pictures and sound go; for one that can be neither seen nor heard here, its length.
double PlayerThread::contentEnd() const {
  if (!reader_->hasPicture() && !output_) return reader_->duration();
  return std::max(shown_ ? shown_->time + shown_->duration : 0, output_ ? soundPosition_ : 0);
}

double PlayerThread::now() const {
  if (!playing_) return position_;
  return output_ ? soundBase_ + output_->heardSeconds() : position_ + secondsSince(startedAt_);
}

}  // namespace clipwave
