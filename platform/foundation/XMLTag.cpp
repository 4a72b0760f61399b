#include "platform/foundation/XMLTag.h"

#include <libxml/tree.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/foundation/ASCII.h"

namespace clipwave {
namespace {

bool isBlank(char c) {
  return kBlanks.find(c) != std::string_view::npos;
}
bool isASCIILetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isNameStart(char c) {
  return isASCIILetter(c) || c == '_' || c == ':' || static_cast<unsigned char>(c) >= 0x80;
}
bool isNameByte(char c) {
  return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

// Whether the text up to the next quote, taken for a value, swallowed another attribute or another tag
// because its own closing quote is missing. `behind` is what follows that next quote.
bool lacksClosingQuote(std::string_view value, std::string_view behind) {
  const std::size_t bracket = value.find_first_of("<>");
  if (bracket != std::string_view::npos && value[bracket] == '>') {
    if (value.find('<', bracket) != std::string_view::npos) return true;
  }
  const bool another = value.ends_with('=') && value.find_first_of(kBlanks) != std::string_view::npos;
  return another && !behind.empty() && !isBlank(behind[0]) && behind[0] != '>' && behind[0] != '/';
}

// Reads an attribute's value at the start of `text`; answers its length with quotes. `looked` is how far
// it looked for a closing quote.
std::size_t scanValue(std::string_view text, std::string_view& value, std::size_t& looked) {
  std::size_t start = 0;
  looked = 0;
  if (!text.empty() && (text[0] == '"' || text[0] == '\'')) {
    const std::size_t close = text.find(text[0], 1);
    looked = std::min(close, text.size());
    if (close != std::string_view::npos) {
      value = text.substr(1, close - 1);
      if (!lacksClosingQuote(value, text.substr(close + 1))) return close + 1;
    }
    start = 1;
  }
  std::size_t end = std::min(text.find_first_of(" \t\r\n<>", start), text.size());
  if (end > start && end < text.size() && text[end] == '>' && text[end - 1] == '/') --end;
  value = text.substr(start, end - start);
  return end;
}

}  // namespace

std::size_t xmlNameLength(std::string_view text) {
  if (text.empty() || !isNameStart(text[0])) return 0;
  std::size_t length = 1;
  bool isASCII = static_cast<unsigned char>(text[0]) < 0x80;
  while (length < text.size() && isNameByte(text[length])) {
    isASCII = isASCII && static_cast<unsigned char>(text[length]) < 0x80;
    ++length;
  }
  if (isASCII) return length;
  const std::string name(text.substr(0, length));
  return xmlValidateName(reinterpret_cast<const xmlChar*>(name.c_str()), 0) == 0 ? length : 0;
}

XMLTag scanXMLTag(std::string_view text, std::size_t at,
                  const std::function<bool(const XMLTagAttribute&)>& each) {
  XMLTag tag;
  ++at;
  tag.name = text.substr(at, xmlNameLength(text.substr(at)));
  at += tag.name.size();
  tag.end = at;
  if (tag.name.empty() || at >= text.size()) return tag;
  if (!isBlank(text[at]) && text[at] != '>' && !text.substr(at).starts_with("/>")) return tag;

  bool goesOn = true;
  std::size_t valued = 0;
  std::size_t valueless = 0;
  std::size_t lookedTo = 0;
  for (;;) {
    at = std::min(text.find_first_not_of(kBlanks, at), text.size());
    tag.end = std::max(at, lookedTo);
    if (at == text.size() || text[at] == '<') return tag;
    if (text[at] == '>' || text.substr(at).starts_with("/>")) {
      tag.isEmpty = text[at] == '/';
      tag.end = at + (tag.isEmpty ? 2 : 1);
      // Words alone between brackets are somebody's text.
      tag.isTag = valueless == 0 || valued > 0;
      return tag;
    }
    const std::size_t nameEnd = std::min(text.find_first_of(" \t\r\n=<>/\"'", at), text.size());
    const std::string_view name = text.substr(at, nameEnd - at);
    const std::size_t equals = std::min(text.find_first_not_of(kBlanks, nameEnd), text.size());
    if (equals == text.size() || text[equals] != '=') {
      valueless += name.empty() ? 0 : 1;
      at = std::max(nameEnd, at + 1);
      continue;
    }
    at = std::min(text.find_first_not_of(kBlanks, equals + 1), text.size());
    XMLTagAttribute attribute{name, {}};
    std::size_t looked = 0;
    const std::size_t length = scanValue(text.substr(at), attribute.value, looked);
    lookedTo = std::max(lookedTo, at + looked);
    at += length;
    ++valued;
    if (each && goesOn) goesOn = each(attribute);
  }
}

std::size_t endOfXMLDocumentType(std::string_view text, std::size_t at) {
  const auto endOf = [text](std::string_view mark, std::size_t from) {
    const std::size_t found = text.find(mark, from);
    return found == std::string_view::npos ? text.size() : found + mark.size();
  };
  bool inBrackets = false;
  while (at < text.size()) {
    const std::string_view rest = text.substr(at);
    if (rest[0] == '>' && !inBrackets) return at + 1;
    if (rest[0] == '[' || rest[0] == ']') inBrackets = rest[0] == '[';
    if (rest[0] == '"' || rest[0] == '\'') {
      at = endOf(rest.substr(0, 1), at + 1);
    } else if (rest.starts_with("<!--")) {
      at = endOf("-->", at + 4);
    } else if (rest.starts_with("<?")) {
      at = endOf("?>", at + 2);
    } else {
      ++at;
    }
  }
  return std::string_view::npos;
}

}  // namespace clipwave
