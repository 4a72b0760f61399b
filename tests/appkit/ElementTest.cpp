#include <gmock/gmock.h>

#include "platform/appkit/Controls.h"
#include "platform/appkit/Dragging.h"
#include "platform/appkit/TableView.h"
#include "platform/appkit/Window.h"
#include "tests/appkit/SmallLibrary.h"

namespace clipwave {
namespace {
using namespace ::testing;

TEST(TextFieldTest, AnEditIsAcceptedByValidatorAndCommitOrStaysAsTyped) {
  TextField field;
  bool acceptable = false;
  std::vector<std::string> asked;
  field.setStringValue("before");
  field.setValidator([&](const TextField&, std::string_view proposed) {
    asked.push_back("validator " + std::string(proposed));
    return acceptable;
  });
  field.setCommit([&](std::string_view text) {
    asked.push_back("commit " + std::string(text));
    return true;
  });
  field.edit("typed");
  EXPECT_FALSE(field.commitEditing());
  EXPECT_TRUE(field.isEditing());
  EXPECT_EQ(field.stringValue(), "typed");
  acceptable = true;
  EXPECT_TRUE(field.commitEditing());
  EXPECT_FALSE(field.isEditing());
  EXPECT_THAT(asked, ElementsAre("validator typed", "validator typed", "commit typed"));
  field.edit("again");
  field.setStringValue("from the program");
  EXPECT_TRUE(field.commitEditing());
  EXPECT_EQ(asked.size(), 3U);
}

TEST(WindowTest, TheFocusStaysWhereAnEntryIsRefusedAndAValidatorsAlertAsksNoSecondTime) {
  Window window;
  TextField first, second;
  bool acceptable = false;
  int validations = 0;
  first.setValidator([&](const TextField&, std::string_view) {
    ++validations;
    EXPECT_FALSE(window.makeFirstResponder(nullptr));
    return acceptable;
  });
  ASSERT_TRUE(window.makeFirstResponder(&first));
  first.edit("x");
  EXPECT_FALSE(window.makeFirstResponder(&second));
  EXPECT_EQ(window.firstResponder(), &first);
  acceptable = true;
  EXPECT_TRUE(window.makeFirstResponder(&second));
  EXPECT_EQ(validations, 2);
}

class TableViewTest : public SmallLibrary, public TableView::Delegate {
 protected:
  TableViewTest() {
    fill();
    table.setDelegate(this);
    table.registerForDraggedTypes({std::string(NSFilenamesPboardType)});
    table.bind("content", &episodes, "arrangedObjects");
  }
  bool selectionShouldChangeInTableView(TableView&) override { return !refuses; }
  unsigned validateDrop(TableView& tableView, const DraggingInfo&, int, TableDropOperation) override {
    if (refuses) return NSDragOperationNone;
    tableView.setDropRow(0, TableDropOperation::Above);
    return NSDragOperationMove;
  }
  bool acceptDrop(TableView&, const DraggingInfo&, int row, TableDropOperation operation) override {
    EXPECT_EQ(row, 0);
    EXPECT_EQ(operation, TableDropOperation::Above);
    ++drops;
    return true;
  }
  TableView table;
  bool refuses = false;
  int drops = 0;
};

TEST_F(TableViewTest, ADropLandsWhereTheDelegateRetargetsItAndOtherTypesAreNotAskedAbout) {
  DraggingInfo drag;
  EXPECT_EQ(table.draggingUpdated(drag, 2, TableDropOperation::On), NSDragOperationNone);
  EXPECT_FALSE(table.performDrop(drag, 2, TableDropOperation::On));
  drag.draggingPasteboard.setPropertyList(Array{Value("/a.mov")}, NSFilenamesPboardType);
  EXPECT_EQ(table.draggingUpdated(drag, 2, TableDropOperation::On), NSDragOperationMove);
  EXPECT_EQ(table.dropRow(), 0);
  EXPECT_TRUE(table.performDrop(drag, 2, TableDropOperation::On));
  EXPECT_EQ(table.dropRow(), -1);
  refuses = true;
  EXPECT_FALSE(table.performDrop(drag, 2, TableDropOperation::On));
  EXPECT_EQ(drops, 1);
}

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
