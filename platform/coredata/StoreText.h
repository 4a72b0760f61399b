// How single values stand in the store's file, and what of XML's rules the parser leaves to its user.
// Internal to this room.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/Date.h"

namespace clipwave::storetext {

// Appends the text with XML's own characters escaped, carriage returns as well, since a parser would make
// line feeds of them. False, and nothing is appended, for text that XML cannot carry: control characters,
// other code points outside XML's range, or bytes that are no UTF-8.
bool appendText(std::string& out, std::string_view text);
// The same within double quotes, where tabs and line breaks need escaping too. Leaves out what XML cannot
// carry.
void appendAttribute(std::string& out, std::string_view name, std::string_view value);

// ISO 8601 in UTC, with six decimals when there are microseconds; years beyond four digits bear a sign.
void appendDate(std::string& out, Date date);
std::optional<Date> parseDate(std::string_view text);

void appendInteger(std::string& out, std::int64_t number);
std::optional<std::int64_t> parseInteger(std::string_view text);

// Where the text breaks a rule that the parser does not look at: a control character, bytes that are no
// UTF-8, a reference to an undefined entity or to a character outside XML, something other than white space
// around the document.
std::optional<std::size_t> findIllFormed(std::string_view text);

}  // namespace clipwave::storetext
