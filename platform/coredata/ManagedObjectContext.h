// The records in memory: inserting, deleting, finding, saving, undoing.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/coredata/ManagedObject.h"
#include "platform/coredata/PersistentStoreCoordinator.h"
#include "platform/coredata/UndoManager.h"
#include "platform/foundation/Error.h"
#include "platform/foundation/Observation.h"
#include "platform/foundation/RunLoop.h"

namespace clipwave {

// Something with an edit in progress: a field, a list controller.
class Editor {
 public:
  virtual ~Editor() = default;
  // Writes the pending edit into the record. False when it was refused; the edit then stays pending.
  virtual bool commitEditing() = 0;
  virtual void discardEditing() = 0;
};

// Which records have which text as the plain value of one indexed attribute.
class AttributeIndex {
 public:
  // The records with this text, in no defined order.
  std::size_t count(std::string_view text) const;
  // Grows whenever some text is left without a record: until then, what was taken is still taken.
  std::uint64_t releases() const { return releases_; }

 private:
  friend class ManagedObjectContext;
  void add(std::string_view text, ManagedObject* object);
  void remove(std::string_view text, ManagedObject* object);
  const std::vector<ManagedObject*>* find(std::string_view text) const;

  std::unordered_map<std::string, std::vector<ManagedObject*>> objects_;
  std::uint64_t releases_ = 0;
};

// What happened to the records, told to lists after it happened.
struct ContextChange {
  enum class Kind { Inserted, Deleted, ValueChanged };
  Kind kind;
  ManagedObject* object;  // valid during the call, also when deleted
  int property = -1;      // ValueChanged: position of the changed key in the entity
};

class ManagedObjectContext {
 public:
  // Takes the coordinator and the records that it read.
  ManagedObjectContext(std::unique_ptr<PersistentStoreCoordinator> coordinator, RunLoop& runLoop);
  ~ManagedObjectContext();

  PersistentStoreCoordinator& persistentStoreCoordinator() { return *coordinator_; }
  const ManagedObjectModel& managedObjectModel() const { return coordinator_->model(); }
  UndoManager& undoManager() { return undoManager_; }
  RunLoop& runLoop() { return runLoop_; }

  // A new record with the entity's default values, after its awakeFromInsert; null for an unknown entity. An
  // undo step.
  ManagedObject* insertNewObject(std::string_view entityName);
  // Takes the record out of its relationships and out of the store, by the delete rules. An undo step that
  // brings everything back.
  void deleteObject(ManagedObject& object);
  // Records in store order (by age). Fails for an unknown entity or key.
  Result<std::vector<ManagedObject*>> executeFetchRequest(const FetchRequest& request);
  ManagedObject* objectWithID(std::int64_t objectID) const;
  std::size_t countOfEntity(std::string_view entityName) const;
  // The index over an attribute declared as indexed; null for any other key.
  const AttributeIndex* index(std::string_view entityName, std::string_view key) const;

  bool hasChanges() const { return hasChanges_; }
  // Validates inserted and changed records key by key; one error is answered as it is, several as one error
  // of code kValidationMultipleErrorsError. Then writes the store (when there are changes, or no file yet).
  // On failure every change stays in memory.
  Result<void> save();
  // Takes the last undoable change back.
  void undo() { undoManager_.undo(); }

  // Editors are asked in the order in which they registered; the first refusal ends the asking.
  void registerEditor(Editor& editor);
  void unregisterEditor(Editor& editor);
  bool commitEditing();
  void discardEditing();

  Observation observeChanges(std::function<void(const ContextChange&)> function) {
    return observers_.add(std::move(function));
  }

 private:
  friend class ManagedObject;
  struct EntityTable;

  std::unique_ptr<PersistentStoreCoordinator> coordinator_;
  RunLoop& runLoop_;
  UndoManager undoManager_;
  std::map<std::string, std::unique_ptr<EntityTable>, std::less<>> tables_;
  std::unordered_map<std::int64_t, ManagedObject*> objectsByID_;
  std::int64_t nextObjectID_ = 1;
  std::string version_;
  std::string unknown_;
  bool hasChanges_ = false;
  std::vector<Editor*> editors_;
  Observers<const ContextChange&> observers_;
};

}  // namespace clipwave
