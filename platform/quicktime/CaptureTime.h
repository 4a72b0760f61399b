// The time that captured pictures and sound are stamped with. Internal to this room.
#pragma once

#include <chrono>

namespace clipwave {

// Seconds of the system's clock that only ever goes forward.
inline double captureTime() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace clipwave
