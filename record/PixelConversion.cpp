#include "record/PixelConversion.h"

#include <bit>
#include <cstring>

namespace clipwave {
namespace {

// Bytes A, R, G, B become R, G, B, A: one turn of the pixel's 32 bits, whichever way round they are read.
inline std::uint32_t reordered(std::uint32_t pixel) {
  return std::endian::native == std::endian::little ? std::rotr(pixel, 8) : std::rotl(pixel, 8);
}

void convertRow(const std::uint8_t* source, std::uint8_t* target, int width) {
  for (int x = 0; x < width; ++x) {
    std::uint32_t pixel;
    std::memcpy(&pixel, source + std::size_t{4} * x, 4);
    pixel = reordered(pixel);
    std::memcpy(target + std::size_t{4} * x, &pixel, 4);
  }
}

}  // namespace

std::shared_ptr<const Bitmap> bitmapFromGWorld(GWorld& world) {
  if (!world.lockPixels()) return nullptr;
  const QDRect bounds = world.portBounds();
  auto bitmap = std::make_shared<Bitmap>(bounds.width(), bounds.height());
  const std::uint8_t* source = world.pixBaseAddr();
  std::uint8_t* target = bitmap->bytes.get();
  for (int y = 0; y < bounds.height(); ++y) {
    convertRow(source, target, bounds.width());
    source += world.pixRowBytes();
    target += bitmap->bytesPerRow;
  }
  world.unlockPixels();
  return bitmap;
}

}  // namespace clipwave
