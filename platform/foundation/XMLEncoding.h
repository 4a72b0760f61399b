// The bytes behind XML text: which encoding they are in, their UTF-8 form, and which characters XML can
// carry.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace clipwave {

// How many bytes at the start of `text` form one UTF-8 character; 0 when they form none. `text` is not empty.
std::size_t utf8SequenceLength(std::string_view text);

// Where the first byte is that does not belong to a character which XML can carry in UTF-8; npos when all do.
std::size_t firstUnfitByte(std::string_view text);

// The text with such characters left out, and bytes that are no UTF-8 replaced by U+FFFD.
std::string textFitForXML(std::string_view text);

bool isXMLCharacter(char32_t character);
void appendUTF8(std::string& text, char32_t character);
// What `byte` is in Windows-1252, the encoding that text labelled as Latin-1 is really in.
char32_t windows1252Character(std::uint8_t byte);

// `data` in UTF-8 without its byte-order mark, decoded by that mark, else by `charset`, else by the encoding
// that the XML declaration names, else as UTF-8. A label that the bytes cannot bear out (unknown, or two-byte
// units for text that reads as ASCII) is passed over, and Latin-1 means Windows-1252. `lenient` reads UTF-8
// that is labelled Latin-1 as UTF-8 and stray bytes in UTF-8 as Windows-1252; otherwise bytes that do not fit
// give nothing. It ends early, but not before it is larger than kMostXMLBytes.
std::optional<std::string> decodedXML(std::string_view data, std::string_view charset, bool lenient);

}  // namespace clipwave
