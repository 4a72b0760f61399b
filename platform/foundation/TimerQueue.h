// The timers and deferred calls of a run loop: what is due, in which order, and in which mode. Shared by the
// run loops, this room's and the desktop's.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/foundation/RunLoop.h"

namespace clipwave {

// What every run loop shares, whatever it waits with. Main thread only, but for performFromAnyThread.
class TimerQueue {
 public:
  using Function = RunLoop::Function;

  // `wake` is called when the loop has to look anew without being asked by its own thread; it is called on
  // whichever thread brought the work, and must only rouse the loop. `clock` must outlive the queue.
  TimerQueue(const Clock& clock, Function wake);
  // Every timer becomes invalid.
  ~TimerQueue();
  TimerQueue(const TimerQueue&) = delete;
  TimerQueue& operator=(const TimerQueue&) = delete;

  // As in RunLoop.
  std::shared_ptr<Timer> scheduleTimer(Seconds interval, Function function);
  std::shared_ptr<Timer> scheduleRepeatingTimer(Seconds interval, Function function);
  void performLater(Function function);
  void performFromAnyThread(Function function);

  // One pass in default mode: the calls deferred before it, then the timers that were due at its start.
  // Nothing in modal mode. May be called again from within a call; that pass then takes over what this one
  // has left. Answers whether anything was called.
  bool runDue();
  // Whether runDue() would call something now; false in modal mode.
  bool hasDue() const;
  // When the next timer fires, in the clock's uptime; nothing without timers and in modal mode.
  std::optional<Seconds> nextFireTime() const;

  // Modal mode lasts from the first enterModal to the leaveModal that answers it.
  void enterModal() { ++modalDepth_; }
  void leaveModal() { --modalDepth_; }
  RunLoop::Mode mode() const { return modalDepth_ > 0 ? RunLoop::Mode::Modal : RunLoop::Mode::Default; }

 private:
  class Entry;
  struct Timers;
  struct Deferred {
    std::uint64_t number;
    Function function;
  };

  std::shared_ptr<Timer> schedule(Seconds delay, Seconds interval, Function function);
  void takeCallsFromThreads();
  bool runDeferred(std::uint64_t before);
  bool fire(const std::shared_ptr<Entry>& timer, Seconds passStart);

  const Clock& clock_;
  Function wake_;
  int modalDepth_ = 0;
  std::shared_ptr<Timers> timers_;
  std::deque<Deferred> deferred_;
  std::uint64_t nextDeferred_ = 0;
  mutable std::mutex mutex_;  // guards callsFromThreads_ and nothing else
  std::vector<Function> callsFromThreads_;
};

}  // namespace clipwave
