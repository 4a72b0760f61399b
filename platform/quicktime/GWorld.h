// An offscreen pixel buffer: what the sequence grabber draws into and the preview is read from.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/quicktime/FourCharacterCode.h"

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

// Sizes are 1 to 8,190 pixels either way, which is what the video compressor takes; null for any other, and
// when there is no memory.
std::unique_ptr<GWorld> makeGWorld(const QDRect& bounds);

}  // namespace clipwave
