#include "platform/foundation/URLEscapes.h"

#include <gtest/gtest.h>

namespace clipwave {
namespace {

TEST(URLEscapes, LegalCharactersStandAndAllOthersAreEscapedByteByByte) {
  const std::string legal = "AZaz09-_.!~*'();/:@&=+$,?";
  EXPECT_EQ(stringByAddingPercentEscapes(legal, "", ""), legal);
  EXPECT_EQ(stringByAddingPercentEscapes("100% #1 \"<é>\"", "", ""), "100%25%20%231%20%22%3C%C3%A9%3E%22");
  EXPECT_EQ(stringByAddingPercentEscapes(std::string_view("\0\x7F[]{}|\\^`", 10), "", ""),
            "%00%7F%5B%5D%7B%7D%7C%5C%5E%60");
}

TEST(URLEscapes, TheTwoListsOverrideWhatIsLegal) {
  EXPECT_EQ(stringByAddingPercentEscapes("a?b=c&d%20#e", "", "=?&"), "a%3Fb%3Dc%26d%2520%23e");
  EXPECT_EQ(stringByAddingPercentEscapes("a%20#e f", "%#", ""), "a%20#e%20f");
  EXPECT_EQ(stringByAddingPercentEscapes("%", "%", "%"), "%25");
}

TEST(URLEscapes, RemovingThemUndoesAddingAndLeavesWhatIsNoEscape) {
  const std::string text = "My Show/100% \xC3\xA9?=&\x01";
  EXPECT_EQ(stringByRemovingPercentEscapes(stringByAddingPercentEscapes(text, "", "=?&")), text);
  EXPECT_EQ(stringByRemovingPercentEscapes("%c3%A9 %2 %zz %4x 100%"), "\xC3\xA9 %2 %zz %4x 100%");
  EXPECT_EQ(stringByRemovingPercentEscapes("%2525"), "%25");
}

}  // namespace
}  // namespace clipwave
