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

// Status of a platform operation; 0 is success.
using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus paramErr = -50;
inline constexpr OSStatus ioErr = -36;
inline constexpr OSStatus dskFulErr = -34;
inline constexpr OSStatus fnfErr = -43;
inline constexpr OSStatus userCanceledErr = -128;
inline constexpr OSStatus noDeviceForChannel = -9400;

}  // namespace clipwave
