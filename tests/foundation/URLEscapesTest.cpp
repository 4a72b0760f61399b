#include "platform/foundation/URLEscapes.h"

#include <gtest/gtest.h>

namespace clipwave {
namespace {

TEST(URLEscapes, RemovingThemUndoesAddingAndLeavesWhatIsNoEscape) {
  const std::string text = "My Show/100% \xC3\xA9?=&\x01";
  EXPECT_EQ(stringByRemovingPercentEscapes(stringByAddingPercentEscapes(text, "", "=?&")), text);
  EXPECT_EQ(stringByRemovingPercentEscapes("%c3%A9 %2 %zz %4x 100%"), "\xC3\xA9 %2 %zz %4x 100%");
  EXPECT_EQ(stringByRemovingPercentEscapes("%2525"), "%25");
}

}  // namespace
}  // namespace clipwave
