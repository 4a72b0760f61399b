// A list of records with a sort order and a selection, over the whole store or over a relationship of another
// list's selection.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/appkit/SortDescriptor.h"
#include "platform/coredata/ManagedObject.h"
#include "platform/coredata/ManagedObjectContext.h"
#include "platform/foundation/Observation.h"

namespace clipwave {

using IndexSet = std::set<std::size_t>;

class ArrayController;

// What the selected records say in common, and the way to write to all of them.
class Selection {
 public:
  enum class State { None, Single, SameValue, MultipleValues };
  explicit Selection(ArrayController& controller) : controller_(controller) {}

  // The value that all selected records share; absent for no selection or different values.
  Value value(std::string_view key) const;
  State state(std::string_view key) const;
  // Sets the value in every selected record, in selection order. No validation.
  void setValue(std::string_view key, const Value& value);
  // A user's edit: validated and set record by record; stops at the first refusal and answers it.
  Validation commitValue(std::string_view key, const Value& value);
  // Sets in every selected record, in selection order, what `next` makes of the value there. No validation.
  void changeValues(std::string_view key, const std::function<Value(const Value&)>& next);

 private:
  template <class Function>
  void forEachInBulk(const Function& function);

  ArrayController& controller_;
};

// The list rearranges on a fetch, on changed content and on an explicit sort, not when a value changes. Its
// own insertions do not come back to it as changed content. Records deleted or brought back in the store
// (undo) leave or enter the list by themselves: at once, and for undo, redo and removals through a list once
// for all of them together. No operation does work that grows with the list's length but what is said so
// (sorting, moving indexes in memory).
class ArrayController : public Editor {
 public:
  explicit ArrayController(std::string entityName);
  ~ArrayController() override;
  ArrayController(const ArrayController&) = delete;
  ArrayController& operator=(const ArrayController&) = delete;

  const std::string& entityName() const { return entityName_; }
  // The store to work on; none: the list is empty and every operation does nothing. Registers as an editor
  // there. The store must outlive the controller, or be taken from it before it goes.
  void setManagedObjectContext(ManagedObjectContext* context);
  ManagedObjectContext* managedObjectContext() const { return context_; }

  // The content is the to-many `relationship` of the one record selected in `master`: empty while none or
  // several are selected. Once, and `master` must outlive the binding controller. When another record is
  // selected there, the first arranged record is selected here.
  void bindContentToSelectionOf(ArrayController& master, std::string_view relationship);
  // Without such a binding: the content becomes all records of the entity, in store order. Keeps what is
  // selected; with nothing selected and content there, selects the first arranged record. With a binding:
  // sorts anew.
  void fetch();

  // Store order; records added through this controller stand at the end.
  const std::vector<ManagedObject*>& content() const { return current().content_; }
  const std::vector<ManagedObject*>& arrangedObjects() const { return current().arranged_; }
  // Sorts anew.
  void setSortDescriptors(std::vector<SortDescriptor> descriptors);
  const std::vector<SortDescriptor>& sortDescriptors() const { return sortDescriptors_; }
  // Sorts anew, keeping the selected records selected. Records that compare equal keep content order.
  void rearrangeObjects();

  // A new record of the entity in the store, not in the list yet. Null without a store.
  ManagedObject* newObject();
  // Adds a record to the list at its place in the sort order (at the end where it cannot be told), to the
  // master's relationship where there is one, and selects it alone; where a pending edit refuses to commit,
  // the selection stays. A record that is in the list already is only selected. Nothing happens while the
  // master has no single record selected.
  void addObject(ManagedObject& object);
  // newObject and addObject; null, and no record is made, where nothing could be added.
  ManagedObject* add();
  // The same at a given place, whatever the sort order. `index` is at most the number of arranged records.
  void insertObjectAtArrangedObjectIndex(ManagedObject& object, std::size_t index);
  // Removes the records from the list and deletes them from the store, as one undo step. Indexes outside the
  // list are ignored. Selected records that remain stay selected; when none does, the record that moved into
  // the first removed place is selected, else the last one. A pending edit of a removed record is dropped.
  virtual void removeObjectsAtArrangedObjectIndexes(const IndexSet& indexes);

  // In ascending order. Setters leave out indexes and records that are not in the list; each ends pending
  // edits of this controller and of those bound to it first, and changes nothing and answers false when an
  // edit refuses to commit.
  const IndexSet& selectionIndexes() const { return current().selection_; }
  std::optional<std::size_t> selectionIndex() const;  // the first selected one
  std::vector<ManagedObject*> selectedObjects() const;
  bool setSelectionIndexes(const IndexSet& indexes);
  bool setSelectionIndex(std::size_t index) { return setSelectionIndexes({index}); }
  bool setSelectedObjects(const std::vector<ManagedObject*>& objects);
  Selection selection() { return Selection(*this); }

