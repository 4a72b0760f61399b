// What the platform's capture operations answer: 0 for success, else why they failed.
#pragma once

#include <cstdint>

namespace clipwave {

using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus paramErr = -50;
inline constexpr OSStatus ioErr = -36;
inline constexpr OSStatus dskFulErr = -34;
inline constexpr OSStatus fnfErr = -43;
inline constexpr OSStatus userCanceledErr = -128;
inline constexpr OSStatus noDeviceForChannel = -9400;

}  // namespace clipwave
