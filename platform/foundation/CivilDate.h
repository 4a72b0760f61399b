// The Gregorian calendar, carried on into the past and the future: dates as days, and days as dates.
#pragma once

#include <cstdint>

namespace clipwave {

// Years are 64 bits: the standard's calendar ends at the year 32767, long before our dates do.
struct CivilDate {
  std::int64_t year;
  int month;  // 1 to 12
  int day;    // 1 to 31
};

// Days since 1970-01-01. A day or month beyond its range runs on into the next one.
std::int64_t daysFromCivil(const CivilDate& date);
CivilDate civilFromDays(std::int64_t days);

}  // namespace clipwave
