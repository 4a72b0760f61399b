// The description of the library's records: entities with their attributes, relationships, dependent keys and
// stored queries.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/foundation/Error.h"
#include "platform/foundation/Value.h"

namespace clipwave {

class EntityDescription;
class ManagedObject;

// What a validation answers. An invalid value may come without an error: then nothing is shown.
struct Validation {
  bool valid = true;
  std::optional<Error> error;

  static Validation ok() { return {}; }
  static Validation refused() { return {false, std::nullopt}; }
  static Validation refused(Error error) { return {false, std::move(error)}; }
};

enum class PropertyType { String, Date, Boolean, Integer32, Binary, Handle, ToOne, ToMany };
// Stored: kept in the store file. Transient: kept in memory only. Derived: computed by the getter, holds
// nothing.
enum class Storage { Stored, Transient, Derived };
enum class DeleteRule { Nullify, Cascade };

// One attribute or relationship. A getter or setter takes the place of the plain access by key; inside them
// the record uses its primitive values.
struct PropertyDescription {
  using Getter = Value (*)(ManagedObject&);
  using Setter = void (*)(ManagedObject&, const Value&);
  // May change the proposed value. Called by ManagedObject::validateValue only.
  using Validator = Validation (*)(ManagedObject&, Value& proposed);

  std::string name;
  PropertyType type = PropertyType::String;
  Storage storage = Storage::Stored;
  Value defaultValue = {};  // of a new record; a record read from the store keeps absence
  bool indexed = false;     // the context keeps an AttributeIndex over its stored text
  Getter getter = nullptr;
  Setter setter = nullptr;
  Validator validator = nullptr;
  // Relationships only.
  std::string destination = {};
  // Key of the destination that points back; "" for none. That of a to-many relationship is a to-one.
  std::string inverse = {};
  DeleteRule deleteRule = DeleteRule::Nullify;
};

class EntityDescription {
 public:
  using Factory = std::function<std::shared_ptr<ManagedObject>(const EntityDescription&)>;

  // `factory` makes a record of the class that belongs to this entity.
  EntityDescription(std::string name, Factory factory, std::vector<PropertyDescription> properties);
  EntityDescription(const EntityDescription&) = delete;
  EntityDescription& operator=(const EntityDescription&) = delete;

  const std::string& name() const { return name_; }
  const std::vector<PropertyDescription>& properties() const { return properties_; }
  // The position of a key in properties(), or -1 for an unknown key. Constant time.
  int indexOf(std::string_view key) const {
    const auto found = indexes_.find(key);
    return found == indexes_.end() ? -1 : found->second;
  }
  const PropertyDescription* property(std::string_view key) const;
  // How many of the properties are to-many relationships, and the place among them of the one at `index`.
  int toManyCount() const { return toManyCount_; }
  int toManySlot(int index) const { return slots_[static_cast<std::size_t>(index)]; }

  // Observers of `derived` are told that it changed whenever one of `sources` changes, also through several
  // steps. Call before any record of the entity exists.
  void setDependentKeys(std::string_view derived, const std::vector<std::string_view>& sources);
  // Positions of the keys that count as changed with the key at `index`, itself excluded, each once.
  const std::vector<int>& dependentsOf(int index) const {
    return dependents_[static_cast<std::size_t>(index)];
  }

  std::shared_ptr<ManagedObject> makeObject() const { return factory_(*this); }

 private:
  std::string name_;
  Factory factory_;
  std::vector<PropertyDescription> properties_;
  std::unordered_map<std::string_view, int> indexes_;
  std::vector<int> slots_;  // -1 for everything but a to-many relationship
  int toManyCount_ = 0;
  std::vector<std::vector<int>> direct_;      // source -> derived keys as declared
  std::vector<std::vector<int>> dependents_;  // their transitive closure
};

// A query over the store: the records of an entity, in store order, whose value for `key` equals `value`
// (when a key is given; compared as primitive values) and which `predicate` accepts (when there is one).
struct FetchRequest {
  std::string entityName;
  std::string key = {};
  Value value = {};
  std::function<bool(ManagedObject&)> predicate = nullptr;
};

class ManagedObjectModel {
 public:
  EntityDescription& addEntity(std::unique_ptr<EntityDescription> entity);
  const EntityDescription* entity(std::string_view name) const;
  const std::vector<std::unique_ptr<EntityDescription>>& entities() const { return entities_; }

  // A stored query: `request` with its value, or with the substitution variable `variable` in place of it.
  void setFetchRequestTemplate(std::string_view name, FetchRequest request, std::string_view variable = {});
  // The template with its variable bound; nothing for an unknown name or an unbound variable.
  std::optional<FetchRequest> fetchRequestFromTemplate(std::string_view name,
                                                       const Dictionary& variables = {}) const;

 private:
  struct Template {
    FetchRequest request;
    std::string variable;
  };
  std::vector<std::unique_ptr<EntityDescription>> entities_;
  std::map<std::string, Template, std::less<>> templates_;
};

}  // namespace clipwave
