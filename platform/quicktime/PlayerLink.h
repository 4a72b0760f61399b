// What passes between a movie player on the main thread and the thread that plays. Internal to this room.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "platform/foundation/Error.h"
#include "platform/foundation/RunLoop.h"
#include "platform/quicktime/PixelBuffer.h"

namespace clipwave {

struct PlayerFacts {
  double duration = 0;
  bool hasVideo = false;
  bool hasSound = false;
  int naturalWidth = 0;
  int naturalHeight = 0;
};

// What the main thread wants; the latest counts.
struct PlayerWishes {
  std::uint64_t serial = 0;  // goes up with each change of `playing` or `time`
  bool playing = false;
  std::optional<double> time = 0.0;
  int frameWidth = 0;
  int frameHeight = 0;
  float volume = 1;
  bool quit = false;
};

// What the main thread is to be told; what is newer replaces what was not fetched yet.
struct PlayerNews {
  std::optional<PlayerFacts> opened;
  std::optional<PixelBuffer> picture;
  bool timeHasChanged = false;
  std::optional<std::uint64_t> stopped;  // under the wishes with this serial
  std::optional<Error> error;
};

// Where the movie was at a moment.
struct PlayerMoment {
  double time = 0;
  std::chrono::steady_clock::time_point at;
  bool isRunning = false;
  std::uint64_t serial = 0;  // of the wishes that had been served
};

class PlayerLink : public std::enable_shared_from_this<PlayerLink> {
 public:
  using Receiver = std::function<void(PlayerNews)>;
  using TimePoint = std::chrono::steady_clock::time_point;

  // The receiver is called from the run loop until disconnect().
  PlayerLink(RunLoop& runLoop, Receiver receiver) : runLoop_(runLoop), receiver_(std::move(receiver)) {}

  // On the main thread.
  void change(const std::function<void(PlayerWishes&)>& function);
  PlayerMoment moment() const;
  bool isConnected() const { return receiver_ != nullptr; }
  void disconnect();

  // On the playing thread. Waits until the wishes have changed since the last call, or `until`; takes the
  // wished time out of them.
  PlayerWishes awaitWishes(TimePoint until);
  // Whether another time is wished by now, or the end; cheap.
  bool isOvertaken() const { return overtaken_; }
  bool hasQuit() const { return quit_; }
  void setMoment(const PlayerMoment& moment);
  void report(const std::function<void(PlayerNews&)>& function);
  // The playing has come to its end, by an error or without one. Of no effect when the wishes have changed.
  void reportStop(std::uint64_t serial, std::optional<Error> error);

 private:
  void deliver();

  RunLoop& runLoop_;
  Receiver receiver_;  // main thread only
  std::atomic<bool> overtaken_{false};
  std::atomic<bool> quit_{false};
  mutable std::mutex mutex_;  // guards all that follows
  std::condition_variable changed_;
  bool hasChanged_ = true;
  PlayerWishes wishes_;
  PlayerMoment moment_;
  PlayerNews news_;
  bool isDeliveryDue_ = false;
};

}  // namespace clipwave
