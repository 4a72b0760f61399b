#include "platform/foundation/TimeZone.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace clipwave {
namespace {
using namespace ::testing;

std::string written(std::string_view iso, std::string_view zone) {
  return formatCalendarDate(*dateFromISO8601(iso), "%a, %e %b %Y %H:%M:%S %z", *TimeZone::named(zone));
}

TEST(TimeZone, IsFoundByItsExactNameOnlyAndKnowsThemInAlphabeticalOrder) {
  const std::vector<std::string> names = TimeZone::knownTimeZoneNames();
  EXPECT_THAT(names, IsSupersetOf({"Europe/Berlin", "America/New_York", "UTC"}));
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  for (const std::string& name : names) EXPECT_EQ(TimeZone::named(name).value().name(), name);
  for (const char* name : {"", "Europe", "europe/berlin", "Mars/Olympus", "../../etc/passwd"})
    EXPECT_FALSE(TimeZone::named(name)) << name;
}

TEST(TimeZone, OffsetsChangeAtTheSecondOfTheTransition) {
  const TimeZone berlin = *TimeZone::named("Europe/Berlin");
  const Date spring = *dateFromISO8601("2009-03-29T01:00:00Z");
  EXPECT_EQ(berlin.secondsFromUTC(Date{spring.microseconds - 1}), 3'600);
  EXPECT_EQ(berlin.secondsFromUTC(spring), 7'200);
  // The hour that comes twice in autumn is told apart by its offset.
  EXPECT_EQ(written("2009-10-25T00:30:00Z", "Europe/Berlin"), "Sun, 25 Oct 2009 02:30:00 +0200");
  EXPECT_EQ(written("2009-10-25T01:30:00Z", "Europe/Berlin"), "Sun, 25 Oct 2009 02:30:00 +0100");
}

TEST(ISO8601, ReadsItsFormsAndWritesTheShortOne) {
  const Date date = Date::fromSeconds(1'236'132'309);
  EXPECT_EQ(iso8601(date), "2009-03-04T02:05:09Z");
  for (const char* text : {"2009-03-03T18:05:09-08:00", "2009-03-04T07:50:09+0545", "2009-03-04T03:05:09+01"})
    EXPECT_EQ(dateFromISO8601(text), date) << text;
  EXPECT_EQ(dateFromISO8601("2009-03-04T02:05:09.1234567Z")->microseconds, date.microseconds + 123'456);
  EXPECT_EQ(dateFromISO8601("1969-12-31T23:59:59.5Z"), Date{-500'000});
  EXPECT_EQ(iso8601(*dateFromISO8601("0001-01-01")), "0001-01-01T00:00:00Z");
}

}  // namespace
}  // namespace clipwave
