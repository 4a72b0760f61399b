#include "platform/foundation/Clock.h"

#include <cmath>

namespace clipwave {

Date SystemClock::now() const {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return Date{std::chrono::duration_cast<std::chrono::microseconds>(sinceEpoch).count()};
}

Seconds SystemClock::uptime() const {
  return std::chrono::steady_clock::now().time_since_epoch();
}

void TestClock::advanceTo(Seconds until) {
  if (until <= uptime_) return;
  // From rounded marks, not rounded steps: a thousand ticks of 1/60 second must not drift away from the sum.
  now_.microseconds += std::llround(until.count() * 1e6) - std::llround(uptime_.count() * 1e6);
  uptime_ = until;
}

}  // namespace clipwave
