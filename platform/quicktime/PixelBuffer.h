// One picture of a movie, in memory, ready for the screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace clipwave {

// Rows from the top, four bytes a pixel: blue, green, red and one without meaning.
struct PixelBuffer {
  int width = 0;  // in pixels
  int height = 0;
  std::size_t bytesPerRow = 0;  // a multiple of 4, at least 4 * width
  std::vector<std::uint8_t> bytes;
  double time = 0;  // from when on the movie shows it, in seconds

  const std::uint8_t* row(int y) const { return bytes.data() + bytesPerRow * static_cast<std::size_t>(y); }
};

}  // namespace clipwave
