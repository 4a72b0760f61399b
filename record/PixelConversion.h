// Turns an offscreen pixel buffer into a bitmap that can be shown.
#pragma once

#include <memory>

#include "platform/appkit/ImageView.h"
#include "platform/quicktime/GWorld.h"

namespace clipwave {

// A new bitmap of the world's size: each pixel's alpha, red, green, blue as red, green, blue, alpha. The
// world's pixels are read where they are. Null when they cannot be locked.
std::shared_ptr<const Bitmap> bitmapFromGWorld(GWorld& world);

}  // namespace clipwave
