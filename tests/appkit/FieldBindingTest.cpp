#include "platform/appkit/FieldBinding.h"

#include <gtest/gtest.h>

#include "tests/appkit/SmallLibrary.h"

namespace clipwave {
namespace {

class FieldBindingTest : public ::testing::Test, public SmallLibrary {
 protected:
  FieldBindingTest() {
    fill();
    validations() = 0;
  }
  std::vector<std::string> errors;
  TextField channelTitle;
  TextField episodeTitle;
  FieldBinding channelBinding{channelTitle, channels, "vcTitle",
                              [this](const Error& error) { errors.push_back(error.localizedDescription); }};
  FieldBinding episodeBinding{episodeTitle, episodes, "vcTitle", nullptr};
};

TEST_F(FieldBindingTest, TheFieldFollowsTheSelectionAndItsRecords) {
  EXPECT_EQ(channelTitle.stringValue(), "A");
  EXPECT_EQ(episodeTitle.stringValue(), "a3");
  channels.setSelectionIndex(1);
  EXPECT_EQ(episodeTitle.stringValue(), "b3");
  episodes.arrangedObjects()[0]->setValue("vcTitle", "elsewhere");
  EXPECT_EQ(episodeTitle.stringValue(), "elsewhere");
  endEvent();
  episodes.setSelectionIndexes({0, 1, 2});
  EXPECT_EQ(episodeTitle.stringValue(), "");
  episodes.selection().setValue("vcTitle", "same");
  EXPECT_EQ(episodeTitle.stringValue(), "same");
  episodeTitle.edit("all");
  EXPECT_TRUE(episodes.commitEditing());
  EXPECT_EQ(titles(episodes.arrangedObjects()), "all all all");
  context->undo();
  EXPECT_EQ(episodeTitle.stringValue(), "");
}

TEST_F(FieldBindingTest, AnEditIsStoredAsTheValidatorLeavesItAndEmptyTextAsAbsence) {
  channelTitle.edit("  new");
  EXPECT_EQ(titles(channels.selectedObjects()), "A");
  EXPECT_TRUE(context->commitEditing());
  EXPECT_EQ(titles(channels.selectedObjects()), "new");
  EXPECT_EQ(channelTitle.stringValue(), "new");
  EXPECT_EQ(validations(), 1);
  channelTitle.edit("");
  EXPECT_TRUE(channelTitle.commitEditing());
  EXPECT_TRUE(channels.selection().value("vcTitle").isNull());
  EXPECT_TRUE(context->commitEditing());
  EXPECT_EQ(validations(), 2);
}

TEST_F(FieldBindingTest, ARefusedEditKeepsFieldAndSelectionAndIsShownWhenItSaysWhy) {
  channelTitle.edit("bad");
  EXPECT_FALSE(channels.setSelectionIndex(1));
  EXPECT_EQ(errors, std::vector<std::string>{"A bad title."});
  EXPECT_TRUE(channelTitle.isEditing());
  EXPECT_EQ(channelTitle.stringValue(), "bad");
  EXPECT_EQ(titles(channels.selectedObjects()), "A");
  channelTitle.edit("silent");
  EXPECT_FALSE(context->commitEditing());
  EXPECT_EQ(errors.size(), 1U);
  // A new record is taken into the list all the same, but the field keeps its record.
  channels.addObject(*channel("0"));
  EXPECT_EQ(titles(channels.arrangedObjects()), "0 A B");
  EXPECT_EQ(titles(channels.selectedObjects()), "A");
  channels.discardEditing();
  EXPECT_EQ(channelTitle.stringValue(), "A");
  EXPECT_TRUE(channels.setSelectionIndex(0));
}

TEST_F(FieldBindingTest, ADetailsEditIsCommittedToItsRecordBeforeTheMasterMovesOn) {
  ManagedObject* const edited = episodes.selectedObjects().front();
  episodeTitle.edit("typed");
  EXPECT_TRUE(channels.setSelectionIndex(1));
  EXPECT_EQ(edited->value("vcTitle"), Value("typed"));
  EXPECT_EQ(titles(episodes.arrangedObjects()), "b3 b2 b1");
  EXPECT_FALSE(episodeTitle.isEditing());
}

TEST_F(FieldBindingTest, AValueSetElsewhereDoesNotDisturbTheEditAndARemovedRecordEndsIt) {
  episodeTitle.edit("typed");
  episodes.selectedObjects().front()->setValue("vcTitle", "elsewhere");
  EXPECT_EQ(episodeTitle.stringValue(), "typed");
  episodeTitle.discardEditing();
  EXPECT_EQ(episodeTitle.stringValue(), "elsewhere");
  episodeTitle.edit("typed");
  context->deleteObject(*episodes.selectedObjects().front());
  EXPECT_FALSE(episodeTitle.isEditing());
  EXPECT_EQ(episodeTitle.stringValue(), "a2");
  episodeTitle.edit("typed");
  episodes.removeObjectsAtArrangedObjectIndexes({0});
  EXPECT_EQ(titles(episodes.arrangedObjects()), "a1");
  EXPECT_EQ(episodeTitle.stringValue(), "a1");
  channelTitle.edit("gone with its channel");
  channels.removeObjectsAtArrangedObjectIndexes({0});
  EXPECT_EQ(channelTitle.stringValue(), "B");
  EXPECT_EQ(validations(), 0);
}

}  // namespace
}  // namespace clipwave
