// A thread that encodes and writes a recording. Internal to this room.
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <variant>
#include <vector>

#include "platform/quicktime/MovieWriter.h"

namespace clipwave {

class RecordingThread {
 public:
  // `secondsPerPicture`: how much work one is likely to be; what it is in fact shows later.
  RecordingThread(std::unique_ptr<MovieWriter> writer, double secondsPerPicture);
  // Finishes the recording where that was not done.
  ~RecordingThread();
  RecordingThread(const RecordingThread&) = delete;
  RecordingThread& operator=(const RecordingThread&) = delete;

  // False when there is no room for it, or the thread is behind with those before; the picture's pixels are
  // shared, not copied.
  bool addPicture(const AVFrame& picture, double time);
  void addSound(std::vector<float> samples);
  // What ended the writing before its time.
  std::optional<Error> error() const;
  double recordedTime() const { return recordedTime_; }
  // Waits until everything is written.
  Result<void> finish();

 private:
  struct Picture {
    MovieFrame frame;
    double time = 0;
  };
  using Item = std::variant<Picture, std::vector<float>>;
  void run();
  void add(Item item, std::size_t bytes);
  bool hasRoomFor(std::size_t bytes) const;
  std::optional<Error> write(const Item& item);

  const std::unique_ptr<MovieWriter> writer_;  // the thread's own while it runs
  std::atomic<double> recordedTime_{0};
  mutable std::mutex mutex_;  // guards all that follows
  std::condition_variable changed_;
  std::deque<std::pair<Item, std::size_t>> items_;
  std::size_t bytes_ = 0;
  std::size_t pictures_ = 0;  // of the items
  double secondsPerPicture_;  // of work
  bool isEnding_ = false;
  std::optional<Error> error_;
  Result<void> outcome_;
  std::thread thread_;
};

}  // namespace clipwave
