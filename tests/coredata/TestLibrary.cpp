#include "tests/coredata/TestLibrary.h"

namespace clipwave::testing {
namespace {

Validation validateTitle(ManagedObject&, Value& proposed) {
  if (proposed.stringValue() == "taken") return Validation::refused(Error{"vcTitle", -5, "It is taken.", {}});
  if (proposed.stringValue() == "silent") return Validation::refused();
  if (proposed.stringValue() == "shout") proposed = "SHOUT";
  return Validation::ok();
}

// Filled on first read, as the size of a file is.
Value size(ManagedObject& episode) {
  if (episode.primitiveValue("size").isNull()) episode.setPrimitiveValue("size", 42, ChangeKind::FilledValue);
  return episode.primitiveValue("size");
}

void setPath(ManagedObject& episode, const Value& path) {
  episode.setPrimitiveValue("alias", Value::data(path.stringValue()));
  episode.setPrimitiveValue("vcPath", path);
}

std::unique_ptr<EntityDescription> entity(std::string name, std::vector<PropertyDescription> properties) {
  return std::make_unique<EntityDescription>(
      std::move(name), [](const EntityDescription& of) { return std::make_shared<TestRecord>(of); },
      std::move(properties));
}

}  // namespace

ManagedObjectModel makeTestModel() {
  using enum PropertyType;
  using enum Storage;
  const PropertyDescription children = {.name = "children",
                                        .type = ToMany,
                                        .destination = "Vodcast",
                                        .inverse = "parent",
                                        .deleteRule = DeleteRule::Cascade};
  ManagedObjectModel model;
  EntityDescription& channel =
      model.addEntity(entity("Channel", {{.name = "vcTitle", .indexed = true, .validator = validateTitle},
                                         {.name = "vcURL", .indexed = true},
                                         {.name = "protocolTag", .type = Integer32},
                                         {.name = "vcPublish", .type = Boolean, .defaultValue = true},
                                         {.name = "lastBuildDate", .type = PropertyType::Date},
                                         {.name = "canEditURLs", .type = Boolean, .storage = Derived},
                                         children,
                                         {.name = "image", .type = ToOne, .destination = "Image"},
                                         {.name = "pictures", .type = ToMany, .destination = "Image"}}));
  channel.setDependentKeys("canEditURLs", {"protocolTag"});
  EntityDescription& episode = model.addEntity(entity(
      "Vodcast", {{.name = "vcTitle"},
                  {.name = "vcPath", .setter = setPath},
                  {.name = "alias", .type = Binary},
                  {.name = "vcPublishDate", .type = PropertyType::Date},
                  {.name = "size", .type = Integer32, .getter = size},
                  {.name = "movie", .type = PropertyType::Handle, .storage = Transient},
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
  model.setFetchRequestTemplate("untitled", {.entityName = "Channel", .key = "vcTitle", .value = "x"});
  return model;
}

}  // namespace clipwave::testing
