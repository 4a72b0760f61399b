// A view that shows one image, and the bitmaps that such images are made of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "platform/appkit/Element.h"

namespace clipwave {

// Rows from the top, four bytes a pixel: red, green, blue, alpha; alpha is premultiplied.
struct Bitmap {
  // The bytes are not set to anything.
  Bitmap(int widthInPixels, int heightInPixels)
      : width(widthInPixels),
        height(heightInPixels),
        bytesPerRow(std::size_t{4} * static_cast<std::size_t>(widthInPixels)),
        bytes(std::make_unique_for_overwrite<std::uint8_t[]>(bytesPerRow *
                                                             static_cast<std::size_t>(heightInPixels))) {}

  int width;
  int height;
  std::size_t bytesPerRow;
  std::unique_ptr<std::uint8_t[]> bytes;
};

class ImageView : public View {
 public:
  // None: the view's ground alone.
  const std::shared_ptr<const Bitmap>& image() const { return image_; }
  void setImage(std::shared_ptr<const Bitmap> image) { assign(image_, std::move(image)); }

 private:
  std::shared_ptr<const Bitmap> image_;
};

}  // namespace clipwave
