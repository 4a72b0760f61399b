#include "platform/quicktime/PictureScaler.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

extern "C" {
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

#include "platform/quicktime/PictureColours.h"

namespace clipwave {
namespace {

constexpr std::size_t kBytesPerPixel = 4;
// The scaler writes whole vectors and may go beyond a row's end.
constexpr std::size_t kRowAlignment = 64;
constexpr int kLargestMeasure = 16'384;

PixelBuffer makeBuffer(int width, int height) {
  PixelBuffer buffer;
  buffer.width = width;
  buffer.height = height;
  const std::size_t row = static_cast<std::size_t>(width) * kBytesPerPixel;
  buffer.bytesPerRow = (row + kRowAlignment - 1) / kRowAlignment * kRowAlignment;
  buffer.bytes.resize(buffer.bytesPerRow * static_cast<std::size_t>(height) + kRowAlignment);
  return buffer;
}

// Where the pixel of the turned picture at (x, y) stands in the picture that is not.
std::pair<int, int> sourceOf(int x, int y, int width, int height, int turns) {
  if (turns == 1) return {y, height - 1 - x};
  if (turns == 2) return {width - 1 - x, height - 1 - y};
  return {width - 1 - y, x};
}

PixelBuffer turned(PixelBuffer upright, int turns) {
  if (turns == 0) return upright;
  const bool isAcross = turns % 2 != 0;
  PixelBuffer buffer =
      makeBuffer(isAcross ? upright.height : upright.width, isAcross ? upright.width : upright.height);
  for (int y = 0; y < buffer.height; ++y) {
    std::uint8_t* target = buffer.bytes.data() + buffer.bytesPerRow * static_cast<std::size_t>(y);
    for (int x = 0; x < buffer.width; ++x, target += kBytesPerPixel) {
      const auto [sourceX, sourceY] = sourceOf(x, y, upright.width, upright.height, turns);
      std::memcpy(target, upright.row(sourceY) + static_cast<std::size_t>(sourceX) * kBytesPerPixel,
                  kBytesPerPixel);
    }
  }
  return buffer;
}

int measure(double pixels) {
  return static_cast<int>(std::clamp(std::lround(pixels), 1L, static_cast<long>(kLargestMeasure)));
}

}  // namespace

std::optional<PixelBuffer> PictureScaler::scaled(const AVFrame& frame, const PictureShape& shape) {
  if (frame.width <= 0 || frame.height <= 0 || frame.data[0] == nullptr) return {};
  const bool isAcross = shape.quarterTurns % 2 != 0;
  const int areaWidth = isAcross ? shape.areaHeight : shape.areaWidth;
  const int areaHeight = isAcross ? shape.areaWidth : shape.areaHeight;
  const double width = frame.width * shape.pixelAspect;
  double factor = 1;
  if (areaWidth > 0) factor = std::min(factor, areaWidth / width);
  if (areaHeight > 0) factor = std::min(factor, static_cast<double>(areaHeight) / frame.height);
  PixelBuffer buffer = makeBuffer(measure(width * factor), measure(frame.height * factor));
  if (!prepare({frame.width, frame.height, frame.format, buffer.width, buffer.height, colourSpaceOf(frame),
                frame.color_range == AVCOL_RANGE_JPEG ? 1 : 0}))
    return {};
  std::uint8_t* const planes[4] = {buffer.bytes.data()};
  const int strides[4] = {static_cast<int>(buffer.bytesPerRow)};
  if (sws_scale(scaler_.get(), frame.data, frame.linesize, 0, frame.height, planes, strides) <= 0) return {};
  return turned(std::move(buffer), shape.quarterTurns);
}

bool PictureScaler::prepare(const Purpose& purpose) {
  if (scaler_ && purpose_ == purpose) return true;
  const auto [sourceWidth, sourceHeight, format, width, height, space, range] = purpose;
  scaler_.reset(sws_getContext(sourceWidth, sourceHeight, static_cast<AVPixelFormat>(format), width, height,
                               AV_PIX_FMT_BGR0, SWS_BILINEAR, nullptr, nullptr, nullptr));
  if (!scaler_) return false;
  purpose_ = purpose;
  setSourceColours(*scaler_, space, range != 0);
  return true;
}

}  // namespace clipwave
