// The records in memory: inserting, deleting, finding, saving, undoing.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/coredata/AttributeIndex.h"
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

// Of a fetch request that names an entity or a key that the model does not know; in NSCocoaErrorDomain.
inline constexpr int kFetchRequestError = 134060;

// What happened to the records, told to lists after it happened. A new record is told when its
// awakeFromInsert is over. A changed value is told once, for its own key and not for each dependent one.
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
  ManagedObjectContext(const ManagedObjectContext&) = delete;
  ManagedObjectContext& operator=(const ManagedObjectContext&) = delete;
  // Records that someone still holds are left without a context.
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
  friend class RelationshipChange;
  struct EntityTable;

  EntityTable* table(std::string_view entityName) const;
  EntityTable& tableOf(const ManagedObject& object) const;
  void addToIndexes(EntityTable& table, ManagedObject& object);
  void removeFromIndexes(EntityTable& table, const ManagedObject& object);
  // What a record tells before and after it changes.
  void willReplace(ManagedObject& object, int index, const Value& old, const Value& now);
  void markChanged(ManagedObject& object, int index);
  void markChanged(ManagedObject& object);
  // Bring a record into the store and take it out, each with the undo step that does the other.
  void place(const std::shared_ptr<ManagedObject>& object);
  void putBack(const std::shared_ptr<ManagedObject>& object);
  void takeOut(ManagedObject& object);
  void cascade(ManagedObject& object);
  void nullify(ManagedObject& object);
  void nullifyReferencesTo(ManagedObject& object);
  Result<void> validateForSave();

  std::unique_ptr<PersistentStoreCoordinator> coordinator_;
  RunLoop& runLoop_;
  UndoManager undoManager_;
  std::vector<std::unique_ptr<EntityTable>> tables_;  // in the model's order
  std::map<std::int64_t, ManagedObject*> changed_;    // inserted or changed since the last save
  StoreContent content_;                              // of the file, but for the records
  bool hasChanges_ = false;
  std::vector<Editor*> editors_;
  Observers<const ContextChange&> observers_;
};

}  // namespace clipwave
