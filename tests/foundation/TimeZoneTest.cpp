#include "platform/foundation/TimeZone.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

constexpr std::string_view kFeedDate = "%a, %e %b %Y %H:%M:%S %z";

std::string written(std::string_view iso, std::string_view zone, std::string_view format = kFeedDate) {
  return formatCalendarDate(*dateFromISO8601(iso), format, *TimeZone::named(zone));
}

std::string nameWithTZ(const char* value) {
  const EnvironmentVariable variable("TZ", value);
  return TimeZone::defaultTimeZone().name();
}

TEST(TimeZone, IsFoundByItsExactNameOnlyAndKnowsThemInAlphabeticalOrder) {
  const std::vector<std::string> names = TimeZone::knownTimeZoneNames();
  EXPECT_THAT(names, IsSupersetOf({"Europe/Berlin", "America/New_York", "UTC"}));
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  for (const std::string& name : names) EXPECT_EQ(TimeZone::named(name).value().name(), name);
  for (const char* name : {"", "Europe", "europe/berlin", "Mars/Olympus", "../../etc/passwd"})
    EXPECT_FALSE(TimeZone::named(name)) << name;
}

TEST(TimeZone, TheDefaultFollowsTheEnvironmentAtEveryCall) {
  EXPECT_EQ(nameWithTZ(":America/New_York"), "America/New_York");
  EXPECT_EQ(nameWithTZ("/usr/share/zoneinfo/Asia/Tokyo"), "Asia/Tokyo");
  EXPECT_EQ(nameWithTZ(""), "UTC");
  // What names no zone leaves the choice to the machine.
  EXPECT_EQ(nameWithTZ("Mars/Olympus"), nameWithTZ(nullptr));
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

TEST(CalendarFormat, WritesFeedDatesInTheGivenZone) {
  EXPECT_EQ(written("2009-12-31T20:00:00Z", "Asia/Kathmandu"), "Fri, 1 Jan 2010 01:45:00 +0545");
  EXPECT_EQ(written("1969-12-31T23:59:59Z", "UTC"), "Wed, 31 Dec 1969 23:59:59 +0000");
}

TEST(CalendarFormat, KnowsEachOfItsLettersAndLeavesTheOthers) {
  EXPECT_EQ(written("2009-03-04T00:05:09.0785Z", "UTC", "%A %B %d %e %m %y %I %p %F %j %Z %% %Q %"),
            "Wednesday March 04 4 03 09 12 AM 078 063 UTC % %Q %");
  EXPECT_EQ(written("2008-12-31T12:00:00Z", "UTC", "%I%p %j"), "12PM 366");
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

TEST(ISO8601, RefusesOtherTextAndDatesInNoCalendar) {
  std::istringstream texts(
      "|2009|2009-3-4|1900-02-29|2009-13-01|2009-04-31|2009-03-04T|2009-03-04T24:00:00Z|2009-03-04T02:05:09|"
      "2009-03-04T02:05:09.Z|2009-03-04T02:05:09Zx|2009-03-04T02:05:09+1| 2009-03-04|+009-03-04|"
      "9999-12-31T23:59:59-01:00|0000-01-01T00:00:00+01:00");
  for (std::string text; std::getline(texts, text, '|');) EXPECT_FALSE(dateFromISO8601(text)) << text;
}

}  // namespace
}  // namespace clipwave
