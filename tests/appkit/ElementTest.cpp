#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/appkit/Controls.h"
#include "platform/appkit/Dragging.h"
#include "platform/appkit/TableView.h"
#include "platform/appkit/TextView.h"
#include "platform/appkit/Window.h"
#include "tests/appkit/SmallLibrary.h"

namespace clipwave {
namespace {

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
  EXPECT_TRUE(field.commitEditing());
  field.edit("ty");
  field.edit("typed");
  EXPECT_FALSE(field.commitEditing());
  EXPECT_TRUE(field.isEditing());
  EXPECT_EQ(field.stringValue(), "typed");
  acceptable = true;
  EXPECT_TRUE(field.commitEditing());
  EXPECT_FALSE(field.isEditing());
  EXPECT_THAT(asked, ::testing::ElementsAre("validator typed", "validator typed", "commit typed"));

  field.edit("again");
  field.discardEditing();
  EXPECT_EQ(field.stringValue(), "typed");
  field.edit("again");
  field.setStringValue("from the program");
  EXPECT_TRUE(field.commitEditing());
  EXPECT_EQ(asked.size(), 3U);
}

TEST(TextFieldTest, AnEditIsValidatedOnceThoughItsAlertTakesTheFocusAway) {
  TextField field;
  Window window;
  int validations = 0;
  field.setValidator([&](const TextField&, std::string_view) {
    ++validations;
    EXPECT_FALSE(window.makeFirstResponder(nullptr));
    return true;
  });
  ASSERT_TRUE(window.makeFirstResponder(&field));
  field.edit("x");
  EXPECT_TRUE(window.makeFirstResponder(nullptr));
  EXPECT_EQ(validations, 1);
  EXPECT_EQ(window.firstResponder(), &window);
}

TEST(WindowTest, TheFocusStaysWhereAnEntryIsRefused) {
  Window window;
  TextField first;
  TextField second;
  first.setCommit([](std::string_view) { return false; });
  EXPECT_TRUE(window.makeFirstResponder(&first));
  EXPECT_TRUE(window.makeFirstResponder(&first));
  first.edit("x");
  EXPECT_FALSE(window.makeFirstResponder(&second));
  EXPECT_EQ(window.firstResponder(), &first);
  first.discardEditing();
  EXPECT_TRUE(window.makeFirstResponder(&second));
}

TEST(TextViewTest, EditingTellsOnceAndRangesOutsideTheTextAreIgnored) {
  TextView view;
  int changes = 0;
  const Observation observation = view.observe([&] { ++changes; });
  TextStorage& storage = view.textStorage();
  storage.beginEditing();
  storage.beginEditing();
  view.setString("a link");
  storage.addAttributes({{std::string(NSLinkAttributeName), "http://a"}}, {2, 4});
  storage.addAttributes({{std::string(NSLinkAttributeName), "http://b"}}, {2, 5});
  storage.addAttributes({{std::string(NSLinkAttributeName), "http://c"}}, {3, static_cast<std::size_t>(-1)});
  storage.endEditing();
  EXPECT_EQ(changes, 0);
  storage.endEditing();
  EXPECT_EQ(changes, 1);
  ASSERT_EQ(storage.runs().size(), 1U);
  EXPECT_EQ(storage.runs()[0].range, (TextRange{2, 4}));
  view.setString("a link");
  EXPECT_TRUE(storage.runs().empty());
}

class TableViewTest : public ::testing::Test, public SmallLibrary, public TableView::Delegate {
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
  EXPECT_EQ(press(NSDownArrowFunctionKey), "a1");
  EXPECT_EQ(press(NSUpArrowFunctionKey, KeyEvent::Shift), "a2 a1");
  EXPECT_EQ(press(NSHomeFunctionKey), "a3");
  EXPECT_EQ(press(NSUpArrowFunctionKey), "a3");
  EXPECT_EQ(press(NSEndFunctionKey), "a1");
  refuses = true;
  EXPECT_EQ(press(NSHomeFunctionKey), "a1");
  EXPECT_FALSE(table.keyDown({NSHomeFunctionKey, KeyEvent::Command}));
  EXPECT_FALSE(table.keyDown({127, 0}));
  table.unbind("content");
  EXPECT_TRUE(table.selectedRowIndexes().empty());
}

}  // namespace
}  // namespace clipwave
