#include "platform/foundation/TimeZone.h"

#include <date/tz.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "platform/foundation/CivilDate.h"

namespace clipwave {
namespace {

constexpr std::int64_t kSecondsPerDay = 86'400;
constexpr std::array<std::string_view, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                       "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};

// The database, or null on a machine that has none: the library throws then, at every try.
const date::tzdb* database() {
  try {
    return &date::get_tzdb();
  } catch (const std::exception&) {
    return nullptr;
  }
}

const date::time_zone* zoneNamed(std::string_view name) {
  const date::tzdb* zones = database();
  if (zones == nullptr) return nullptr;
  const auto found = std::lower_bound(zones->zones.begin(), zones->zones.end(), name,
                                      [](const date::time_zone& zone, std::string_view wanted) {
                                        return std::string_view(zone.name()) < wanted;
                                      });
  return found != zones->zones.end() && found->name() == name ? &*found : nullptr;
}

// A date taken apart in some zone.
struct CalendarFields {
  std::int64_t year;
  int month, day, dayOfYear, weekday, hour, minute, second, millisecond;
};

std::int64_t floorDivision(std::int64_t a, std::int64_t b) {
  return a / b - (a % b < 0 ? 1 : 0);
}

CalendarFields fieldsOf(Date date, std::int32_t secondsFromUTC) {
  const std::int64_t local = date.wholeSeconds() + secondsFromUTC;
  const std::int64_t days = floorDivision(local, kSecondsPerDay);
  const auto secondOfDay = static_cast<int>(local - days * kSecondsPerDay);

  const CivilDate civil = civilFromDays(days);

  CalendarFields fields{};
  fields.year = civil.year;
  fields.month = civil.month;
  fields.day = civil.day;
  fields.dayOfYear = static_cast<int>(days - daysFromCivil({civil.year, 1, 1})) + 1;
  fields.weekday = static_cast<int>(((days + 4) % 7 + 7) % 7);
  fields.hour = secondOfDay / 3'600;
  fields.minute = secondOfDay / 60 % 60;
  fields.second = secondOfDay % 60;
  fields.millisecond = static_cast<int>((date.microseconds % 1'000'000 + 1'000'000) % 1'000'000 / 1'000);
  return fields;
}

void appendNumber(std::string& text, std::int64_t number, int digits) {
  char buffer[32];
  const int length = std::snprintf(buffer, sizeof buffer, "%0*lld", digits, static_cast<long long>(number));
  text.append(buffer, static_cast<std::size_t>(length));
}

void appendOffset(std::string& text, std::int32_t secondsFromUTC) {
  const int minutes = std::abs(secondsFromUTC) / 60;
  text += secondsFromUTC < 0 ? '-' : '+';
  appendNumber(text, minutes / 60, 2);
  appendNumber(text, minutes % 60, 2);
}

// Reads text from front to back; once something did not match, nothing does any more.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}
  bool failed() const { return failed_; }
  bool atEnd() const { return rest_.empty(); }
  bool take(char c) {
    if (rest_.empty() || rest_[0] != c) return false;
    rest_.remove_prefix(1);
    return true;
  }
  void expect(char c) {
    if (!take(c)) failed_ = true;
  }
  // Exactly so many decimal digits, between the two bounds.
  int number(int digits, int least, int most) {
    int value = 0;
    for (int i = 0; i < digits; ++i) value = value * 10 + digit();
    if (value < least || value > most) failed_ = true;
    return value;
  }
  // The digits of a fraction, one or more, as microseconds; what is finer is cut off.
  int fraction() {
    int value = 0;
    int scale = 100'000;
    do {
      value += digit() * scale;
      scale /= 10;
    } while (!rest_.empty() && rest_[0] >= '0' && rest_[0] <= '9');
    return value;
  }
  // "Z", "+01:00", "+0100" or "+01", in seconds.
  int offset() {
    if (take('Z')) return 0;
    const bool negative = take('-');
    if (!negative) expect('+');
    int seconds = number(2, 0, 23) * 3'600;
    if (!atEnd()) {
      take(':');
      seconds += number(2, 0, 59) * 60;
    }
    return negative ? -seconds : seconds;
  }

 private:
  int digit() {
    if (rest_.empty() || rest_[0] < '0' || rest_[0] > '9') {
      failed_ = true;
      return 0;
    }
    const int value = rest_[0] - '0';
    rest_.remove_prefix(1);
    return value;
  }

  std::string_view rest_;
  bool failed_ = false;
};

int daysInMonth(int year, int month) {
  return static_cast<int>(
      (month == 12 ? daysFromCivil({year + 1, 1, 1}) : daysFromCivil({year, month + 1, 1})) -
      daysFromCivil({year, month, 1}));
}

// What one letter of a calendar format stands for; false for a letter that stands for nothing.
bool appendField(std::string& text, char letter, const CalendarFields& fields) {
  const std::string_view weekday = kWeekdays[static_cast<std::size_t>(fields.weekday)];
  const std::string_view month = kMonths[static_cast<std::size_t>(fields.month - 1)];
  switch (letter) {
    case 'a':
      text += weekday.substr(0, 3);
      return true;
    case 'A':
      text += weekday;
      return true;
    case 'b':
      text += month.substr(0, 3);
      return true;
    case 'B':
      text += month;
      return true;
    case 'd':
      appendNumber(text, fields.day, 2);
      return true;
    case 'e':
      appendNumber(text, fields.day, 1);
      return true;
    case 'm':
      appendNumber(text, fields.month, 2);
      return true;
    case 'Y':
      appendNumber(text, fields.year, 4);
      return true;
    case 'y':
      appendNumber(text, (fields.year % 100 + 100) % 100, 2);
      return true;
    case 'H':
      appendNumber(text, fields.hour, 2);
      return true;
    case 'I':
      appendNumber(text, (fields.hour + 11) % 12 + 1, 2);
      return true;
    case 'p':
      text += fields.hour < 12 ? "AM" : "PM";
      return true;
    case 'M':
      appendNumber(text, fields.minute, 2);
      return true;
    case 'S':
      appendNumber(text, fields.second, 2);
      return true;
    case 'F':
      appendNumber(text, fields.millisecond, 3);
      return true;
    case 'j':
      appendNumber(text, fields.dayOfYear, 3);
      return true;
    case '%':
      text += '%';
      return true;
    default:
      return false;
  }
}

}  // namespace

std::optional<TimeZone> TimeZone::named(std::string_view name) {
  if (const date::time_zone* zone = zoneNamed(name)) return TimeZone(zone);
  if (name == "UTC") return utc();
  return std::nullopt;
}

TimeZone TimeZone::defaultTimeZone() {
  if (const char* variable = std::getenv("TZ")) {
    std::string_view name(variable);
    if (name.starts_with(':')) name.remove_prefix(1);
    // Set but empty means UTC, wherever TZ is understood.
    if (name.empty()) return utc();
    constexpr std::string_view kFolder = "/zoneinfo/";
    const std::size_t folder = name.starts_with('/') ? name.find(kFolder) : std::string_view::npos;
    if (folder != std::string_view::npos) name.remove_prefix(folder + kFolder.size());
    if (const std::optional<TimeZone> zone = named(name)) return *zone;
  }
  try {
    return TimeZone(date::current_zone());
  } catch (const std::exception&) {
    return utc();
  }
}

// Known without any database.
TimeZone TimeZone::utc() {
  return TimeZone(nullptr);
}

std::vector<std::string> TimeZone::knownTimeZoneNames() {
  std::vector<std::string> names;
  if (const date::tzdb* zones = database()) {
    for (const date::time_zone& zone : zones->zones) names.push_back(zone.name());
    std::sort(names.begin(), names.end());
  }
  return names;
}

std::string TimeZone::name() const {
  return zone_ == nullptr ? "UTC" : static_cast<const date::time_zone*>(zone_)->name();
}

std::int32_t TimeZone::secondsFromUTC(Date at) const {
  if (zone_ == nullptr) return 0;
  try {
    // Asked about a point in time, never about a local one: those alone are ambiguous or missing at a change
    // of clocks.
    const date::sys_seconds instant{std::chrono::seconds(at.wholeSeconds())};
    return static_cast<std::int32_t>(
        static_cast<const date::time_zone*>(zone_)->get_info(instant).offset.count());
  } catch (const std::exception&) {
    return 0;  // the zone's file is gone or broken
  }
}

std::string formatCalendarDate(Date date, std::string_view format, const TimeZone& zone) {
  const std::int32_t offset = zone.secondsFromUTC(date);
  const CalendarFields fields = fieldsOf(date, offset);
  std::string text;
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%' || i + 1 == format.size()) {
      text += format[i];
      continue;
    }
    const char letter = format[++i];
    if (letter == 'z') {
      appendOffset(text, offset);
    } else if (letter == 'Z') {
      text += zone.name();
    } else if (!appendField(text, letter, fields)) {
      text += '%';
      text += letter;
    }
  }
  return text;
}

