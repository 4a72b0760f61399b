// Four-character codes: what the platform's types, properties and creators are called, as 32-bit values.
#pragma once

#include <cstdint>

namespace clipwave {

using OSType = std::uint32_t;

consteval OSType fourCharacterCode(const char (&text)[5]) {
  OSType code = 0;
  for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<unsigned char>(text[i]);
  return code;
}

}  // namespace clipwave
