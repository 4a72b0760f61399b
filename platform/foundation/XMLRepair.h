// Makes broken XML text well-formed before it is parsed, keeping its text. Internal to this room.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace clipwave {

// More attributes than any real tag carries; the parser compares each attribute of a tag with all the others.
inline constexpr std::size_t kMostXMLAttributes = 256;
// Deeper than any real document, and within what the parser takes.
inline constexpr std::size_t kMostXMLLevels = 200;

// Whether a tag in the well-formed beginning of `text` carries more than kMostXMLAttributes.
bool hasCrowdedXMLTag(std::string_view text);

// The element that `text` (UTF-8) holds, well-formed and with nothing around it: bare "&" and "<" are
// escaped, HTML's named characters resolved, attributes quoted and each kept once, missing end tags supplied
// and stray ones dropped. An element whose end tag is missing ends where its text does, or before the next
// element of its own name, or with its parent. Comments, instructions and document types are left out, and so
// are tags below kMostXMLLevels and attributes beyond kMostXMLAttributes. Nothing when there is no element.
// Takes time in proportion to the text.
std::optional<std::string> repairedXML(std::string_view text);

}  // namespace clipwave
