// A list of records with a sort order and a selection, over the whole store or over a relationship of another
// list's selection.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/coredata/ManagedObject.h"
#include "platform/coredata/ManagedObjectContext.h"
#include "platform/foundation/Observation.h"

namespace clipwave {

using IndexSet = std::set<std::size_t>;

// Texts compare byte by byte, dates by time, numbers by size; absent values come first in ascending order.
struct SortDescriptor {
  std::string key;
  bool ascending = true;
};

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

 private:
  ArrayController& controller_;
};

// The list rearranges on a fetch, on changed content and on an explicit sort, not when a value changes. Its
// own insertions do not come back to it as changed content. Records deleted or brought back in the store
// (undo) leave or enter the list by themselves. No operation does work that grows with the list's length but
// what is said so (sorting, moving indexes in memory).
class ArrayController : public Editor {
 public:
  explicit ArrayController(std::string entityName);
  ~ArrayController() override;
  ArrayController(const ArrayController&) = delete;
  ArrayController& operator=(const ArrayController&) = delete;

  const std::string& entityName() const { return entityName_; }
  // The store to work on; none: the list is empty and every operation does nothing. Registers as an editor
  // there.
  void setManagedObjectContext(ManagedObjectContext* context);
  ManagedObjectContext* managedObjectContext() const { return context_; }

  // The content is the to-many `relationship` of the one record selected in `master`: empty while none or
  // several are selected.
  void bindContentToSelectionOf(ArrayController& master, std::string_view relationship);
  // Without such a binding: the content becomes all records of the entity, in store order. Keeps what is
  // selected; with nothing selected and content there, selects the first arranged record.
  void fetch();

  // Store order; records added through this controller stand at the end.
  const std::vector<ManagedObject*>& content() const { return content_; }
  const std::vector<ManagedObject*>& arrangedObjects() const { return arranged_; }
  void setSortDescriptors(std::vector<SortDescriptor> descriptors);
  // Sorts anew, keeping the selected records selected. Records that compare equal keep content order.
  void rearrangeObjects();

  // A new record of the entity in the store, not in the list yet. Null without a store.
  ManagedObject* newObject();
  // Adds a record to the list at its place in the sort order (at the end where it cannot be told), to the
  // master's relationship where there is one, and selects it alone.
  void addObject(ManagedObject& object);
  // newObject and addObject.
  ManagedObject* add();
  // The same at a given place, whatever the sort order. `index` is at most the number of arranged records.
  void insertObjectAtArrangedObjectIndex(ManagedObject& object, std::size_t index);
  // Removes the records from the list and deletes them from the store, as one undo step. Indexes outside the
  // list are ignored.
  virtual void removeObjectsAtArrangedObjectIndexes(const IndexSet& indexes);

  // In ascending order. Setters ignore indexes and records that are not in the list; each ends pending edits
  // of this controller first and changes nothing and answers false when an edit refuses to commit.
  const IndexSet& selectionIndexes() const { return selection_; }
  std::optional<std::size_t> selectionIndex() const;  // the first selected one
  std::vector<ManagedObject*> selectedObjects() const;
  bool setSelectionIndexes(const IndexSet& indexes);
  bool setSelectionIndex(std::size_t index) { return setSelectionIndexes({index}); }
  bool setSelectedObjects(const std::vector<ManagedObject*>& objects);
  Selection selection() { return Selection(*this); }

  // Editors of the records in this list (fields bound to its selection). Not owned.
  void objectDidBeginEditing(Editor& editor);
  void objectDidEndEditing(Editor& editor);
  bool commitEditing() override;
  void discardEditing() override;

  // Called after the selected records are others than before (also when a master's selection changed), once
  // for each change.
  Observation observeSelectedObjects(std::function<void()> function) {
    return selectionObservers_.add(std::move(function));
  }
  // Called after arrangedObjects() changed.
  Observation observeArrangedObjects(std::function<void()> function) {
    return arrangedObservers_.add(std::move(function));
  }

 private:
  std::string entityName_;
  ManagedObjectContext* context_ = nullptr;
  ArrayController* master_ = nullptr;
  std::string relationship_;
  std::vector<SortDescriptor> sortDescriptors_;
  std::vector<ManagedObject*> content_;
  std::vector<ManagedObject*> arranged_;
  IndexSet selection_;
  std::vector<Editor*> editors_;
  Observers<> selectionObservers_;
  Observers<> arrangedObservers_;
  Observation contextObservation_;
  Observation masterObservation_;
};

}  // namespace clipwave
