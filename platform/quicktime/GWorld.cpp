#include "platform/quicktime/GWorld.h"

#include <cstdlib>
#include <cstring>

namespace clipwave {
namespace {

constexpr std::size_t kBytesPerPixel = 4;
// Rows begin where vector instructions like it; what they write beyond a row's end stays in the buffer.
constexpr std::size_t kAlignment = 64;

struct FreeMemory {
  void operator()(std::uint8_t* memory) const { std::free(memory); }
};
using Pixels = std::unique_ptr<std::uint8_t, FreeMemory>;

class MemoryGWorld final : public GWorld {
 public:
  MemoryGWorld(const QDRect& bounds, std::size_t rowBytes, Pixels pixels)
      : bounds_(bounds), rowBytes_(rowBytes), pixels_(std::move(pixels)) {}

  bool lockPixels() override { return true; }
  void unlockPixels() override {}
  std::uint8_t* pixBaseAddr() override { return pixels_.get(); }
  int pixRowBytes() const override { return static_cast<int>(rowBytes_); }
  QDRect portBounds() const override { return bounds_; }

 private:
  QDRect bounds_;
  std::size_t rowBytes_;
  Pixels pixels_;
};

}  // namespace

std::unique_ptr<GWorld> makeGWorld(const QDRect& bounds) {
  if (!isPictureMeasure(bounds.width()) || !isPictureMeasure(bounds.height())) return nullptr;
  const std::size_t row = static_cast<std::size_t>(bounds.width()) * kBytesPerPixel;
  const std::size_t rowBytes = (row + kAlignment - 1) / kAlignment * kAlignment;
  const std::size_t size = rowBytes * static_cast<std::size_t>(bounds.height()) + kAlignment;
  Pixels pixels(static_cast<std::uint8_t*>(std::aligned_alloc(kAlignment, size)));
  if (!pixels) return nullptr;
  std::memset(pixels.get(), 0, size);
  for (std::size_t alpha = 0; alpha < size; alpha += kBytesPerPixel) pixels.get()[alpha] = 0xFF;
  return std::make_unique<MemoryGWorld>(bounds, rowBytes, std::move(pixels));
}

}  // namespace clipwave
