#include "platform/coredata/UndoManager.h"

#include "tests/coredata/TestLibrary.h"

namespace clipwave {
namespace {
using ::testing::ElementsAre;

class UndoManagerTest : public testing::LibraryTest {
 protected:
  void SetUp() override { open(); }
  UndoManager& undo() { return context->undoManager(); }
};

TEST_F(UndoManagerTest, TakesTheChangesOfOnePassBackTogetherAndTellsObservers) {
  ManagedObject& channel = insert("Channel", "A");
  endPass();
  channel.setValue("vcTitle", "B");
  channel.setValue("vcURL", "http://b/");
  endPass();
  channel.setValue("vcTitle", "C");
  int told = 0;
  const auto observation = channel.observe("vcTitle", [&told] { ++told; });
  context->undo();
  EXPECT_EQ(text(channel, "vcTitle"), "B");
  context->undo();
  EXPECT_EQ(text(channel, "vcTitle"), "A");
  EXPECT_TRUE(channel.value("vcURL").isNull());
  EXPECT_EQ(told, 2);
  undo().redo();
  EXPECT_EQ(text(channel, "vcURL"), "http://b/");
  undo().redo();
  EXPECT_EQ(text(channel, "vcTitle"), "C");
  EXPECT_FALSE(undo().canRedo());
  context->undo();
  channel.setValue("vcTitle", "D");
  EXPECT_FALSE(undo().canRedo());
}

TEST_F(UndoManagerTest, AnUndoneInsertionComesBackAsTheSameRecord) {
  ManagedObject& channel = insert("Channel", "A");
  ManagedObject& episode = insertEpisode(channel, "one");
  const std::int64_t id = episode.objectID();
  context->undo();
  EXPECT_EQ(channel.managedObjectContext(), nullptr);
  EXPECT_TRUE(episode.isDeleted());
  EXPECT_EQ(context->countOfEntity("Channel"), 0U);
  undo().redo();
  EXPECT_EQ(context->objectWithID(id), &episode);
  EXPECT_EQ(episode.relatedObject("parent"), &channel);
  EXPECT_EQ(text(episode, "vcTitle"), "one");
  EXPECT_EQ(static_cast<testing::TestRecord&>(channel).insertions, 1);
}

TEST_F(UndoManagerTest, AnUndoneDeletionBringsTheChildrenBackInTheirOldOrder) {
  ManagedObject& channel = insert("Channel", "A");
  ManagedObject& image = insert("Image");
  channel.setValue("image", &image);
  for (const char* title : {"one", "two", "three", "four"}) insertEpisode(channel, title);
  endPass();
  context->deleteObject(*channel.relatedObjects("children")[1]);
  endPass();
  context->deleteObject(channel);
  endPass();
  context->deleteObject(image);
  for (int i = 0; i < 3; ++i) context->undo();
  EXPECT_THAT(titles(channel.relatedObjects("children")), ElementsAre("one", "two", "three", "four"));
  for (const ManagedObject* episode : channel.relatedObjects("children"))
    EXPECT_EQ(episode->relatedObject("parent"), &channel);
  EXPECT_EQ(channel.relatedObject("image"), &image);
  for (int i = 0; i < 2; ++i) undo().redo();
  EXPECT_EQ(context->countOfEntity("Vodcast"), 0U);
  undo().undo();
  EXPECT_THAT(titles(channel.relatedObjects("children")), ElementsAre("one", "three", "four"));
  saveAndReopen();
  EXPECT_THAT(titles(fetch({.entityName = "Channel"})[0]->relatedObjects("children")),
              ElementsAre("one", "three", "four"));
}

TEST_F(UndoManagerTest, RelationshipsGoBackToTheirOldPlacesOnBothSides) {
  ManagedObject& a = insert("Channel", "A");
  ManagedObject& b = insert("Channel", "B");
  ManagedObject& first = insertEpisode(a, "first");
  insertEpisode(a, "second");
  ManagedObject& one = insert("Image");
  ManagedObject& two = insert("Image");
  ManagedObject& three = insert("Image");
  one.setValue("twin", &two);
  endPass();
  b.addObject(first, "children");
  three.setValue("twin", &two);
  EXPECT_EQ(one.relatedObject("twin"), nullptr);
  context->undo();
  EXPECT_THAT(titles(a.relatedObjects("children")), ElementsAre("first", "second"));
  EXPECT_TRUE(b.relatedObjects("children").empty());
  EXPECT_EQ(one.relatedObject("twin"), &two);
  EXPECT_EQ(two.relatedObject("twin"), &one);
  EXPECT_EQ(three.relatedObject("twin"), nullptr);
  undo().redo();
  EXPECT_EQ(first.relatedObject("parent"), &b);
  EXPECT_EQ(two.relatedObject("twin"), &three);
}

TEST_F(UndoManagerTest, FilledValuesAreChangesButNoSteps) {
  ManagedObject& episode = insert("Vodcast", "one");
  saveAndReopen();
  ManagedObject& read = *context->objectWithID(episode.objectID());
  read.setPrimitiveValue("movie", std::make_shared<Handle>(), ChangeKind::Unrecorded);
  EXPECT_FALSE(context->hasChanges());
  EXPECT_EQ(read.value("size"), Value(42));
  EXPECT_TRUE(context->hasChanges());
  EXPECT_FALSE(undo().canUndo());
  read.setValue("vcTitle", "two");
  context->undo();
  EXPECT_EQ(read.primitiveValue("size"), Value(42));
  read.value("size");
  EXPECT_TRUE(undo().canRedo());
}

TEST_F(UndoManagerTest, DeferredDefaultsJoinTheGroupOfTheInsertion) {
  ManagedObject& channel = insert("Channel");
  const auto group = undo().openGroup();
  endPass();
  undo().performInGroup(group, [&] { channel.setValue("vcTitle", "Channel 01"); });
  ManagedObject& later = insert("Channel", "later");
  undo().performInGroup(group, [&] { channel.setValue("vcURL", "http://late/"); });
  context->undo();
  EXPECT_TRUE(later.isDeleted());
  EXPECT_EQ(text(channel, "vcURL"), "http://late/");
  context->undo();
  EXPECT_TRUE(channel.isDeleted());
  EXPECT_FALSE(undo().canUndo());
  undo().performInGroup(group, [&] { later.setValue("vcTitle", "unrecorded"); });
  undo().redo();
  EXPECT_EQ(text(channel, "vcTitle"), "Channel 01");
  EXPECT_EQ(text(channel, "vcURL"), "http://late/");
}

TEST_F(UndoManagerTest, ExplicitGroupsCountAlsoWhenTheyAreEmpty) {
  ManagedObject& channel = insert("Channel", "A");
  undo().beginUndoGrouping();
  undo().beginUndoGrouping();
  undo().endUndoGrouping();
  undo().endUndoGrouping();
  undo().beginUndoGrouping();
  channel.setValue("vcTitle", "B");
  undo().endUndoGrouping();
  channel.setValue("vcTitle", "C");
  context->undo();
  EXPECT_EQ(text(channel, "vcTitle"), "B");
  context->undo();
  EXPECT_EQ(text(channel, "vcTitle"), "A");
  context->undo();
  EXPECT_FALSE(channel.isDeleted());
  context->undo();
  EXPECT_TRUE(channel.isDeleted());
  for (int i = 0; i < 4; ++i) undo().redo();
  EXPECT_EQ(text(channel, "vcTitle"), "C");
}

TEST_F(UndoManagerTest, UndoingClosesTheOpenGroupAndALateClosingSparesTheNext) {
  ManagedObject& channel = insert("Channel", "A");
  endPass();
  channel.setValue("vcTitle", "B");  // its closing is waiting in the run loop
  context->undo();
  channel.setValue("vcTitle", "C");
  undo().beginUndoGrouping();
  endPass();
  channel.setValue("vcURL", "http://c/");
  undo().endUndoGrouping();
  context->undo();
  EXPECT_TRUE(channel.value("vcURL").isNull());
  EXPECT_EQ(text(channel, "vcTitle"), "C");
}

TEST_F(UndoManagerTest, NamesFollowTheirGroupsAndObserversHearOfChanges) {
  int told = 0;
  const auto observation = undo().observe([&told] { ++told; });
  ManagedObject& channel = insert("Channel", "A");
  EXPECT_EQ(told, 1);
  undo().setActionName("New Channel");
  EXPECT_EQ(undo().undoActionName(), "New Channel");
  endPass();
  channel.setValue("vcTitle", "B");
  EXPECT_EQ(undo().undoActionName(), "");
  context->undo();
  context->undo();
  EXPECT_EQ(undo().redoActionName(), "New Channel");
  undo().redo();
  EXPECT_EQ(undo().undoActionName(), "New Channel");
  told = 0;
  undo().removeAllActions();
  EXPECT_EQ(told, 1);
  EXPECT_FALSE(undo().canUndo() || undo().canRedo());
}

TEST_F(UndoManagerTest, StepsOfRecordsThatWentUnrecordedDoNoHarm) {
  ManagedObject& channel = insert("Channel", "A");
  ManagedObject& episode = insertEpisode(channel, "one");
  endPass();
  episode.setValue("vcTitle", "two");
  episode.setValue("parent", Value());
  undo().disableUndoRegistration();
  context->deleteObject(episode);
  undo().enableUndoRegistration();
  context->undo();
  EXPECT_TRUE(channel.relatedObjects("children").empty());
  context->undo();
  EXPECT_EQ(context->countOfEntity("Channel"), 0U);
}

}  // namespace
}  // namespace clipwave
