#include "platform/foundation/CivilDate.h"

namespace clipwave {
namespace {

// The calendar repeats itself after 400 years. An era begins on 1 March, which puts the leap day at the end
// of its year.
constexpr std::int64_t kDaysPerEra = 146'097;
constexpr std::int64_t kFirstEraToEpoch = 719'468;  // days from 0000-03-01 to 1970-01-01

std::int64_t floorDivision(std::int64_t a, std::int64_t b) {
  return a / b - (a % b < 0 ? 1 : 0);
}

}  // namespace

std::int64_t daysFromCivil(const CivilDate& date) {
  const std::int64_t year = date.month <= 2 ? date.year - 1 : date.year;
  const std::int64_t era = floorDivision(year, 400);
  const std::int64_t yearOfEra = year - era * 400;
  const std::int64_t dayOfYear = (153 * (date.month + (date.month > 2 ? -3 : 9)) + 2) / 5 + date.day - 1;
  return era * kDaysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - kFirstEraToEpoch;
}

CivilDate civilFromDays(std::int64_t days) {
  days += kFirstEraToEpoch;
  const std::int64_t era = floorDivision(days, kDaysPerEra);
  const std::int64_t dayOfEra = days - era * kDaysPerEra;
  const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
  const auto dayOfYear = static_cast<int>(dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100));
  const int monthOfYear = (5 * dayOfYear + 2) / 153;
  const int month = monthOfYear + (monthOfYear < 10 ? 3 : -9);
  return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, dayOfYear - (153 * monthOfYear + 2) / 5 + 1};
}

}  // namespace clipwave
