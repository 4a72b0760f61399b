#include "platform/foundation/DateTokens.h"

namespace clipwave {
namespace {

// No date takes half as many, and what goes on for longer is not read to its end.
constexpr std::size_t kMostTokens = 64;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
// Bytes beyond ASCII belong to words, so that a foreign month is not taken for its first letters.
bool isWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}
// How many bytes of white space the text begins with.
std::size_t blankLength(std::string_view text) {
  if (std::string_view(" \t\r\n\f\v").find(text[0]) != std::string_view::npos) return 1;
  if (text.starts_with("\xC2\xA0")) return 2;                                           // no-break space
  return text.starts_with("\xE2\x80\xAF") || text.starts_with("\xE2\x80\x89") ? 3 : 0;  // narrow ones
}

// The length of the comment at the start of the text; comments hold comments.
std::size_t commentLength(std::string_view text) {
  std::size_t depth = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\\') {
      ++at;
    } else if (text[at] == '(') {
      ++depth;
    } else if (text[at] == ')' && --depth == 0) {
      return at + 1;
    }
  }
  return text.size();
}

}  // namespace

std::vector<DateToken> dateTokensOf(std::string_view text) {
  constexpr std::string_view kMinus = "\xE2\x88\x92";
  std::vector<DateToken> tokens;
  bool touches = false;
  while (!text.empty() && tokens.size() < kMostTokens) {
    std::size_t length = blankLength(text);
    if (length == 0 && text[0] == '(') length = commentLength(text);
    if (length > 0) {
      touches = false;
      text.remove_prefix(length);
      continue;
    }
    DateToken token{DateToken::Kind::Sign, text.substr(0, 1), touches};
    length = 1;
    if (text.starts_with(kMinus)) {
      token.text = "-";
      length = kMinus.size();
    } else if (isDigit(text[0]) || isWordByte(text[0])) {
      const bool isNumber = isDigit(text[0]);
      token.kind = isNumber ? DateToken::Kind::Number : DateToken::Kind::Word;
      const auto belongs = [&](std::size_t at) {
        return isNumber ? isDigit(text[at]) : isWordByte(text[at]) && blankLength(text.substr(at)) == 0;
      };
      while (length < text.size() && belongs(length)) ++length;
      token.text = text.substr(0, length);
    }
    tokens.push_back(token);
    touches = true;
    text.remove_prefix(length);
  }
  return tokens;
}

}  // namespace clipwave
