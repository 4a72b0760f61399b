#include <gmock/gmock.h>

#include "platform/appkit/Controls.h"
#include "platform/appkit/TableView.h"
#include "platform/appkit/Window.h"
#include "tests/appkit/SmallLibrary.h"

namespace clipwave {
namespace {
using namespace ::testing;

class TableViewTest : public SmallLibrary, public TableView::Delegate {
 protected:
  TableViewTest() {
    fill();
    table.setDelegate(this);
    table.bind("content", &episodes, "arrangedObjects");
  }
  bool selectionShouldChangeInTableView(TableView&) override { return !refuses; }
  unsigned validateDrop(TableView&, const DraggingInfo&, int, TableDropOperation) override { return 0; }
  bool acceptDrop(TableView&, const DraggingInfo&, int, TableDropOperation) override { return false; }
  TableView table;
  bool refuses = false;
};

TEST_F(TableViewTest, TheTableSharesTheListsSelectionAndItsKeysMoveIt) {
  int changes = 0;
  const Observation observation = table.observe([&] { ++changes; });
  episodes.setSelectionIndex(1);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(table.selectedRowIndexes(), IndexSet{1});
  const auto press = [this](unsigned key, unsigned modifiers = 0) {
    EXPECT_TRUE(table.keyDown({key, modifiers}));
    return titles(episodes.selectedObjects());
  };
  EXPECT_EQ(press(NSDownArrowFunctionKey), "a1");
  EXPECT_EQ(press(NSUpArrowFunctionKey, KeyEvent::Shift), "a2 a1");
  EXPECT_EQ(press(NSHomeFunctionKey), "a3");
  EXPECT_EQ(press(NSUpArrowFunctionKey), "a3");
  EXPECT_EQ(press(NSEndFunctionKey), "a1");
  refuses = true;
  EXPECT_EQ(press(NSHomeFunctionKey), "a1");
  EXPECT_FALSE(table.keyDown({NSHomeFunctionKey, KeyEvent::Command}));
}

}  // namespace
}  // namespace clipwave
