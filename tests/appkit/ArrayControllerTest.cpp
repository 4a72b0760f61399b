#include "platform/appkit/ArrayController.h"

#include <gmock/gmock.h>

#include "tests/appkit/SmallLibrary.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class ArrayControllerTest : public SmallLibrary {
 protected:
  std::string listed() const { return titles(episodes.arrangedObjects()); }
  std::string selected() const { return titles(episodes.selectedObjects()); }
  // How often each is told from now on.
  void watch() {
    channelCalls_ = channels.observeSelectedObjects([this] { ++channelSelections; });
    episodeCalls_ = episodes.observeSelectedObjects([this] { ++episodeSelections; });
    arrangedCalls_ = episodes.observeArrangedObjects([this] { ++rearrangements; });
  }
  int channelSelections = 0, episodeSelections = 0, rearrangements = 0;

 private:
  Observation channelCalls_, episodeCalls_, arrangedCalls_;
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
  EXPECT_THAT((std::vector{channelSelections, episodeSelections, rearrangements}), Each(2));
  EXPECT_EQ(episodes.add(), nullptr);
}

TEST_F(ArrayControllerTest, InsertedRecordsStayWhereTheyWerePutWhateverTheirDates) {
  fill();
  for (const char* title : {"old", "older"}) {
    ManagedObject* const record = episodes.newObject();
    episodes.insertObjectAtArrangedObjectIndex(*record, 0);
    record->setValue("vcTitle", title);
    record->setValue("vcPublishDate", Date::fromSeconds(-1));
    EXPECT_EQ(record->relatedObject("parent"), channels.selectedObjects().front());
  }
  // A value that changes elsewhere does not rearrange the list either; what arrives elsewhere does.
  episodes.arrangedObjects()[4]->setValue("vcPublishDate", Date::fromSeconds(900 * 86'400));
  EXPECT_EQ(listed(), "older old a3 a2 a1");
  episode("new", 9, channels.selectedObjects().front());
  EXPECT_EQ(listed(), "a1 new a3 a2 old older");
  EXPECT_EQ(selected(), "older");
}

TEST_F(ArrayControllerTest, RemovalIsOneUndoStepAndSelectsWhatMovedIntoTheFirstPlace) {
  fill();
  episodes.setSelectionIndexes({0, 1, 99});
  channels.arrangedObjects()[1]->setValue("vcTitle", "a step of its own");
  episodes.removeObjectsAtArrangedObjectIndexes({0, 1, 99});
  EXPECT_EQ(selected(), "a1");
  context->undo();
  EXPECT_EQ(listed(), "a3 a2 a1");
  EXPECT_EQ(titles(channels.arrangedObjects()), "A a step of its own");
  for (const char* next : {"a2", "a3", ""}) {
    episodes.removeObjectsAtArrangedObjectIndexes({episodes.arrangedObjects().size() - 1});
    EXPECT_EQ(selected(), next);
  }
}

TEST_F(ArrayControllerTest, WhatIsDeletedElsewhereLeavesTheListsAndComesBackWithUndo) {
  fill();
  watch();
  context->deleteObject(*episodes.arrangedObjects()[1]);
  EXPECT_EQ(listed(), "a3 a1");
  EXPECT_EQ(episodeSelections, 0);
  context->deleteObject(*channels.arrangedObjects()[0]);
  EXPECT_EQ(listed(), "b3 b2 b1");
  EXPECT_EQ(selected(), "b3");
  context->undo();
  EXPECT_EQ(titles(channels.arrangedObjects()), "A B");
  channels.setSelectionIndex(0);
  EXPECT_EQ(listed(), "a3 a2 a1");
}

TEST_F(ArrayControllerTest, AListReadInTheMiddleOfAnUndoHoldsNoDeletedRecord) {
  fill();
  for (int i = 0; i < 3; ++i) episodes.add();
  endPass();
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

}  // namespace
}  // namespace clipwave
