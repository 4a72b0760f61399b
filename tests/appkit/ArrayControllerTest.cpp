#include "platform/appkit/ArrayController.h"

#include <gtest/gtest.h>

#include "tests/appkit/SmallLibrary.h"

namespace clipwave {
namespace {

class ArrayControllerTest : public ::testing::Test, public SmallLibrary {
 protected:
  std::string listed() const { return titles(episodes.arrangedObjects()); }
  std::string selected() const { return titles(episodes.selectedObjects()); }
  // How often each is told from now on.
  void watch() {
    channelCalls_ = channels.observeSelectedObjects([this] { ++channelSelections; });
    episodeCalls_ = episodes.observeSelectedObjects([this] { ++episodeSelections; });
    arrangedCalls_ = episodes.observeArrangedObjects([this] { ++rearrangements; });
  }
  int channelSelections = 0;
  int episodeSelections = 0;
  int rearrangements = 0;

 private:
  Observation channelCalls_;
  Observation episodeCalls_;
  Observation arrangedCalls_;
};

TEST_F(ArrayControllerTest, AFetchSortsAndSelectsTheFirstWhichDecidesTheDetailList) {
  channel("b");
  context->insertNewObject("Channel");
  channel("B");
  EXPECT_TRUE(channels.arrangedObjects().empty());
  channels.fetch();
  EXPECT_EQ(titles(channels.content()), "b - B");
  EXPECT_EQ(titles(channels.arrangedObjects()), "- B b");
  EXPECT_EQ(channels.selectionIndexes(), IndexSet{0});

  channels.setSelectionIndex(2);
  episode("e", 1, channels.selectedObjects().front());
  EXPECT_EQ(listed(), "e");
  channels.fetch();
  EXPECT_EQ(titles(channels.selectedObjects()), "b");
}

TEST_F(ArrayControllerTest, RecordsEqualInOrderKeepTheirAgeAndNumbersCompareBySize) {
  std::vector<ManagedObject*> records = {episode("x", 1), episode("y", 1), episode("z", 0)};
  sortRecords(records, {{"vcPublishDate", true}});
  EXPECT_EQ(titles(records), "z x y");
  sortRecords(records, {{"vcPublishDate", false}, {"vcTitle", false}});
  EXPECT_EQ(titles(records), "y x z");
  EXPECT_EQ(placeInOrder(*episode("v", 1), records, {{"vcPublishDate", false}}), 2U);
  EXPECT_EQ(placeInOrder(*episode("v", 1), records, {}), 3U);
}

TEST_F(ArrayControllerTest, AnotherMasterRecordSelectsTheFirstOfItsRecordsAndSeveralGiveNone) {
  fill();
  episodes.setSelectionIndexes({1, 2});
  watch();
  channels.setSelectionIndex(1);
  EXPECT_EQ(listed(), "b3 b2 b1");
  EXPECT_EQ(selected(), "b3");
  channels.setSelectionIndexes({0, 1});
  EXPECT_EQ(listed(), "");
  EXPECT_EQ(selected(), "");
  EXPECT_EQ(episodeSelections, 2);
  EXPECT_EQ(rearrangements, 2);
  EXPECT_EQ(channelSelections, 2);
  EXPECT_EQ(episodes.add(), nullptr);
  EXPECT_EQ(context->countOfEntity("Vodcast"), 6U);
}

TEST_F(ArrayControllerTest, InsertedRecordsStayWhereTheyWerePutWhateverTheirDates) {
  fill();
  watch();
  for (const char* title : {"old", "older"}) {
    ManagedObject* const record = episodes.newObject();
    EXPECT_EQ(record->relatedObject("parent"), nullptr);
    episodes.insertObjectAtArrangedObjectIndex(*record, 0);
    record->setValue("vcTitle", title);
    record->setValue("vcPublishDate", Date::fromSeconds(-1));
    EXPECT_EQ(record->relatedObject("parent"), channels.selectedObjects().front());
  }
  EXPECT_EQ(listed(), "older old a3 a2 a1");
  EXPECT_EQ(selected(), "older");
  EXPECT_EQ(episodeSelections, 2);
  EXPECT_EQ(rearrangements, 2);
  // A value that changes elsewhere does not rearrange the list either; what arrives elsewhere does.
  episodes.arrangedObjects()[4]->setValue("vcPublishDate", Date::fromSeconds(900 * 86'400));
  EXPECT_EQ(listed(), "older old a3 a2 a1");
  episode("new", 9, channels.selectedObjects().front());
  EXPECT_EQ(listed(), "a1 new a3 a2 old older");
  EXPECT_EQ(selected(), "older");
}

TEST_F(ArrayControllerTest, AddedRecordsFindTheirPlaceAlsoInAListThatIsOutOfOrder) {
  fill();
  ManagedObject* const record = episode("between", 2);
  episodes.addObject(*record);
  EXPECT_EQ(listed(), "a3 a2 between a1");
  EXPECT_EQ(selected(), "between");
  episodes.addObject(*record);
  EXPECT_EQ(listed(), "a3 a2 between a1");
  for (ManagedObject* each : episodes.arrangedObjects()) {
    each->setValue("vcPublishDate", Date::fromSeconds(each == record ? 0 : 86'400'000));
  }
  episodes.arrangedObjects()[0]->setValue("vcPublishDate", Value());
  episodes.addObject(*episode("last", 5));
  EXPECT_EQ(episodes.arrangedObjects().size(), 5U);
  EXPECT_EQ(selected(), "last");
  channels.setSelectionIndexes({});
  episodes.addObject(*episode("orphan", 5));
  EXPECT_EQ(listed(), "");
}

TEST_F(ArrayControllerTest, RemovalIsOneUndoStepAndSelectsWhatMovedIntoTheFirstPlace) {
  fill();
  context->undoManager().removeAllActions();
  episodes.setSelectionIndexes({0, 1});
  watch();
  channels.arrangedObjects()[1]->setValue("vcTitle", "a step of its own");
  episodes.removeObjectsAtArrangedObjectIndexes({0, 1, 99});
  EXPECT_EQ(listed(), "a1");
  EXPECT_EQ(selected(), "a1");
  EXPECT_EQ(episodeSelections, 1);
  EXPECT_EQ(rearrangements, 1);
  EXPECT_EQ(context->countOfEntity("Vodcast"), 4U);

  context->undo();
  EXPECT_EQ(listed(), "a3 a2 a1");
  EXPECT_EQ(selected(), "a1");
  EXPECT_EQ(rearrangements, 2);
  EXPECT_EQ(titles(channels.arrangedObjects()), "A a step of its own");
  context->undoManager().redo();
  EXPECT_EQ(listed(), "a1");
  context->undo();

  for (const char* next : {"a2", "a3", ""}) {
    episodes.removeObjectsAtArrangedObjectIndexes({episodes.arrangedObjects().size() - 1});
    EXPECT_EQ(selected(), next);
  }
}

TEST_F(ArrayControllerTest, DeletingTheSelectedMasterRecordMovesBothListsOnOnce) {
  fill();
  watch();
  channels.removeObjectsAtArrangedObjectIndexes({0});
  EXPECT_EQ(titles(channels.selectedObjects()), "B");
  EXPECT_EQ(listed(), "b3 b2 b1");
  EXPECT_EQ(selected(), "b3");
  EXPECT_EQ(channelSelections, 1);
  EXPECT_EQ(episodeSelections, 1);
  EXPECT_EQ(rearrangements, 1);
  context->undo();
  EXPECT_EQ(titles(channels.arrangedObjects()), "A B");
  EXPECT_EQ(titles(channels.content()), "A B");
  channels.setSelectionIndex(0);
  EXPECT_EQ(listed(), "a3 a2 a1");
}

TEST_F(ArrayControllerTest, WhatIsDeletedElsewhereLeavesTheListsAndComesBackWithUndo) {
  fill();
  watch();
  context->deleteObject(*episodes.arrangedObjects()[1]);
  EXPECT_EQ(listed(), "a3 a1");
  EXPECT_EQ(selected(), "a3");
  EXPECT_EQ(episodeSelections, 0);
  endEvent();
  context->deleteObject(*channels.arrangedObjects()[0]);
  EXPECT_EQ(titles(channels.arrangedObjects()), "B");
  EXPECT_EQ(listed(), "b3 b2 b1");
  endEvent();
  context->undo();
  context->undo();
  EXPECT_EQ(titles(channels.arrangedObjects()), "A B");
  channels.setSelectionIndex(0);
  EXPECT_EQ(listed(), "a3 a2 a1");
}

TEST_F(ArrayControllerTest, RecordsInsertedElsewhereEnterNoListUntilItIsFetched) {
  fill();
  endEvent();
  channel("C");
  EXPECT_EQ(titles(channels.arrangedObjects()), "A B");
  context->undo();
  context->undoManager().redo();
  EXPECT_EQ(titles(channels.arrangedObjects()), "A B");
  channels.fetch();
  EXPECT_EQ(titles(channels.arrangedObjects()), "A B C");
}

TEST_F(ArrayControllerTest, AnInsertionIsUndoneAndRedoneInBothLists) {
  fill();
  channels.add()->setValue("vcTitle", "C");
  episodes.add()->setValue("vcTitle", "c1");
  EXPECT_EQ(titles(channels.selectedObjects()), "C");
  endEvent();
  context->undo();
  EXPECT_EQ(titles(channels.arrangedObjects()), "A B");
  EXPECT_EQ(titles(channels.selectedObjects()), "A");
  EXPECT_EQ(listed(), "a3 a2 a1");
  context->undoManager().redo();
  EXPECT_EQ(titles(channels.arrangedObjects()), "A B C");
  channels.setSelectedObjects({channels.arrangedObjects()[2]});
  EXPECT_EQ(listed(), "c1");
  EXPECT_EQ(selected(), "c1");
}

TEST_F(ArrayControllerTest, AListReadInTheMiddleOfAnUndoHoldsNoDeletedRecord) {
  fill();
  for (int i = 0; i < 3; ++i) episodes.add();
  endEvent();
  int reads = 0;
  const Observation reading = context->observeChanges([&](const ContextChange&) {
    for (ManagedObject* record : episodes.arrangedObjects()) {
      EXPECT_FALSE(record->isDeleted());
      ++reads;
    }
  });
  watch();
  context->undo();
  EXPECT_GT(reads, 0);
  EXPECT_EQ(listed(), "a3 a2 a1");
  EXPECT_EQ(rearrangements, 1);
  EXPECT_EQ(episodeSelections, 1);
}

TEST_F(ArrayControllerTest, SettersLeaveOutWhatIsNotInTheList) {
  fill();
  EXPECT_TRUE(episodes.setSelectionIndexes({1, 7}));
  EXPECT_EQ(selected(), "a2");
  EXPECT_TRUE(episodes.setSelectedObjects(
      {episodes.arrangedObjects()[2], channels.arrangedObjects()[0], episodes.arrangedObjects()[0]}));
  EXPECT_EQ(selected(), "a3 a1");
  EXPECT_EQ(episodes.selectionIndex(), 0U);
  watch();
  EXPECT_TRUE(episodes.setSelectionIndexes({0, 2}));
  EXPECT_EQ(episodeSelections, 0);
  EXPECT_TRUE(episodes.setSelectionIndex(99));
  EXPECT_EQ(episodes.selectionIndex(), std::nullopt);
  EXPECT_EQ(episodeSelections, 1);
}

TEST_F(ArrayControllerTest, ACommitStopsAtTheFirstRefusalAndValidatesEachRecordOnce) {
  fill();
  channels.setSelectionIndexes({0, 1});
  validations() = 0;
  EXPECT_TRUE(channels.selection().commitValue("vcTitle", "  x").valid);
  EXPECT_EQ(validations(), 2);
  EXPECT_EQ(titles(channels.arrangedObjects()), "x x");
  const Validation refused = channels.selection().commitValue("vcTitle", "bad");
  EXPECT_EQ(refused.error->localizedDescription, "A bad title.");
  EXPECT_EQ(validations(), 3);
  channels.selection().setValue("vcTitle", "bad");
  EXPECT_EQ(titles(channels.arrangedObjects()), "bad bad");
  EXPECT_EQ(validations(), 3);
}

}  // namespace
}  // namespace clipwave
