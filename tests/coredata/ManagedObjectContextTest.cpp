#include "platform/coredata/ManagedObjectContext.h"

#include "tests/coredata/TestLibrary.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class ManagedObjectContextTest : public LibraryTest {
 protected:
  void SetUp() override { open(); }
};

TEST_F(ManagedObjectContextTest, TheIndexFollowsChangesDeletionsUndoAndLoading) {
  const auto count = [this] { return context->index("Channel", "vcTitle")->count("x"); };
  insert("Channel", "x");
  insert("Channel", "x").setValue("vcTitle", "y");
  EXPECT_EQ(count(), 1U);
  endPass();
  context->deleteObject(*fetch({.entityName = "Channel"})[0]);
  EXPECT_EQ(count(), 0U);
  context->undo();
  saveAndReopen();
  EXPECT_EQ(count(), 1U);
}

TEST_F(ManagedObjectContextTest, DeletingByTheRulesLeavesNoReferenceBehind) {
  ManagedObject& channel = insert("Channel", "A");
  ManagedObject& image = insert("Image");
  insertEpisode(channel, "one");
  channel.setValue("image", &image);
  for (int i = 0; i < 2; ++i) channel.addObject(image, "pictures");
  EXPECT_EQ(channel.relatedObjects("pictures").size(), 1U);
  context->deleteObject(image);
  EXPECT_EQ(channel.relatedObject("image"), nullptr);
  EXPECT_TRUE(channel.relatedObjects("pictures").empty());
  context->deleteObject(channel);
  EXPECT_EQ(context->countOfEntity("Vodcast"), 0U);
}

TEST_F(ManagedObjectContextTest, SavesOnlyWhatChangedAndNeverGivesAnIDTwice) {
  ASSERT_TRUE(context->save().ok());
  EXPECT_EQ(files.countOf("writeAtomically"), 1);
  ASSERT_TRUE(context->save().ok());
  EXPECT_EQ(files.countOf("writeAtomically"), 1);
  ManagedObject& channel = insert("Channel");
  const std::int64_t id = channel.objectID();
  context->deleteObject(channel);
  saveAndReopen();
  EXPECT_FALSE(context->hasChanges());
  ManagedObject& next = insert("Channel");
  EXPECT_GT(next.objectID(), id);
  EXPECT_EQ(context->objectWithID(next.objectID()), &next);
  EXPECT_EQ(context->objectWithID(id), nullptr);
}

TEST_F(ManagedObjectContextTest, ValidatesChangedRecordsAndGathersSeveralErrorsInOne) {
  ManagedObject& first = insert("Channel", "taken");
  Result<void> saved = context->save();
  ASSERT_FALSE(saved.ok());
  EXPECT_EQ(saved.error(), (Error{"vcTitle", -5, "It is taken.", {}}));
  EXPECT_TRUE(context->hasChanges());
  insert("Channel", "silent");
  first.setValue("protocolTag", "two");
  saved = context->save();
  ASSERT_FALSE(saved.ok());
  EXPECT_EQ(saved.error().code, kValidationMultipleErrorsError);
  EXPECT_EQ(saved.error().localizedDescription, "3 values of the library are not valid.");
  ASSERT_EQ(saved.error().detailedErrors.size(), 3U);
  EXPECT_EQ(saved.error().detailedErrors[2].localizedDescription, "“vcTitle” of a Channel is not valid.");
  EXPECT_EQ(files.countOf("writeAtomically"), 0);
}

}  // namespace
}  // namespace clipwave
