#include "platform/quicktime/PreviewPainter.h"

#include <cstring>

extern "C" {
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

#include "platform/quicktime/PictureColours.h"

namespace clipwave {
namespace {

constexpr int kBytesPerPixel = 4;

// The formats that say by their name that they have the full range are outdated; the scaler warns of them.
AVPixelFormat plainFormatOf(int format) {
  switch (format) {
    case AV_PIX_FMT_YUVJ420P:
      return AV_PIX_FMT_YUV420P;
    case AV_PIX_FMT_YUVJ422P:
      return AV_PIX_FMT_YUV422P;
    case AV_PIX_FMT_YUVJ444P:
      return AV_PIX_FMT_YUV444P;
    default:
      return static_cast<AVPixelFormat>(format);
  }
}

// The scaler is several times as fast at the reverse order of bytes.
void turnPixels(std::uint8_t* row, int count) {
  for (int x = 0; x < count; ++x, row += kBytesPerPixel) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, row, sizeof pixel);
    pixel = __builtin_bswap32(pixel);
    std::memcpy(row, &pixel, sizeof pixel);
  }
}

}  // namespace

void PreviewPainter::paint(const AVFrame& picture, const QDRect& bounds, GWorld& world) {
  const QDRect port = world.portBounds();
  if (bounds.width() < 1 || bounds.height() < 1 || bounds.left < port.left || bounds.top < port.top ||
      bounds.right > port.right || bounds.bottom > port.bottom)
    return;
  if (picture.width <= 0 || picture.height <= 0 || picture.data[0] == nullptr ||
      !prepare(picture, bounds.width(), bounds.height()) || !world.lockPixels())
    return;
  std::uint8_t* const first = world.pixBaseAddr() +
                              static_cast<std::ptrdiff_t>(bounds.top - port.top) * world.pixRowBytes() +
                              static_cast<std::ptrdiff_t>(bounds.left - port.left) * kBytesPerPixel;
  std::uint8_t* const planes[4] = {first};
  const int strides[4] = {world.pixRowBytes()};
  sws_scale(scaler_.get(), picture.data, picture.linesize, 0, picture.height, planes, strides);
  for (int y = 0; y < bounds.height(); ++y)
    turnPixels(first + static_cast<std::ptrdiff_t>(y) * world.pixRowBytes(), bounds.width());
  world.unlockPixels();
}

bool PreviewPainter::prepare(const AVFrame& picture, int width, int height) {
  const AVPixelFormat format = plainFormatOf(picture.format);
  const int fullRange = format != picture.format || picture.color_range == AVCOL_RANGE_JPEG ? 1 : 0;
  const std::array purpose{picture.width, picture.height,         picture.format, width,
                           height,        colourSpaceOf(picture), fullRange};
  if (scaler_ && purpose == purpose_) return true;
  scaler_.reset(sws_getContext(picture.width, picture.height, format, width, height, AV_PIX_FMT_BGRA,
                               SWS_FAST_BILINEAR, nullptr, nullptr, nullptr));
  if (!scaler_) return false;
  purpose_ = purpose;
  const int* const table = sws_getCoefficients(colourSpaceOf(picture));
  sws_setColorspaceDetails(scaler_.get(), table, fullRange, table, 1, 0, 1 << 16, 1 << 16);
  return true;
}

}  // namespace clipwave
