// Blanks and letters of ASCII text, the same in every locale.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace clipwave {

inline constexpr std::string_view kBlanks = " \t\r\n";

// The text without the blanks at its beginning and its end.
inline std::string_view trimmed(std::string_view text, std::string_view blanks = kBlanks) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

inline char lowerCased(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
inline std::string lowerCased(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = lowerCased(c);
  return lower;
}

inline bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lowerCased(x) == lowerCased(y); });
}

}  // namespace clipwave
