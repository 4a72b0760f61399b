// What time it is, for calendars and for timers; a test turns a clock of its own.
#pragma once

#include <chrono>

#include "platform/foundation/Date.h"

namespace clipwave {

using Seconds = std::chrono::duration<double>;

class Clock {
 public:
  virtual ~Clock() = default;
  // The wall clock.
  virtual Date now() const = 0;
  // Time that only ever goes forward, from an arbitrary start; for timers and time-outs.
  virtual Seconds uptime() const = 0;
  // False for a clock that is turned by hand: a run loop then turns it instead of sleeping.
  virtual bool runsByItself() const = 0;
  // Moves a hand-turned clock forward to `until`; ignored by a clock that runs by itself.
  virtual void advanceTo(Seconds until) = 0;
};

class SystemClock final : public Clock {
 public:
  Date now() const override;
  Seconds uptime() const override;
  bool runsByItself() const override { return true; }
  void advanceTo(Seconds) override {}
};

// Stands still until it is turned. A run loop on this clock never sleeps for a timer: when nothing else is
// due it turns the clock to the next timer at once.
class TestClock final : public Clock {
 public:
  explicit TestClock(Date start = Date::fromSeconds(1'236'000'000)) : now_(start) {}
  Date now() const override { return now_; }
  Seconds uptime() const override { return uptime_; }
  bool runsByItself() const override { return false; }
  void advanceTo(Seconds until) override;
  void tick(Seconds by) { advanceTo(uptime_ + by); }

 private:
  Date now_;
  Seconds uptime_{0};
};

}  // namespace clipwave
