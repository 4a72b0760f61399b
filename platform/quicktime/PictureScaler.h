// Turns decoded pictures into pixels for the screen. Internal to this room.
#pragma once

#include <array>
#include <optional>

#include "platform/quicktime/MovieInput.h"
#include "platform/quicktime/PixelBuffer.h"

namespace clipwave {

struct PictureShape {
  double pixelAspect = 1;  // width of a pixel by its height
  int quarterTurns = 0;    // clockwise, 0 to 3
  // The area to fit into, in pixels; a measure of 0 sets no limit.
  int areaWidth = 0;
  int areaHeight = 0;
};

class PictureScaler {
 public:
  // The whole picture at most as large as the area, in its own proportions, and never larger than its
  // natural size. Nothing for a picture that cannot be converted. The buffer's time is left to the caller.
  std::optional<PixelBuffer> scaled(const AVFrame& frame, const PictureShape& shape);

 private:
  // What a scaler is made for: both pictures' measures, the format, and the meaning of its colours.
  using Purpose = std::array<int, 7>;
  bool prepare(const Purpose& purpose);

  std::unique_ptr<SwsContext, FreeLibraryObject> scaler_;
  Purpose purpose_{};
};

}  // namespace clipwave
