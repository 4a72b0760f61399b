// The numbers, words and signs of a text that may be a date. Internal to this room.
#pragma once

#include <string_view>
#include <vector>

namespace clipwave {

struct DateToken {
  enum class Kind { Number, Word, Sign };
  Kind kind;
  std::string_view text;
  bool touchesPrevious;  // nothing stands between it and the token before

  bool isNumber(std::size_t leastDigits, std::size_t mostDigits) const {
    return kind == Kind::Number && text.size() >= leastDigits && text.size() <= mostDigits;
  }
  bool isSign(char c) const { return kind == Kind::Sign && text[0] == c; }
};

// The tokens of the text, which has to outlive them; white space and comments in parentheses are left out.
// Only the beginning of a text that is too long for a date.
std::vector<DateToken> dateTokensOf(std::string_view text);

}  // namespace clipwave
