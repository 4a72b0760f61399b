// A small library with every kind of key, in a folder of the test's own.
#pragma once

#include <gmock/gmock.h>

#include "platform/coredata/ManagedObjectContext.h"
#include "tests/support/FakeFileManager.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

class TestRecord : public ManagedObject {
 public:
  using ManagedObject::ManagedObject;

 protected:
  void awakeFromInsert() override {
    if (entity().name() == "Vodcast") setValue("vcPublishDate", Date::fromSeconds(1000));
  }
};

// How often a title was validated.
inline int titleValidations = 0;

inline Validation validateTitle(ManagedObject&, Value& proposed) {
  ++titleValidations;
  if (proposed.stringValue() == "taken") return Validation::refused(Error{"vcTitle", -5, "It is taken.", {}});
  if (proposed.stringValue() == "silent") return Validation::refused();
  if (proposed.stringValue() == "shout") proposed = "SHOUT";
  return Validation::ok();
}

// Filled on first read, as the size of a file is.
inline Value size(ManagedObject& episode) {
  if (episode.primitiveValue("size").isNull()) episode.setPrimitiveValue("size", 42, ChangeKind::FilledValue);
  return episode.primitiveValue("size");
}

inline void setPath(ManagedObject& episode, const Value& path) {
  episode.setPrimitiveValue("alias", Value::data(path.stringValue()));
  episode.setPrimitiveValue("vcPath", path);
}

inline std::unique_ptr<EntityDescription> entity(std::string name,
                                                 std::vector<PropertyDescription> properties) {
  return std::make_unique<EntityDescription>(
      std::move(name), [](const EntityDescription& of) { return std::make_shared<TestRecord>(of); },
      std::move(properties));
}

// "Channel" with "children", "image" (nothing points back) and "pictures" (a list that nothing points back
// from); "Vodcast" with "parent"; "Image" with "twin" (one to one).
inline ManagedObjectModel makeTestModel() {
  using enum PropertyType;
  using enum Storage;
  const PropertyDescription children = {.name = "children",
                                        .type = ToMany,
                                        .destination = "Vodcast",
                                        .inverse = "parent",
                                        .deleteRule = DeleteRule::Cascade};
  ManagedObjectModel model;
  model.addEntity(entity("Channel", {{.name = "vcTitle", .indexed = true, .validator = validateTitle},
                                     {.name = "vcURL", .indexed = true},
                                     {.name = "protocolTag", .type = Integer32},
                                     {.name = "vcPublish", .type = Boolean, .defaultValue = true},
                                     {.name = "lastBuildDate", .type = PropertyType::Date},
                                     children,
                                     {.name = "image", .type = ToOne, .destination = "Image"},
                                     {.name = "pictures", .type = ToMany, .destination = "Image"}}));
  EntityDescription& episode = model.addEntity(entity(
      "Vodcast", {{.name = "vcTitle"},
                  {.name = "vcPath", .setter = setPath},
                  {.name = "alias", .type = Binary},
                  {.name = "vcPublishDate", .type = PropertyType::Date},
                  {.name = "size", .type = Integer32, .getter = size},
                  {.name = "mediaURL"},
                  {.name = "mediaFullURL", .storage = Derived},
                  {.name = "parent", .type = ToOne, .destination = "Channel", .inverse = "children"}}));
  episode.setDependentKeys("mediaFullURL", {"mediaURL", "vcPath"});
  episode.setDependentKeys("mediaURL", {"vcPath"});
  model.addEntity(
      entity("Image", {{.name = "title"},
                       {.name = "url", .indexed = true},
                       {.name = "twin", .type = ToOne, .destination = "Image", .inverse = "twin"}}));
  model.setFetchRequestTemplate("fetchImages", {.entityName = "Image", .key = "url"}, "URL");
  return model;
}

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
  static std::string text(ManagedObject& object, std::string_view key) {
    return std::string(object.value(key).stringValue());
  }
};

}  // namespace clipwave::testing
