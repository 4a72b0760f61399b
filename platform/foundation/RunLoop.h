// The main thread's event loop: timers, deferred calls and watched descriptors, in a default and a modal
// mode.
#pragma once

#include <functional>
#include <memory>

#include "platform/foundation/Clock.h"

namespace clipwave {

// A scheduled call. The run loop keeps a valid timer alive; whoever scheduled it may keep it to invalidate
// it.
class Timer {
 public:
  virtual ~Timer() = default;
  virtual bool isValid() const = 0;
  // The timer never fires again. What its function captured is released at the latest when the current call
  // of it has returned. Safe inside its own function and more than once.
  virtual void invalidate() = 0;
};

// Stops the watching when it is destroyed. Must not outlive the run loop.
class DescriptorWatch {
 public:
  virtual ~DescriptorWatch() = default;
};

class RunLoop {
 public:
  // Default: everything is delivered. Modal (while runModal is on the stack): timers, deferred calls, and
  // watches made for the default mode wait; only watches and messages made for both modes come through.
  enum class Mode { Default, Modal };
  enum class Delivery { DefaultOnly, DefaultAndModal };
  enum class Readiness { Readable, Writable };
  using Function = std::function<void()>;

  virtual ~RunLoop() = default;

  virtual const Clock& clock() const = 0;
  // Calls `function` once after `interval` (0: in the next turn at the earliest, never inside this call).
  virtual std::shared_ptr<Timer> scheduleTimer(Seconds interval, Function function) = 0;
  // Calls `function` every `interval` (> 0). Turns that were missed are not made up for.
  virtual std::shared_ptr<Timer> scheduleRepeatingTimer(Seconds interval, Function function) = 0;
  // Calls `function` in the next pass of the loop; calls deferred by deferred calls wait for the pass after
  // that. Calls come in the order in which they were deferred, before the timers of that pass.
  virtual void performLater(Function function) = 0;
  // Calls `function` from the loop, as a call deferred in the order of arrival; from any thread. The only
  // operation that another thread may use; the loop must outlive that thread's use of it.
  virtual void performFromAnyThread(Function function) = 0;
  // Calls `function` in each turn in which `descriptor` is ready, closed at its other end, or broken; not
  // again while it is being called. The descriptor stays the caller's.
  virtual std::unique_ptr<DescriptorWatch> watch(int descriptor, Readiness readiness, Function function,
                                                 Delivery delivery = Delivery::DefaultOnly) = 0;

  // Runs turns until stop() is called, which ends the innermost run(); a modal run within it goes on to its
  // own end. May be nested; within a modal run the mode stays modal.
  virtual void run() = 0;
  virtual void stop() = 0;
  // Runs in modal mode until stopModal(), which ends the innermost. May be nested; modes are restored on
  // return.
  virtual void runModal() = 0;
  virtual void stopModal() = 0;
  virtual Mode mode() const = 0;

  // One turn: the calls deferred before it, then the timers that were due at its start (whether a timer is
  // still valid is asked when it fires), then ready descriptors. Waits up to `wait` for something to do.
  // Answers whether anything was called.
  virtual bool runOnce(Seconds wait) = 0;
  // Whether a deferred call or a timer of zero remaining delay is waiting; false in modal mode, which
  // delivers none.
  virtual bool hasPendingWork() const = 0;
  // Turns while there are deferred calls or due timers, without waiting; ends at the latest after `turns`
  // turns.
  void runUntilIdle(int turns = 10'000) {
    while (turns-- > 0 && hasPendingWork()) runOnce(Seconds(0));
  }
};

// The loop of the companion and the tests, on poll(). `clock` must outlive the loop. On a clock that is
// turned by hand it does not sleep while a timer waits: a turn that finds nothing to do turns the clock to
// the next timer, or by `wait` when that is sooner.
std::unique_ptr<RunLoop> makeRunLoop(Clock& clock);

}  // namespace clipwave
