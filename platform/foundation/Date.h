// A point in time, independent of calendars and zones.
#pragma once

#include <compare>
#include <cstdint>

namespace clipwave {

// Microseconds since 1970-01-01T00:00:00Z (leap seconds not counted). Cheap to copy and to compare.
struct Date {
  std::int64_t microseconds = 0;

  static constexpr Date fromSeconds(std::int64_t seconds) { return Date{seconds * 1'000'000}; }
  // Whole seconds, rounded towards the past, so that dates before 1970 keep their calendar second.
  constexpr std::int64_t wholeSeconds() const {
    const std::int64_t quotient = microseconds / 1'000'000;
    return microseconds % 1'000'000 < 0 ? quotient - 1 : quotient;
  }
  constexpr auto operator<=>(const Date&) const = default;
};

}  // namespace clipwave
