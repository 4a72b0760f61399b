#include "platform/appkit/FieldBinding.h"

#include <gtest/gtest.h>

#include "tests/appkit/SmallLibrary.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class FieldBindingTest : public SmallLibrary {
 protected:
  FieldBindingTest() {
    fill();
    titleValidations = 0;
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
  ManagedObject* const edited = episodes.selectedObjects().front();
  episodeTitle.edit("typed");
  channels.setSelectionIndex(1);
  EXPECT_EQ(edited->value("vcTitle"), Value("typed"));
  EXPECT_EQ(episodeTitle.stringValue(), "b3");
  episodes.arrangedObjects()[0]->setValue("vcTitle", "elsewhere");
  EXPECT_EQ(episodeTitle.stringValue(), "elsewhere");
  endPass();
  episodes.setSelectionIndexes({0, 1, 2});
  EXPECT_EQ(episodeTitle.stringValue(), "");
  episodes.selection().setValue("vcTitle", "same");
  EXPECT_EQ(episodeTitle.stringValue(), "same");
  episodeTitle.edit("all");
  EXPECT_TRUE(episodes.commitEditing());
  EXPECT_EQ(titles(episodes.arrangedObjects()), "all all all");
  episodeTitle.edit("never stored");
  episodeTitle.setEnabled(false);
  EXPECT_TRUE(context->commitEditing());
  EXPECT_EQ(titles(episodes.arrangedObjects()), "all all all");
}

TEST_F(FieldBindingTest, AnEditIsStoredAsTheValidatorLeavesItAndEmptyTextAsAbsence) {
  channelTitle.edit("shout");
  EXPECT_EQ(titles(channels.selectedObjects()), "A");
  EXPECT_TRUE(context->commitEditing());
  EXPECT_EQ(titles(channels.selectedObjects()), "SHOUT");
  EXPECT_EQ(channelTitle.stringValue(), "SHOUT");
  EXPECT_EQ(titleValidations, 1);
  channelTitle.edit("");
  EXPECT_TRUE(channelTitle.commitEditing());
  EXPECT_TRUE(channels.selection().value("vcTitle").isNull());
  EXPECT_TRUE(context->commitEditing());
  EXPECT_EQ(titleValidations, 2);
}

TEST_F(FieldBindingTest, ARefusedEditKeepsFieldAndSelectionAndIsShownWhenItSaysWhy) {
  channelTitle.edit("taken");
  EXPECT_FALSE(channels.setSelectionIndex(1));
  EXPECT_EQ(errors, std::vector<std::string>{"It is taken."});
  EXPECT_TRUE(channelTitle.isEditing());
  EXPECT_EQ(channelTitle.stringValue(), "taken");
  EXPECT_EQ(titles(channels.selectedObjects()), "A");
  channelTitle.edit("silent");
  EXPECT_FALSE(context->commitEditing());
  EXPECT_EQ(errors.size(), 1U);
  // A new record is taken into the list all the same, but the field keeps its record.
  channels.addObject(*channel("0"));
  EXPECT_EQ(titles(channels.selectedObjects()), "A");
  channels.discardEditing();
  EXPECT_EQ(channelTitle.stringValue(), "A");
  EXPECT_TRUE(channels.setSelectionIndex(0));
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
  channelTitle.edit("gone with its channel");
  channels.removeObjectsAtArrangedObjectIndexes({0});
  EXPECT_EQ(channelTitle.stringValue(), "B");
  EXPECT_EQ(titleValidations, 0);
}

}  // namespace
}  // namespace clipwave
