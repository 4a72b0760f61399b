// Reads dates in the many forms in which people and programs write them.
#pragma once

#include <optional>
#include <string_view>

#include "platform/foundation/Date.h"
#include "platform/foundation/TimeZone.h"

namespace clipwave {

// Leniently, as feeds have it: "Tue, 3 Mar 2009 18:05:09 -0800" with or without the weekday (a wrong one does
// not matter), the seconds or the time of day; full English names; two-digit years; zones by offset or by
// name ("GMT", "PST", "EDT", "Z", an offset with a colon); ISO 8601 in all its common forms; "March 3, 2009
// 6:05 PM"; "Tue Mar  3 18:05:09 PST 2009"; 2009/03/03; with slashes the month comes before the day unless it
// cannot, with dots the day. Behind the time of day, an unknown name in capitals and an offset of more than
// 15 hours are read as UTC. A text without a zone is read in `zone`. White space around and comments in
// parentheses do not matter. Nothing for text that names no day of the calendar, or one outside the years 0
// to 9999 in UTC, or whose year has a minus before it.
std::optional<Date> dateWithNaturalLanguageString(std::string_view text, const TimeZone& zone);

}  // namespace clipwave
