#include "platform/foundation/URLEscapes.h"

#include <array>
#include <cstdint>

namespace clipwave {
namespace {

constexpr std::string_view kAlphanumerics = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::string_view kUnreservedMarks = "-_.!~*'()";
constexpr std::string_view kReserved = ";/?:@&=+$,";

int hexadecimalDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

std::string stringByAddingPercentEscapes(std::string_view text, std::string_view charactersToLeaveUnescaped,
                                         std::string_view legalURLCharactersToBeEscaped) {
  std::array<bool, 256> stands{};
  for (std::string_view legal : {kAlphanumerics, kUnreservedMarks, kReserved, charactersToLeaveUnescaped}) {
    for (char c : legal) stands[static_cast<std::uint8_t>(c)] = true;
  }
  for (char c : legalURLCharactersToBeEscaped) stands[static_cast<std::uint8_t>(c)] = false;

  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string escaped;
  escaped.reserve(text.size() + text.size() / 4);
  for (char c : text) {
    const auto byte = static_cast<std::uint8_t>(c);
    if (stands[byte]) {
      escaped += c;
    } else {
      escaped += '%';
      escaped += kDigits[byte >> 4];
      escaped += kDigits[byte & 15];
    }
  }
  return escaped;
}

bool beginsWithPercentEscape(std::string_view text) {
  return text.size() > 2 && text[0] == '%' && hexadecimalDigit(text[1]) >= 0 &&
         hexadecimalDigit(text[2]) >= 0;
}

std::string stringByRemovingPercentEscapes(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (beginsWithPercentEscape(text.substr(i))) {
      plain += static_cast<char>(hexadecimalDigit(text[i + 1]) * 16 + hexadecimalDigit(text[i + 2]));
      i += 2;
    } else {
      plain += text[i];
    }
  }
  return plain;
}

}  // namespace clipwave
