// How numbers, sizes and durations are written: pure rules.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace clipwave {

// "%02i".
std::string twoDigits(int number);
// "%02i:%02i:%02i", truncated; three digits of hours from 100 hours on.
std::string durationText(double seconds);
// "GB", "MB", "KB" or "Bytes"; powers of 1024, decided on the integer size.
std::string_view sizeUnit(std::int64_t bytes);
// "%2.2f" of the size in its unit, decided and computed in single precision.
std::string sizeText(std::int64_t bytes);
// The bytes that a number typed in a unit stands for, in single precision, truncated toward zero, the low 32
// bits of it; 0 for text that is no number.
std::int32_t bytesFromText(std::string_view number, std::string_view unit);
// "Time:%@ Size:%2.2f MB".
std::string movieInfoText(std::string_view duration, std::int64_t fileSize);

}  // namespace clipwave
