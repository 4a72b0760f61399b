#include "platform/foundation/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace clipwave {
namespace {

constexpr std::string_view kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::array<std::int8_t, 256> kBase64Values = [] {
  std::array<std::int8_t, 256> values{};
  values.fill(-1);
  for (std::size_t i = 0; i < kBase64.size(); ++i)
    values[static_cast<unsigned char>(kBase64[i])] = static_cast<std::int8_t>(i);
  return values;
}();

}  // namespace

void appendBase64(std::string& out, std::string_view bytes) {
  std::size_t i = 0;
  const auto byte = [bytes](std::size_t at) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at]));
  };
  const auto digit = [](std::uint32_t group, unsigned shift) { return kBase64[group >> shift & 63U]; };
  for (; i + 3 <= bytes.size(); i += 3) {
    const std::uint32_t group = byte(i) << 16U | byte(i + 1) << 8U | byte(i + 2);
    const char digits[] = {digit(group, 18), digit(group, 12), digit(group, 6), digit(group, 0)};
    out.append(digits, 4);
  }
  const std::size_t left = bytes.size() - i;
  if (left == 0) return;
  const std::uint32_t group = byte(i) << 16U | (left == 2 ? byte(i + 1) << 8U : 0);
  out += digit(group, 18);
  out += digit(group, 12);
  out += left == 2 ? digit(group, 6) : '=';
  out += '=';
}

std::optional<std::string> parseBase64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  std::size_t padding = 0;
  while (padding < 2 && padding < text.size() && text[text.size() - 1 - padding] == '=') ++padding;
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  for (std::size_t i = 0; i < text.size(); i += 4) {
    const std::size_t digits = i + 4 == text.size() ? 4 - padding : 4;
    std::uint32_t group = 0;
    for (std::size_t j = 0; j < 4; ++j) {
      const int value = j < digits ? kBase64Values[static_cast<unsigned char>(text[i + j])] : 0;
      if (value < 0) return std::nullopt;
      group = group << 6U | static_cast<std::uint32_t>(value);
    }
    for (std::size_t j = 1; j < digits; ++j) bytes += static_cast<char>(group >> (24 - 8 * j) & 255U);
  }
  return bytes;
}

}  // namespace clipwave
