#include "platform/foundation/XMLText.h"

#include <libxml/HTMLparser.h>

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "platform/foundation/XMLEncoding.h"

namespace clipwave {
namespace {

constexpr std::size_t kLongestName = 40;

// The character that the digits of a reference name; 0 when XML cannot carry it. Numbers of Windows-1252's
// own characters are what their authors saw.
char32_t referencedCharacter(std::string_view digits, unsigned base) {
  char32_t value = 0;
  for (char c : digits) {
    const auto digit = static_cast<unsigned>(c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
    value = std::min<char32_t>(value * base + digit, 0x110000);
  }
  if (value >= 0x80 && value < 0xA0) value = windows1252Character(static_cast<std::uint8_t>(value));
  return isXMLCharacter(value) ? value : 0;
}

// HTML's names for characters. The parser's own search by name goes through all of them every time.
std::unordered_map<std::string_view, char32_t> namedCharacters() {
  constexpr unsigned kBehindLast = 9831;
  std::unordered_map<std::string_view, char32_t> characters;
  for (unsigned value = 0; value < kBehindLast; ++value) {
    if (const htmlEntityDesc* entity = htmlEntityValueLookup(value)) characters.emplace(entity->name, value);
  }
  return characters;
}

// 0 when HTML has no such name.
char32_t characterNamed(std::string_view name) {
  static const std::unordered_map<std::string_view, char32_t> kCharacters = namedCharacters();
  const auto found = kCharacters.find(name);
  return found == kCharacters.end() ? 0 : found->second;
}

// Resolves the reference at the start of `text` to a number, whose semicolon may be missing; answers its
// length, or 0 when there is none.
std::size_t appendNumericReference(std::string& out, std::string_view text) {
  const bool hexadecimal = text.size() > 2 && (text[2] == 'x' || text[2] == 'X');
  const std::size_t start = hexadecimal ? 3 : 2;
  const std::string_view allowed = hexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
  const std::size_t end = std::min(text.find_first_not_of(allowed, start), text.size());
  if (end <= start) return 0;
  const char32_t character = referencedCharacter(text.substr(start, end - start), hexadecimal ? 16 : 10);
  if (character != 0) appendUTF8(out, character);
  return end < text.size() && text[end] == ';' ? end + 1 : end;
}

// The same for any reference.
std::size_t appendReference(std::string& out, std::string_view text) {
  if (text.starts_with("&#")) return appendNumericReference(out, text);
  const std::size_t end = text.substr(0, kLongestName).find(';');
  if (end == std::string_view::npos) return 0;
  const char32_t character = characterNamed(text.substr(1, end - 1));
  if (character == 0) return 0;
  appendUTF8(out, character);
  return end + 1;
}

// "" for a character that stands as it is.
std::string_view escapeFor(char c, XMLPlace place) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '\r':
      return "&#13;";
    case '"':
      return place == XMLPlace::Attribute ? "&quot;" : "";
    case '\n':
      return place == XMLPlace::Attribute ? "&#10;" : "";
    case '\t':
      return place == XMLPlace::Attribute ? "&#9;" : "";
    default:
      return "";
  }
}

}  // namespace

void appendEscapedXML(std::string& out, std::string_view literal, XMLPlace place) {
  std::size_t written = 0;
  for (std::size_t i = 0; i < literal.size(); ++i) {
    const std::string_view escape = escapeFor(literal[i], place);
    if (escape.empty()) continue;
    out.append(literal, written, i - written).append(escape);
    written = i + 1;
  }
  out.append(literal, written);
}

void appendLiteralXML(std::string& out, std::string_view text, XMLPlace place) {
  const std::string_view special = place == XMLPlace::Attribute ? "\r\n\t" : "\r";
  for (std::size_t at; (at = text.find_first_of(special)) != std::string_view::npos;) {
    out.append(text, 0, at);
    out += place == XMLPlace::Attribute ? ' ' : '\n';
    text.remove_prefix(at + (text.substr(at).starts_with("\r\n") ? 2 : 1));
  }
  out.append(text);
}

void appendResolvedXML(std::string& out, std::string_view text, XMLPlace place) {
  while (!text.empty()) {
    const std::size_t ampersand = std::min(text.find('&'), text.size());
    appendLiteralXML(out, text.substr(0, ampersand), place);
    text.remove_prefix(ampersand);
    if (text.empty()) return;
    const std::size_t length = appendReference(out, text);
    if (length == 0) out += '&';
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
}

}  // namespace clipwave
