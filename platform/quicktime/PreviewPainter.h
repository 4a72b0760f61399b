// Draws captured pictures into an offscreen pixel buffer. Internal to this room.
#pragma once

#include <array>

#include "platform/quicktime/GWorld.h"
#include "platform/quicktime/MovieInput.h"

namespace clipwave {

class PreviewPainter {
 public:
  // Fills `bounds`, whatever the picture's proportions; nothing where they lie outside of the world.
  void paint(const AVFrame& picture, const QDRect& bounds, GWorld& world);

 private:
  bool prepare(const AVFrame& picture, int width, int height);

  std::unique_ptr<SwsContext, FreeLibraryObject> scaler_;
  std::array<int, 7> purpose_{};  // what the scaler was made for
};

}  // namespace clipwave
