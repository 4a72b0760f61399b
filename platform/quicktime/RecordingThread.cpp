#include "platform/quicktime/RecordingThread.h"

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/imgutils.h>
}

namespace clipwave {
namespace {

constexpr std::size_t kMostBytes = std::size_t{64} << 20;

}  // namespace

RecordingThread::RecordingThread(std::unique_ptr<MovieWriter> writer)
    : writer_(std::move(writer)), thread_([this] { run(); }) {}

RecordingThread::~RecordingThread() {
  if (thread_.joinable()) static_cast<void>(finish());
}

bool RecordingThread::addPicture(const AVFrame& picture, double time) {
  const int size =
      av_image_get_buffer_size(static_cast<AVPixelFormat>(picture.format), picture.width, picture.height, 1);
  const auto bytes = static_cast<std::size_t>(std::max(size, 0));
  {
    const std::lock_guard lock(mutex_);
    if (!items_.empty() && bytes_ + bytes > kMostBytes) return false;
  }
  MovieFrame frame(av_frame_clone(&picture));
  if (!frame) return false;
  add(Picture{std::move(frame), time}, bytes);
  return true;
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
    lock.unlock();
    std::optional<Error> error = write(item);
    recordedTime_ = writer_->recordedTime();
    lock.lock();
    bytes_ -= bytes;
    if (!error) continue;
    error_ = std::move(error);
    items_.clear();
    bytes_ = 0;
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
