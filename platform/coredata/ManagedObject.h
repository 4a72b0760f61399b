// One record of the object store: values by key, with observers, dependent keys, validation and undo.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/coredata/ManagedObjectModel.h"
#include "platform/foundation/Observation.h"
#include "platform/foundation/Value.h"

namespace clipwave {

class ManagedObjectContext;

// How a change of a primitive value counts.
enum class ChangeKind {
  Edit,         // marks the record changed and is an undo step
  FilledValue,  // marks the record changed and is no undo step: a value computed on first read, a refreshed
                // alias
  Unrecorded,   // neither: a transient value
};

// What a newer version of this program stored with a record (or beside the records) and this one does not
// know, as XML text that is ready to be written again.
struct UnknownContent {
  std::string attributes;                           // of the record's element, each with a leading blank
  std::string elements;                             // inside the record's element
  std::vector<std::pair<int, std::string>> onKeys;  // attributes of known keys, by position

  bool empty() const { return attributes.empty() && elements.empty() && onKeys.empty(); }
};

// Owned by its context; records refer to each other without owning. Deferred calls hold a record by
// weak_from_this().
class ManagedObject : public std::enable_shared_from_this<ManagedObject> {
 public:
  explicit ManagedObject(const EntityDescription& entity);
  ManagedObject(const ManagedObject&) = delete;
  ManagedObject& operator=(const ManagedObject&) = delete;
  virtual ~ManagedObject();

  const EntityDescription& entity() const { return *entity_; }
  // Positive and unique in the store for ever; also across deletion. 0 before the record is inserted.
  std::int64_t objectID() const { return objectID_; }
  // None before insertion and while deleted.
  ManagedObjectContext* managedObjectContext() const { return context_; }
  bool isDeleted() const { return objectID_ != 0 && context_ == nullptr; }

  // valueForKey: through the key's getter where there is one. A to-many key gives an array of records. Absent
  // for an unknown key.
  Value value(std::string_view key);
  // setValueForKey: through the key's setter where there is one, else stored, with observers told and an undo
  // step. No validation. Setting the value that is already there still tells observers but marks nothing
  // changed. False, and nothing changes, for an unknown key, a derived key without setter, or a to-many key.
  bool setValue(std::string_view key, const Value& value);
  // Validates (as the key's validator says) and answers what it said; `proposed` may be changed. Types must
  // match the attribute's: an absent value always does. Nothing is stored.
  Validation validateValue(std::string_view key, Value& proposed);
  // An edit being committed: validated exactly once, then set.
  Validation commitValue(std::string_view key, Value proposed);

  // The plain stored value, no getter, no filling. Absent for an unknown key.
  const Value& primitiveValue(std::string_view key) const;
  // The same by the key's position in the entity.
  const Value& primitiveValue(int index) const { return values_[static_cast<std::size_t>(index)]; }
  // Stores the plain value without its setter. `announce` tells the observers of the key and of its
  // dependents. A relationship's key takes the way of setValue; nothing happens for an unknown key.
  void setPrimitiveValue(std::string_view key, Value value, ChangeKind kind = ChangeKind::Edit,
                         bool announce = true);
  // Tells the observers of a key that has no stored value of its own, and of its dependents.
  void didChangeValue(std::string_view key);

  // Relationships. The inverse side is kept in step, observers of both sides are told, and all of it is one
  // undo step. Only records of one context can be related; nothing happens otherwise, for another key, or for
  // an object that is (or is not) there already.
  ManagedObject* relatedObject(std::string_view toOneKey) const;
  const std::vector<ManagedObject*>& relatedObjects(std::string_view toManyKey) const;
  void addObject(ManagedObject& object, std::string_view toManyKey);
  void removeObject(ManagedObject& object, std::string_view toManyKey);

  // `function` is called after each change of `key`, its own or one that it depends on.
  Observation observe(std::string_view key, std::function<void()> function);

 protected:
  // Called once, when a new record has got its place in a context and its default values; not on undo, redo
  // or loading.
  virtual void awakeFromInsert() {}
  // Called for a record that was read from the store, when the whole store is there.
  virtual void awakeFromFetch() {}

 private:
  friend class ManagedObjectContext;
  friend class RelationshipChange;
  friend class StoreReader;
  friend class StoreWriter;
  struct ObserverTable;

  Value& slot(int index) { return values_[static_cast<std::size_t>(index)]; }
  std::vector<ManagedObject*>& toMany(int index) {
    return toMany_[static_cast<std::size_t>(entity_->toManySlot(index))];
  }
  const std::vector<ManagedObject*>& toMany(int index) const {
    return toMany_[static_cast<std::size_t>(entity_->toManySlot(index))];
  }
  const PropertyDescription& propertyAt(int index) const {
    return entity_->properties()[static_cast<std::size_t>(index)];
  }
  Value valueAt(int index);
  bool setRelatedObject(int index, ManagedObject* object);
  void store(int index, Value value, ChangeKind kind, bool announced);
  void announce(int index);
  Validation validateAt(int index, Value& proposed);
  Validation checkType(int index, const Value& value) const;

  const EntityDescription* entity_;
  ManagedObjectContext* context_ = nullptr;
  std::int64_t objectID_ = 0;
  bool isChanged_ = false;           // is among the context's records to be validated
  bool isLeaving_ = false;           // is being deleted: a cascade must not come back to it
  std::unique_ptr<Value[]> values_;  // by position; to-many positions stay absent
  std::unique_ptr<std::vector<ManagedObject*>[]> toMany_;
  std::unique_ptr<ObserverTable> observers_;  // made with the first observer
  std::unique_ptr<UnknownContent> unknown_;
};

}  // namespace clipwave
