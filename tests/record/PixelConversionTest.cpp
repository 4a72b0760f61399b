#include "record/PixelConversion.h"

#include <gtest/gtest.h>

#include "tests/support/FakeCaptureKit.h"

namespace clipwave {
namespace {

TEST(PixelConversion, PixelsAreReorderedInAFreshBitmap) {
  testing::CaptureScript script;
  testing::FakeGWorld world(script, {0, 0, 3, 5});
  for (std::size_t i = 0; i < world.bytes.size(); ++i) world.bytes[i] = static_cast<std::uint8_t>(i * 7);
  const auto bitmap = bitmapFromGWorld(world);
  ASSERT_EQ(bitmap->bytesPerRow, 20U);
  for (std::size_t y = 0; y < 3; ++y)
    for (std::size_t x = 0; x < 20; ++x)
      EXPECT_EQ(bitmap->bytes[y * 20 + x], world.bytes[y * 28 + x / 4 * 4 + (x + 1) % 4]);
  EXPECT_NE(bitmapFromGWorld(world), bitmap);
  script.pixelsCanBeLocked = false;
  EXPECT_EQ(bitmapFromGWorld(world), nullptr);
}

}  // namespace
}  // namespace clipwave
