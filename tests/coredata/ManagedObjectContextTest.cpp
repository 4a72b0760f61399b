#include "platform/coredata/ManagedObjectContext.h"

#include "tests/coredata/TestLibrary.h"

namespace clipwave {
namespace {
using ::testing::ElementsAre;

class ManagedObjectContextTest : public testing::LibraryTest {
 protected:
  void SetUp() override { open(); }
};

TEST_F(ManagedObjectContextTest, FindsRecordsInStoreOrderByIndexScanPredicateAndStoredQuery) {
  for (const char* title : {"x", "y", "x", "x"}) insert("Channel", title);
  const auto all = fetch({.entityName = "Channel"});
  all[2]->setValue("protocolTag", 2);
  EXPECT_THAT(titles(all), ElementsAre("x", "y", "x", "x"));
  EXPECT_THAT(fetch({.entityName = "Channel", .key = "vcTitle", .value = "x"}),
              ElementsAre(all[0], all[2], all[3]));
  EXPECT_THAT(fetch({.entityName = "Channel", .key = "protocolTag", .value = 2}), ElementsAre(all[2]));
  EXPECT_THAT(fetch({.entityName = "Channel", .key = "vcURL"}).size(), 4U);
  EXPECT_THAT(fetch({.entityName = "Channel",
                     .key = "vcTitle",
                     .value = "x",
                     .predicate = [](ManagedObject& c) { return c.objectID() > 1; }}),
              ElementsAre(all[2], all[3]));
  EXPECT_EQ(context->executeFetchRequest({.entityName = "Nobody"}).error().code, kFetchRequestError);
  EXPECT_FALSE(context->executeFetchRequest({.entityName = "Channel", .key = "nothing"}).ok());
  EXPECT_FALSE(context->executeFetchRequest({.entityName = "Channel", .key = "children"}).ok());
  EXPECT_EQ(context->insertNewObject("Nobody"), nullptr);

  insert("Image").setValue("url", "http://a/");
  EXPECT_EQ(fetch(*model.fetchRequestFromTemplate("untitled")).size(), 3U);
  EXPECT_EQ(fetch(*model.fetchRequestFromTemplate("fetchImages", {{"URL", "http://a/"}})).size(), 1U);
  EXPECT_EQ(fetch(*model.fetchRequestFromTemplate("fetchImages", {{"URL", "http://b/"}})).size(), 0U);
  EXPECT_FALSE(model.fetchRequestFromTemplate("fetchImages", {{"url", "http://a/"}}).has_value());
  EXPECT_FALSE(model.fetchRequestFromTemplate("nothing").has_value());
}

TEST_F(ManagedObjectContextTest, TheIndexFollowsChangesDeletionsUndoAndLoading) {
  const auto count = [this](std::string_view title) {
    return context->index("Channel", "vcTitle")->count(title);
  };
  ManagedObject& a = insert("Channel", "x");
  insert("Channel", "x");
  endPass();
  const std::uint64_t releases = context->index("Channel", "vcTitle")->releases();
  a.setValue("vcTitle", "y");
  EXPECT_EQ(context->index("Channel", "vcTitle")->releases(), releases);
  endPass();
  context->deleteObject(a);
  EXPECT_EQ(count("y"), 0U);
  EXPECT_EQ(context->index("Channel", "vcTitle")->releases(), releases + 1);
  context->undo();
  EXPECT_EQ(count("y"), 1U);
  context->undo();
  EXPECT_EQ(count("x"), 2U);
  saveAndReopen();
  EXPECT_EQ(count("x"), 2U);
  EXPECT_EQ(context->index("Channel", "protocolTag"), nullptr);
}

TEST_F(ManagedObjectContextTest, TellsWhatHappenedToTheRecordsAndInWhichOrder) {
  std::vector<std::string> told;
  const auto observation = context->observeChanges([&told](const ContextChange& change) {
    const auto& entity = change.object->entity();
    if (change.kind == ContextChange::Kind::Inserted) told.push_back("+" + entity.name());
    if (change.kind == ContextChange::Kind::Deleted) {
      EXPECT_TRUE(change.object->isDeleted());
      told.push_back("-" + entity.name());
    }
    if (change.kind == ContextChange::Kind::ValueChanged)
      told.push_back(entity.properties()[static_cast<std::size_t>(change.property)].name);
  });
  ManagedObject& channel = insert("Channel");
  insertEpisode(channel, "t");
  EXPECT_THAT(told, ElementsAre("+Channel", "vcPublishDate", "+Vodcast", "vcTitle", "parent", "children"));
  endPass();
  told.clear();
  context->deleteObject(channel);
  EXPECT_THAT(told, ElementsAre("children", "parent", "-Vodcast", "-Channel"));
  told.clear();
  context->undo();
  EXPECT_THAT(told, ElementsAre("+Channel", "+Vodcast", "children", "parent"));
}

TEST_F(ManagedObjectContextTest, DeletingByTheRulesLeavesNoReferenceBehind) {
  ManagedObject& channel = insert("Channel", "A");
  ManagedObject& image = insert("Image");
  insertEpisode(channel, "one");
  insertEpisode(channel, "two");
  channel.setValue("image", &image);
  channel.addObject(image, "pictures");
  channel.addObject(image, "pictures");
  EXPECT_EQ(channel.relatedObjects("pictures").size(), 1U);
  context->deleteObject(image);
  EXPECT_EQ(channel.relatedObject("image"), nullptr);
  EXPECT_TRUE(channel.relatedObjects("pictures").empty());
  EXPECT_EQ(context->countOfEntity("Channel"), 1U);
  context->deleteObject(*channel.relatedObjects("children").front());
  EXPECT_THAT(titles(channel.relatedObjects("children")), ElementsAre("two"));
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
  EXPECT_TRUE(context->hasChanges());
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
  std::vector<std::string> details;
  for (const Error& error : saved.error().detailedErrors) details.push_back(error.localizedDescription);
  EXPECT_THAT(details,
              ElementsAre("It is taken.", "“protocolTag” of a Channel cannot hold a value of this type.",
                          "“vcTitle” of a Channel is not valid."));
  EXPECT_EQ(files.countOf("writeAtomically"), 0);

  // What was stored before is not looked at again.
  folder.write(
      "Clipwave.xml",
      "<library version=\"1.0\" next=\"9\"><Channel id=\"1\"><vcTitle>taken</vcTitle></Channel></library>");
  open();
  insert("Channel", "new");
  EXPECT_TRUE(context->save().ok());
}

TEST_F(ManagedObjectContextTest, AsksEditorsInOrderUntilOneRefuses) {
  struct Field : Editor {
    std::function<bool()> commit;
    bool commitEditing() override { return commit(); }
    void discardEditing() override { commit = nullptr; }
  };
  std::string asked;
  Field a, b, c;
  a.commit = [&] { return context->unregisterEditor(b), asked += 'a', true; };
  b.commit = [&] { return asked += 'b', true; };
  c.commit = [&] { return asked += 'c', false; };
  for (Field* field : {&a, &b, &c, &a}) context->registerEditor(*field);
  EXPECT_FALSE(context->commitEditing());
  EXPECT_EQ(asked, "ac");
  context->unregisterEditor(c);
  EXPECT_TRUE(context->commitEditing());
  context->discardEditing();
  EXPECT_TRUE(!a.commit && b.commit && c.commit);
}

}  // namespace
}  // namespace clipwave
