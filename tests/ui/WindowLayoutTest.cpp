#include "ui/WindowLayout.h"

#include <gtest/gtest.h>

#include "tests/support/LibraryWindow.h"

namespace clipwave {
namespace {

class WindowLayoutTest : public ::testing::Test {
 protected:
  WindowLayoutTest() {
    int tag = 0;
    for (const char* title : {"folder", "mac", "mac 2", "other"}) {
      ManagedObject& channel = window_.addChannel(title);
      channel.setValue("protocolTag", title[0] == 'm' ? 2 : title[0] == 'f' ? 1 : 7 + tag++);
    }
    lowerView_.setFrame(kAdvanced);
  }
  // Selects the rows as a user does and answers the lower view's frame afterwards.
  Rect select(const IndexSet& rows) {
    window_.channels.setSelectionIndexes(rows);
    const int drawn = window_.mainWindow.contentView().displayCount();
    layout_.updateWindowSize();
    EXPECT_EQ(window_.mainWindow.contentView().displayCount(), drawn + 1);
    EXPECT_EQ(window_.mainWindow.isSimple(), lowerView_.frame().size.height > 240);
    return lowerView_.frame();
  }

  static constexpr Rect kAdvanced{{10, 74}, {600, 240}};
  static constexpr Rect kSimple{{10, 74}, {600, 282}};
  testing::LibraryWindow window_;
  View lowerView_;
  WindowLayout layout_{window_.mainWindow, lowerView_, window_.channels, window_.host.userDefaults};
};

TEST_F(WindowLayoutTest, TheLowerViewGrowsOnceForDotMacAndComesBackToItsHeight) {
  EXPECT_EQ(select({0}), kAdvanced);
  EXPECT_EQ(select({1}), kSimple);
  EXPECT_EQ(select({2}), kSimple);
  EXPECT_EQ(select({3}), kSimple) << "another method leaves the layout as it is";
  EXPECT_EQ(select({0}), kAdvanced);
  EXPECT_EQ(select({3}), kAdvanced);
  EXPECT_EQ(select({0, 1}), kAdvanced) << "the first of several decides";
  EXPECT_EQ(select({1, 2}), kSimple);
  EXPECT_EQ(select({}), kAdvanced);
  EXPECT_EQ(select({}), kAdvanced);
}

TEST_F(WindowLayoutTest, TheSimpleLayoutKeepsTheOriginAndTheAdvancedOneSetsIt) {
  lowerView_.setFrame({{10, 80}, {600, 240}});
  EXPECT_EQ(select({1}), (Rect{{10, 80}, {600, 282}}));
  EXPECT_EQ(select({0}), kAdvanced);
}

TEST_F(WindowLayoutTest, TheSplitViewStopsWhereTheDefaultsSay) {
  EXPECT_EQ(layout_.constrainMinCoordinate(30, 0), 0.F);
  EXPECT_EQ(layout_.constrainMaxCoordinate(400, 0), 0.F);
  window_.host.userDefaults.setInitialValues({{"minsplitview", "120.5"}, {"maxsplitfactor", 0.75}});
  EXPECT_EQ(layout_.constrainMinCoordinate(30, 1), 120.5F);
  EXPECT_EQ(layout_.constrainMaxCoordinate(400, 0), 300.F);
}

}  // namespace
}  // namespace clipwave
