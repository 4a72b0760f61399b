#include "ui/CustomTableView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/LibraryWindow.h"

namespace clipwave {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr KeyEvent kDelete{127, 0};

class CustomTableViewTest : public ::testing::Test {
 protected:
  CustomTableViewTest() {
    window_.addChannel("News");
    for (const char* name : {"one.mov", "two.mov", "three.mov"}) window_.addEpisode(name);
  }
  testing::LibraryWindow window_;
  CustomTableView& table_ = window_.episodeTable;
};

TEST_F(CustomTableViewTest, DeleteRemovesTheSelectedRowsOrBeepsWithoutOne) {
  window_.shell.answerAlert(Alert::Answer::Other);
  table_.selectRowIndexes({0, 2});
  EXPECT_TRUE(table_.keyDown(kDelete));
  EXPECT_THAT(window_.titles(window_.episodes), ElementsAre("two"));

  table_.selectRowIndexes({});
  EXPECT_TRUE(table_.keyDown(kDelete));
  EXPECT_EQ(window_.shell.beeps, 1);
  EXPECT_EQ(window_.shell.alerts.size(), 1U);
}

TEST_F(CustomTableViewTest, EveryOtherKeyIsTheTablesOwn) {
  table_.selectRowIndexes({0});
  for (const unsigned modifier : {KeyEvent::Shift, KeyEvent::Control, KeyEvent::Option, KeyEvent::Command}) {
    EXPECT_FALSE(table_.keyDown({127, modifier})) << modifier;
  }
  constexpr unsigned kForwardDelete = 0xF728;
  EXPECT_FALSE(table_.keyDown({kForwardDelete, 0}));
  EXPECT_TRUE(table_.keyDown({NSDownArrowFunctionKey, 0}));
  EXPECT_THAT(window_.episodes.selectionIndexes(), ElementsAre(1));
  EXPECT_EQ(window_.shell.beeps, 0);
  EXPECT_EQ(window_.episodes.arrangedObjects().size(), 3U);
}

TEST_F(CustomTableViewTest, TheContentControllerIsHeldOnlyWhileBound) {
  table_.bind("selectionIndexes", &window_.channels, "selectionIndexes");
  table_.unbind("selectionIndexes");
  EXPECT_EQ(table_.tableContentController(), &window_.episodes);
  EXPECT_EQ(table_.tableContentKey(), "arrangedObjects");

  table_.unbind("content");
  EXPECT_EQ(table_.tableContentController(), nullptr);
  EXPECT_EQ(table_.tableContentKey(), "");
  table_.keyDown(kDelete);
  EXPECT_THAT(window_.shell.alerts, IsEmpty());
  EXPECT_EQ(window_.episodes.arrangedObjects().size(), 3U);
}

}  // namespace
}  // namespace clipwave
