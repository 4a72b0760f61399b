#include "ui/CustomTableView.h"

#include <gmock/gmock.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class CustomTableViewTest : public Test {
 protected:
  CustomTableViewTest() { program_.addEpisodes({"1.mov", "2.mov", "3.mov"}); }
  TestProgram program_;
  CustomTableView& table_ = program_.launch().vcastTableView;
};

TEST_F(CustomTableViewTest, DeleteRemovesTheSelectedRowsOrBeepsAndEveryOtherKeyIsTheTablesOwn) {
  table_.selectRowIndexes({0, 2});
  constexpr unsigned kForwardDelete = 0xF728;
  for (const unsigned modifier : {KeyEvent::Shift, KeyEvent::Control, KeyEvent::Option, KeyEvent::Command})
    EXPECT_FALSE(table_.keyDown({127, modifier})) << modifier;
  EXPECT_FALSE(table_.keyDown({kForwardDelete, 0}));
  program_.shell.answerAlert(Alert::Answer::Other);
  EXPECT_TRUE(table_.keyDown({127, 0}));
  EXPECT_THAT(program_.listed(program_.episodes()), ElementsAre("2"));
  table_.selectRowIndexes({});
  EXPECT_TRUE(table_.keyDown({127, 0}));
  EXPECT_EQ(program_.shell.beeps, 1);
  EXPECT_EQ(program_.shell.alerts.size(), 1U);
}

}  // namespace
}  // namespace clipwave
