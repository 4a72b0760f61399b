// An offscreen pixel buffer: what the sequence grabber draws into and the preview is read from.
#pragma once

#include <cstdint>
#include <memory>

namespace clipwave {

// Coordinates in pixels, the y axis pointing down; right and bottom lie outside.
struct QDRect {
  std::int16_t top = 0;
  std::int16_t left = 0;
  std::int16_t bottom = 0;
  std::int16_t right = 0;

  int width() const { return right - left; }
  int height() const { return bottom - top; }
  bool operator==(const QDRect&) const = default;
};

// What a picture's width and height may be: what the video compressor takes.
inline constexpr int kLargestPictureMeasure = 8190;
constexpr bool isPictureMeasure(int pixels) {
  return pixels >= 1 && pixels <= kLargestPictureMeasure;
}

// Rows from the top, four bytes a pixel: alpha, red, green, blue; alpha is premultiplied. Black and opaque at
// first.
class GWorld {
 public:
  virtual ~GWorld() = default;
  // False when the pixels cannot be had at the moment; they may be used until unlockPixels().
  virtual bool lockPixels() = 0;
  virtual void unlockPixels() = 0;
  virtual std::uint8_t* pixBaseAddr() = 0;
  // At least 4 * width; a row may be followed by bytes without meaning.
  virtual int pixRowBytes() const = 0;
  virtual QDRect portBounds() const = 0;
};

// Null for measures that are no picture's, and when there is no memory.
std::unique_ptr<GWorld> makeGWorld(const QDRect& bounds);

}  // namespace clipwave
