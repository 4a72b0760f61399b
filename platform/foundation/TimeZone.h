// Named time zones, and dates written and read as calendar text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Date.h"

namespace clipwave {

// A zone of the system's time-zone database; as cheap to copy as a pointer.
class TimeZone {
 public:
  // The zone of that name, or nothing when the database does not know it.
  static std::optional<TimeZone> named(std::string_view name);
  // The zone that TZ names, else the machine's own; UTC when neither can be told. Asked anew at every call.
  static TimeZone defaultTimeZone();
  static TimeZone utc();
  // Every name that the database knows, in alphabetical order.
  static std::vector<std::string> knownTimeZoneNames();

  std::string name() const;
  std::int32_t secondsFromUTC(Date at) const;

 private:
  explicit TimeZone(const void* zone) : zone_(zone) {}
  const void* zone_;
};

// Writes a date with a calendar format and English names. Understood: %a %A %b %B %d (two digits) %e (no
// leading zero, no blank) %m %Y %y %H %I %p %M %S %F (milliseconds, three digits) %j %z (+hhmm) %Z (the
// zone's name) %%. Any other letter is written as it stands, with its %.
std::string formatCalendarDate(Date date, std::string_view format, const TimeZone& zone);

// Whether the date's year, in UTC, is one that readers of dates expect: 0 to 9999.
bool hasFourDigitYear(Date date);
// "2009-03-04T02:05:09Z"; whole seconds.
std::string iso8601(Date date);
// "2009-03-04T02:05:09Z", with an offset instead of Z, with a fraction, or without the time of day (midnight
// UTC). Nothing for other text, a date that is in no calendar, or one that has no four-digit year in UTC.
std::optional<Date> dateFromISO8601(std::string_view text);
// The calendar year of the date in the zone.
int calendarYear(Date date, const TimeZone& zone);

}  // namespace clipwave
