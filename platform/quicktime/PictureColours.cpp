#include "platform/quicktime/PictureColours.h"

extern "C" {
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

namespace clipwave {
namespace {

constexpr int kHighDefinition = 720;  // rows

// Without `target` the target's meaning is left as it is.
void set(SwsContext& scaler, int space, bool hasFullRange, const int* target) {
  int* table = nullptr;
  int* inverse = nullptr;
  int sourceRange = 0, targetRange = 0, brightness = 0, contrast = 0, saturation = 0;
  if (sws_getColorspaceDetails(&scaler, &inverse, &sourceRange, &table, &targetRange, &brightness, &contrast,
                               &saturation) < 0)
    return;
  sws_setColorspaceDetails(&scaler, sws_getCoefficients(space), sourceRange | (hasFullRange ? 1 : 0),
                           target != nullptr ? target : table, target != nullptr ? 0 : targetRange,
                           brightness, contrast, saturation);
}

}  // namespace

int colourSpaceOfHeight(int rows) {
  return rows >= kHighDefinition ? AVCOL_SPC_BT709 : AVCOL_SPC_SMPTE170M;
}

int colourSpaceOf(const AVFrame& picture) {
  return picture.colorspace != AVCOL_SPC_UNSPECIFIED ? picture.colorspace
                                                     : colourSpaceOfHeight(picture.height);
}

void setSourceColours(SwsContext& scaler, int space, bool hasFullRange) {
  set(scaler, space, hasFullRange, nullptr);
}

void setColours(SwsContext& scaler, int sourceSpace, bool sourceHasFullRange, int targetSpace) {
  set(scaler, sourceSpace, sourceHasFullRange, sws_getCoefficients(targetSpace));
}

}  // namespace clipwave
