#include "platform/quicktime/RecordingThread.h"

#include <algorithm>
#include <ctime>

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/imgutils.h>
}

namespace clipwave {
namespace {

constexpr std::size_t kMostBytes = std::size_t{64} << 20;
// Of work that waits. More would be missing after a kill, and be waited for at the end; a picture of a size
// that the machine cannot keep up with is better left out.
constexpr double kLongestBacklog = 1;  // seconds
constexpr double kSmoothing = 0.2;

// The processor's time: waiting for a slow disk is caught up with afterwards, slow work is not.
double workingTime() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

}  // namespace

RecordingThread::RecordingThread(std::unique_ptr<MovieWriter> writer, double secondsPerPicture)
    : writer_(std::move(writer)), secondsPerPicture_(secondsPerPicture), thread_([this] { run(); }) {}

RecordingThread::~RecordingThread() {
  if (thread_.joinable()) static_cast<void>(finish());
}

bool RecordingThread::addPicture(const AVFrame& picture, double time) {
  const int size =
      av_image_get_buffer_size(static_cast<AVPixelFormat>(picture.format), picture.width, picture.height, 1);
  const auto bytes = static_cast<std::size_t>(std::max(size, 0));
  {
    const std::lock_guard lock(mutex_);
    if (!hasRoomFor(bytes)) return false;
  }
  MovieFrame frame(av_frame_clone(&picture));
  if (!frame) return false;
  add(Picture{std::move(frame), time}, bytes);
  return true;
}

bool RecordingThread::hasRoomFor(std::size_t bytes) const {
  if (pictures_ > 0 && static_cast<double>(pictures_ + 1) * secondsPerPicture_ > kLongestBacklog)
    return false;
  return items_.empty() || bytes_ + bytes <= kMostBytes;
}

// A gap in the sound would put all that follows out of step, and it takes little room.
void RecordingThread::addSound(std::vector<float> samples) {
  if (!samples.empty()) {
    const std::size_t bytes = samples.size() * sizeof(float);
    add(std::move(samples), bytes);
  }
}

void RecordingThread::add(Item item, std::size_t bytes) {
  const std::lock_guard lock(mutex_);
  if (error_) return;
  if (std::holds_alternative<Picture>(item)) ++pictures_;
  items_.emplace_back(std::move(item), bytes);
  bytes_ += bytes;
  changed_.notify_one();
}

std::optional<Error> RecordingThread::error() const {
  const std::lock_guard lock(mutex_);
  return error_;
}

Result<void> RecordingThread::finish() {
  if (thread_.joinable()) {
    {
      const std::lock_guard lock(mutex_);
      isEnding_ = true;
    }
    changed_.notify_one();
    thread_.join();
  }
  return outcome_;
}

void RecordingThread::run() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return !items_.empty() || isEnding_; });
    if (items_.empty()) break;
    const Item item = std::move(items_.front().first);
    const std::size_t bytes = items_.front().second;
    items_.pop_front();
    const bool isPicture = std::holds_alternative<Picture>(item);
    if (isPicture) --pictures_;
    lock.unlock();
    const double begun = workingTime();
    std::optional<Error> error = write(item);
    const double worked = workingTime() - begun;
    recordedTime_ = writer_->recordedTime();
    lock.lock();
    bytes_ -= bytes;
    if (isPicture) secondsPerPicture_ += (worked - secondsPerPicture_) * kSmoothing;
    if (!error) continue;
    error_ = std::move(error);
    items_.clear();
    bytes_ = pictures_ = 0;
  }
  lock.unlock();
  Result<void> outcome = writer_->finish();
  recordedTime_ = writer_->recordedTime();
  lock.lock();
  outcome_ = std::move(outcome);
}

std::optional<Error> RecordingThread::write(const Item& item) {
  if (const auto* const picture = std::get_if<Picture>(&item)) {
    const Result<bool> isTaken = writer_->addPicture(*picture->frame, picture->time);
    return isTaken ? std::optional<Error>() : isTaken.error();
  }
  const Result<void> isTaken = writer_->addSound(std::get<std::vector<float>>(item));
  return isTaken ? std::optional<Error>() : isTaken.error();
}

}  // namespace clipwave
