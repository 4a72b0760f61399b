#include "ui/CustomTableView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {

using ::testing::ElementsAre;

class CustomTableViewTest : public ::testing::Test {
 protected:
  CustomTableViewTest() { program_.addEpisodes({"1.mov", "2.mov", "3.mov"}); }
  testing::TestProgram program_;
  CustomTableView& table_ = program_.launch().vcastTableView;
};

TEST_F(CustomTableViewTest, DeleteRemovesTheSelectedRowsOrBeepsWithoutOne) {
  program_.shell.answerAlert(Alert::Answer::Other);
  table_.selectRowIndexes({0, 2});
  EXPECT_TRUE(table_.keyDown({127, 0}));
  EXPECT_THAT(program_.listed(program_.episodes()), ElementsAre("2"));
  table_.selectRowIndexes({});
  EXPECT_TRUE(table_.keyDown({127, 0}));
  EXPECT_EQ(program_.shell.beeps, 1);
  EXPECT_EQ(program_.shell.alerts.size(), 1U);
}

TEST_F(CustomTableViewTest, EveryOtherKeyIsTheTablesOwn) {
  table_.selectRowIndexes({0});
  constexpr unsigned kForwardDelete = 0xF728;
  for (const KeyEvent& key :
       {KeyEvent{127, KeyEvent::Shift}, KeyEvent{127, KeyEvent::Control}, KeyEvent{127, KeyEvent::Option},
        KeyEvent{127, KeyEvent::Command}, KeyEvent{kForwardDelete, 0}}) {
    EXPECT_FALSE(table_.keyDown(key)) << key.modifiers;
  }
  EXPECT_TRUE(table_.keyDown({NSDownArrowFunctionKey, 0}));
  EXPECT_THAT(program_.episodes().selectionIndexes(), ElementsAre(1));
  EXPECT_EQ(program_.shell.alerts.size() + static_cast<std::size_t>(program_.shell.beeps), 0U);
}

TEST_F(CustomTableViewTest, TheContentControllerIsHeldOnlyWhileBound) {
  table_.bind("value", &program_.channels(), "selection.vcTitle");
  table_.unbind("value");
  EXPECT_EQ(table_.tableContentController(), &program_.episodes());
  EXPECT_EQ(table_.tableContentKey(), "arrangedObjects");
  table_.unbind("content");
  EXPECT_EQ(table_.tableContentController(), nullptr);
  EXPECT_EQ(table_.tableContentKey(), "");
  table_.keyDown({127, 0});
  EXPECT_EQ(program_.episodes().arrangedObjects().size(), 3U);
}

}  // namespace
}  // namespace clipwave
