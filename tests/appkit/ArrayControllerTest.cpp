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
