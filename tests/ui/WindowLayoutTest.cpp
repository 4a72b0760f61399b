#include "ui/WindowLayout.h"

#include <gtest/gtest.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {

constexpr Rect kAdvanced{{10, 74}, {600, 240}};
constexpr Rect kSimple{{10, 74}, {600, 282}};

class WindowLayoutTest : public ::testing::Test {
 protected:
  WindowLayoutTest() {
    for (const int tag : {2, 2, 7}) program_.addChannel().setValue("protocolTag", tag);
    window_.lowerView.setFrame(kAdvanced);
  }
  // The lower view's frame after the rows were selected and the layout was asked for once more.
  Rect select(const IndexSet& rows) {
    program_.channels().setSelectionIndexes(rows);
    const int drawn = window_.mainWindow.contentView().displayCount();
    layout_.updateWindowSize();
    EXPECT_EQ(window_.mainWindow.contentView().displayCount(), drawn + 1);
    EXPECT_EQ(window_.mainWindow.isSimple(), window_.lowerView.frame().size.height > 240);
    return window_.lowerView.frame();
  }
  testing::TestProgram program_;
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

TEST_F(WindowLayoutTest, TheSplitViewStopsWhereTheDefaultsSay) {
  EXPECT_EQ(layout_.constrainMinCoordinate(30, 0), 0.F);
  program_.defaults.setInitialValues({{"minsplitview", "120.5"}, {"maxsplitfactor", 0.75}});
  EXPECT_EQ(layout_.constrainMinCoordinate(30, 1), 120.5F);
  EXPECT_EQ(layout_.constrainMaxCoordinate(400, 0), 300.F);
}

}  // namespace
}  // namespace clipwave