bool hasFourDigitYear(Date date) {
  const std::int64_t year = fieldsOf(date, 0).year;
  return year >= 0 && year <= 9999;
}

std::string iso8601(Date date) {
  return formatCalendarDate(date, "%Y-%m-%dT%H:%M:%SZ", TimeZone::utc());
}

std::optional<Date> dateFromISO8601(std::string_view text) {
  Scanner scanner(text);
  const int year = scanner.number(4, 0, 9999);
  scanner.expect('-');
  const int month = scanner.number(2, 1, 12);
  scanner.expect('-');
  const int day = scanner.number(2, 1, 31);
  if (scanner.failed() || day > daysInMonth(year, month)) return std::nullopt;
  std::int64_t seconds = daysFromCivil({year, month, day}) * kSecondsPerDay;
  int microseconds = 0;
  if (!scanner.atEnd()) {
    scanner.expect('T');
    seconds += std::int64_t{scanner.number(2, 0, 23)} * 3'600;
    scanner.expect(':');
    seconds += std::int64_t{scanner.number(2, 0, 59)} * 60;
    scanner.expect(':');
    seconds += scanner.number(2, 0, 59);
    if (scanner.take('.')) microseconds = scanner.fraction();
    seconds -= scanner.offset();
  }
  if (scanner.failed() || !scanner.atEnd()) return std::nullopt;
  const Date date{Date::fromSeconds(seconds).microseconds + microseconds};
  // An offset may lead out of the years that can be written.
  return hasFourDigitYear(date) ? std::optional(date) : std::nullopt;
}

int calendarYear(Date date, const TimeZone& zone) {
  return static_cast<int>(fieldsOf(date, zone.secondsFromUTC(date)).year);
}

}  // namespace clipwave
