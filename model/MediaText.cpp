#include "model/MediaText.h"

#include <array>
#include <charconv>
#include <cmath>

#include "platform/foundation/Value.h"

namespace clipwave {
namespace {

constexpr std::int64_t kGigabyte = 1'073'741'824;
constexpr std::int64_t kMegabyte = 1'048'576;
constexpr std::int64_t kKilobyte = 1'024;

// Not printf: its decimal point follows the locale that the desktop sets.
std::string twoDecimals(float number) {
  std::array<char, 64> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed, 2);
  return std::string(buffer.data(), end.ptr);
}

}  // namespace

std::string twoDigits(int number) {
  const std::string text = std::to_string(number);
  return text.size() < 2 ? "0" + text : text;
}

std::string durationText(double seconds) {
  auto t = static_cast<float>(seconds);
  // A damaged file may claim anything; what an int cannot hold is no duration.
  if (!(t >= 0 && t < 2e9F)) t = 0;
  const int hours = static_cast<int>(t / 3600.0F);
  const float rest = t - static_cast<float>(3600LL * hours);
  const int minutes = static_cast<int>(rest / 60.0F);
  const int wholeSeconds = static_cast<int>(rest - static_cast<float>(60 * minutes));
  return twoDigits(hours) + ":" + twoDigits(minutes) + ":" + twoDigits(wholeSeconds);
}

std::string_view sizeUnit(std::int64_t bytes) {
  if (bytes > kGigabyte) return "GB";
  if (bytes > kMegabyte) return "MB";
  if (bytes > kKilobyte) return "KB";
  return "Bytes";
}

std::string sizeText(std::int64_t bytes) {
  const auto x = static_cast<float>(bytes);
  if (x > static_cast<float>(kGigabyte)) return twoDecimals(std::ldexp(x, -30));
  if (x > static_cast<float>(kMegabyte)) return twoDecimals(std::ldexp(x, -20));
  if (x > static_cast<float>(kKilobyte)) return twoDecimals(std::ldexp(x, -10));
  return twoDecimals(x);
}

std::int32_t bytesFromText(std::string_view number, std::string_view unit) {
  float multiplier = 1;
  if (unit == "GB") multiplier = static_cast<float>(kGigabyte);
  if (unit == "MB") multiplier = static_cast<float>(kMegabyte);
  if (unit == "KB") multiplier = static_cast<float>(kKilobyte);
  const float product = multiplier * static_cast<float>(Value(number).doubleValue());
  if (!(std::abs(product) < 9e18F)) return 0;
  return static_cast<std::int32_t>(static_cast<std::int64_t>(product));
}

std::string movieInfoText(std::string_view duration, std::int64_t fileSize) {
  const float megabytes = std::ldexp(static_cast<float>(fileSize), -20);
  return "Time:" + std::string(duration) + " Size:" + twoDecimals(megabytes) + " MB";
}

}  // namespace clipwave