  // Names what is being changed for the Edit menu, as UndoManager::setActionName does.
  void setUndoActionName(std::string_view name) {
    if (context_ != nullptr) context_->undoManager().setActionName(name);
  }

  // Editors of the records in this list (fields bound to its selection). Not owned. Edits are discarded when
  // the records that they belong to are deselected by a change in the store.
  void objectDidBeginEditing(Editor& editor);
  void objectDidEndEditing(Editor& editor);
  bool commitEditing() override;
  void discardEditing() override;

  // Called after the selected records are others than before (also when a master's selection changed), once
  // for each change.
  Observation observeSelectedObjects(std::function<void()> function) {
    return selectionObservers_.add(std::move(function));
  }
  // Called after `key`, its own or through one that it depends on, changed in one of the selected records:
  // those that observers of the selection were told of last.
  Observation observeSelectedValue(std::string_view key, std::function<void()> function) {
    return valueObservers_[std::string(key)].add(std::move(function));
  }
  // Called after arrangedObjects() changed.
  Observation observeArrangedObjects(std::function<void()> function) {
    return arrangedObservers_.add(std::move(function));
  }

  // Called after each change in the store that the list works on by then, and after the list itself was told.
  Observation observeStore(std::function<void(const ContextChange&)> function) {
    return storeObservers_.add(std::move(function));
  }

  // Whether values are being changed in bulk (a write to the selection, undo, redo). What shows what the
  // selected records have in common waits for the end, or its work would grow with the square of their
  // number.
  bool isInBulkChange() const;
  // Called when a bulk change may have ended.
  Observation observeEndOfBulkChange(std::function<void()> function) {
    return bulkChangeObservers_.add(std::move(function));
  }

 private:
  friend class Selection;
  // What was before the changes that observers have not been told of yet.
  struct Unannounced {
    std::vector<ManagedObject*> selected;  // only compared: the records may be gone
    bool wasEmpty = false;
    bool arrangedChanged = false;
    bool sourceChanged = false;
    std::optional<std::size_t> firstRemoved = {};
  };

  // This controller with the store's changes taken over.
  ArrayController& current() const;
  bool waitsForMoreChanges() const;
  bool isUndoingOrRedoing() const;
  void contextChanged(const ContextChange& change);
  void tellOfValue(const ContextChange& change);
  void takeOverChanges();
  void dropGoneRecords();
  void bringBackRecords();
  void readRelationship(ManagedObject* source);
  void setContent(std::vector<ManagedObject*> content);
  void arrange();
  // Takes over what changed, finds a selection where it got lost, and tells the observers.
  void settle();
  void selectAfterChange();
  Unannounced& remember();
  void announce();
  void endBulkChange();

  bool endEditing();
  void insert(ManagedObject& object, std::optional<std::size_t> index);
  bool canHoldRecords() const;
  bool select(IndexSet indexes);
  std::vector<ManagedObject*> selectedAsArranged() const;
  ManagedObject* onlySelectedObject() const;
  IndexSet indexesOf(const std::vector<ManagedObject*>& objects) const;

  std::string entityName_;
  ManagedObjectContext* context_ = nullptr;
  ArrayController* master_ = nullptr;
  std::vector<ArrayController*> details_;  // those whose master this is
  std::string relationship_;
  std::vector<SortDescriptor> sortDescriptors_;

  std::vector<ManagedObject*> content_;
  std::vector<ManagedObject*> arranged_;
  std::unordered_set<ManagedObject*> members_;  // the same records, to be asked for in constant time
  IndexSet selection_;
  ManagedObject* source_ = nullptr;  // the master's record whose relationship is the content; only compared
  std::int64_t sourceID_ = 0;        // its identity, which no later record can have; 0 for none
  int sourceProperty_ = -1;

  // What the store announced and the list has not taken over yet.
  std::unordered_set<ManagedObject*> gone_;  // only compared
  std::vector<ManagedObject*> returned_;
  bool relationshipChanged_ = false;
  std::unordered_set<std::int64_t>
      departed_;  // deleted while in the list: they belong in it when brought back
  bool takingOver_ = false;
  int ownChanges_ = 0;   // depth of this list's own changes to the store
  int bulkChanges_ = 0;  // depth of writes to the selection
  std::optional<Unannounced> unannounced_;

  std::vector<Editor*> editors_;
  Observers<> selectionObservers_;
  std::map<std::string, Observers<>, std::less<>> valueObservers_;  // by key
  std::unordered_set<const ManagedObject*> toldSelected_;           // only compared: the records may be gone
  Observers<> arrangedObservers_;
  Observers<const ContextChange&> storeObservers_;
  Observers<> bulkChangeObservers_;
  Observation contextObservation_;
  Observation undoObservation_;
};

}  // namespace clipwave
