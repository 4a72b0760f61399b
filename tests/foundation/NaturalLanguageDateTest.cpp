#include "platform/foundation/NaturalLanguageDate.h"

#include <gmock/gmock.h>

#include <chrono>
#include <sstream>

namespace clipwave {
namespace {
using namespace ::testing;

// The date as ISO 8601 text; one without a zone is in California.
std::string read(std::string_view text, std::string_view zone = "America/Los_Angeles") {
  const std::optional<Date> date = dateWithNaturalLanguageString(text, *TimeZone::named(zone));
  return date ? iso8601(*date) : "nothing";
}

// The texts between the bars.
std::vector<std::string> texts(const std::string& barred) {
  std::istringstream stream(barred);
  std::vector<std::string> texts;
  for (std::string text; std::getline(stream, text, '|');) texts.push_back(text);
  return texts;
}

TEST(NaturalLanguageDate, IsReadInTheFormsThatPeopleAndProgramsWrite) {
  const std::pair<const char*, const char*> rows[] = {
      {"2009-03-04T02:05:09Z",
       "tue,03 mar 2009 18:05:09 PST|Sunday, 3 March 2009 18:05:09 pst|3 Mar 109 18:05:09 -08:00|"
       "  Tue , 03\tMar.\n2009  18:05:09\r\n -0800 |Tue, 3 (the (third\\)) day) Mar 2009 18:05:09 -0800 "
       "(PST)|"
       "3-Mar-2009 18:05:09 GMT-8|18:05:09 PST 3-Mar-09|4 Mar 2009 02:05:09 A|Wed, 4 Mar 2009 02:05:09 UT|"
       "4 Mar 2009 02:05:09 PST+0000|4 Mar 2009 07:35:09 +0530|4 Mar 2009 13:05:09 AEDT|"
       "Tue Mar 3 18:05:09 PST 2009|Tue Mar 03 18:05:09 -0800 2009|"
       "Wed Mar 4 2009 02:05:09 GMT+0000 (Greenwich Mean Time)|Mar. 3rd, 2009, at 6:05:09p.m.|"
       "Tuesday the 3rd of March 2009, 18:05:09|2009-03-03t18:05:09-08:00|2009-03-03T18:05:09|"
       "20090303180509 -0800|2009/03/03 18:05:09|3.3.2009 18.05.09|03/03/2009 6:05:09 PM|"
       "Mar\u00a03, 2009, 6:05:09\u202fPM|Tue, 3 Mar 2009 18:05:09 -0800 by Joe, 2 hours late (5|"
       "3 Mar 2009 18:05:09 Mars time|4 Mar 2009 02:05:09 +9900"},
      {"2009-03-04T02:05:00Z", "3 Mar 2009 18:05|20090304T0205Z|3/3/09 6:05pm|4 Mar 2009 2h05 UTC"},
      {"2009-03-04T02:00:00Z", "3 Mar 2009, 6 PM|6pm, March 3 2009|2009-03-04T02Z"},
      {"2009-03-03T08:00:00Z",
       "3 Mar 2009|03/03/2009|March 3 2009 12 AM|20090303 PST|2009-03-03-08:00|3 Mar 2009 - 10.03.2009|"
       "3-March - 2009|3 Mar 2009 (v. 1.5) 25.10 MB"},
      {"2009-12-31T08:00:00Z", "31/12/2009|12/31/2009|31.12.09|31 december 2009|Dec 31 2009"},
      {"2009-09-03T19:00:00Z", "3 Sept 2009 12:00 PM|9/3/2009 noon 12:00 PDT"},
      {"2049-01-01T00:00:00Z", "1 Jan 49 00:00 UTC"},
      {"1950-01-01T00:00:00Z", "1 Jan 50 00:00 UTC"},
      {"2009-01-01T00:00:00Z", "31 Dec 2008 24:00:00 GMT|2008-12-31T23:59:60Z|20081231T240000Z"},
      {"0001-01-01T00:00:00Z", "Mon, 01 Jan 0001 00:00:00 +0000"},
      {"9999-12-31T23:59:59Z", "31 Dec 9999 23:59:59 GMT"},
  };
  for (const auto& [date, forms] : rows)
    for (const std::string& text : texts(forms)) EXPECT_EQ(read(text), date) << text;
}

TEST(NaturalLanguageDate, LocalTimesAreSettledWhereClocksChange) {
  EXPECT_EQ(read("29 Mar 2009 02:30", "Europe/Berlin"), "2009-03-29T01:30:00Z");
  EXPECT_EQ(read("25 Oct 2009 02:30", "Europe/Berlin"), "2009-10-25T00:30:00Z");
}

TEST(NaturalLanguageDate, TextThatNamesNoDayIsNone) {
  for (const std::string& text : texts(
           "|()|March|PST|2009|20090303180509|6 PM|3 March|March 2009|2009-03|3 Marsh 2009|3 M\u00e4rz 2009|"
           "0 Mar 2009|31 Apr 2009|2009-13-01|13/13/2009|2009-03-03 25:00|3 Mar 2009 18:05:61|"
           "3 Mar 2009 24:00:01|3 Mar 20090|127.0.0.1|(Tue, 3 Mar 2009 18:05:09 -0800)|"
           "31 Dec 9999 23:59:59 -0100|1 Jan 0000 00:00 +0100|-0001-11-30T00:00:00Z|99999999T999999Z"))
    EXPECT_EQ(read(text), "nothing") << text;
}

TEST(NaturalLanguageDate, LongTextsTakeTimeInProportionOnly) {
  constexpr std::size_t kLength = 200'000;
  const std::string date = "3 Mar 2009 18:05:09";
  const std::string digits(kLength, '9');
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(read(std::string(kLength, ' ') + date), "2009-03-04T02:05:09Z");
  EXPECT_EQ(read(std::string(kLength, '(') + std::string(kLength, ')') + date), "2009-03-04T02:05:09Z");
  EXPECT_EQ(read(date + "." + digits + " " + digits + std::string(kLength, '(')), "2009-03-04T02:05:09Z");
  for (const char* piece : {"9", "(", ")", "-", ":", "a", "9:", "9-", "+9", "\xC3", "\\(", "a 9 "}) {
    std::string text;
    while (text.size() < kLength) text += piece;
    EXPECT_EQ(read(text), "nothing") << piece;
    EXPECT_THAT(read(date + " " + text), StartsWith("2009-03-0")) << piece;
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

}  // namespace
}  // namespace clipwave
