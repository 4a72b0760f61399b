#include "ui/WindowLayout.h"

#include <gtest/gtest.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

constexpr Rect kAdvanced{{10, 74}, {600, 240}};
constexpr Rect kSimple{{10, 74}, {600, 282}};

class WindowLayoutTest : public Test {
 protected:
  WindowLayoutTest() {
    for (const int tag : {2, 2, 7}) program_.addChannel().setValue("protocolTag", tag);
    window_.lowerView.setFrame(kAdvanced);
  }
  // The lower view's frame after the rows were selected and the layout was asked for once more.
  Rect select(const IndexSet& rows) {
    program_.channels().setSelectionIndexes(rows);
    layout_.updateWindowSize();
    EXPECT_EQ(window_.mainWindow.isSimple(), window_.lowerView.frame().size.height > 240);
    return window_.lowerView.frame();
  }
  TestProgram program_;
  MainInterface& window_ = program_.launch();
  WindowLayout& layout_ = program_.controller().windowLayout();
};

TEST_F(WindowLayoutTest, TheLowerViewGrowsOnceForDotMacAndComesBackToItsHeight) {
  const std::pair<IndexSet, Rect> steps[] = {{{0}, kAdvanced},    {{1}, kSimple},    {{2}, kSimple},
                                             {{3}, kSimple},      {{0}, kAdvanced},  {{3}, kAdvanced},
                                             {{0, 1}, kAdvanced}, {{1, 3}, kSimple}, {{}, kAdvanced}};
  for (const auto& [rows, frame] : steps) EXPECT_EQ(select(rows), frame);
  window_.lowerView.setFrame({{10, 80}, {600, 240}});
  EXPECT_EQ(select({1}), (Rect{{10, 80}, {600, 282}})) << "the simple layout keeps the origin";
  EXPECT_EQ(select({0}), kAdvanced);
}

}  // namespace
}  // namespace clipwave
