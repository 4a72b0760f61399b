// A small library with every kind of key, in a folder of the test's own.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/coredata/ManagedObjectContext.h"
#include "tests/support/FakeFileManager.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

class TestRecord : public ManagedObject {
 public:
  using ManagedObject::ManagedObject;
  int insertions = 0;
  int fetches = 0;

 protected:
  void awakeFromInsert() override {
    ++insertions;
    if (entity().name() == "Vodcast") setValue("vcPublishDate", Date::fromSeconds(1000));
  }
  void awakeFromFetch() override { ++fetches; }
};

// "Channel" with "children", "image" (nothing points back) and "pictures" (a list that nothing points back
// from); "Vodcast" with "parent"; "Image" with "twin" (one to one).
ManagedObjectModel makeTestModel();

class LibraryTest : public ::testing::Test {
 protected:
  TemporaryFolder folder;
  std::string path = folder / "Clipwave.xml";
  TestClock clock;
  std::unique_ptr<RunLoop> loop = makeRunLoop(clock);
  ManagedObjectModel model = makeTestModel();
  FakeFileManager files;
  std::unique_ptr<ManagedObjectContext> context;

  Result<void> tryToOpen() {
    context.reset();
    auto coordinator = std::make_unique<PersistentStoreCoordinator>(model, files);
    Result<void> added = coordinator->addPersistentStore(NSXMLStoreType, path);
    if (added) context = std::make_unique<ManagedObjectContext>(std::move(coordinator), *loop);
    return added;
  }
  void open() { ASSERT_TRUE(tryToOpen().ok()); }
  void saveAndReopen() {
    const Result<void> saved = context->save();
    ASSERT_TRUE(saved.ok()) << saved.error().localizedDescription;
    open();
  }
  void endPass() { loop->runUntilIdle(); }

  ManagedObject& insert(std::string_view entity, std::string_view title = {}) {
    ManagedObject* object = context->insertNewObject(entity);
    if (!title.empty()) object->setValue(entity == "Image" ? "title" : "vcTitle", title);
    return *object;
  }
  ManagedObject& insertEpisode(ManagedObject& channel, std::string_view title) {
    ManagedObject& episode = insert("Vodcast", title);
    episode.setValue("parent", &channel);
    return episode;
  }
  std::vector<ManagedObject*> fetch(FetchRequest request) {
    auto found = context->executeFetchRequest(request);
    return found ? *found : std::vector<ManagedObject*>{};
  }
  static std::vector<std::string> titles(const std::vector<ManagedObject*>& objects) {
    std::vector<std::string> texts;
    for (const ManagedObject* object : objects)
      texts.emplace_back(object->primitiveValue("vcTitle").stringValue());
    return texts;
  }
  static std::string text(ManagedObject& object, std::string_view key) {
    return std::string(object.value(key).stringValue());
  }
};

}  // namespace clipwave::testing
