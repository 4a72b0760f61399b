#include "platform/appkit/ArrayController.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace clipwave {

ArrayController::ArrayController(std::string entityName) : entityName_(std::move(entityName)) {}

ArrayController::~ArrayController() {
  if (context_ != nullptr) context_->unregisterEditor(*this);
  if (master_ != nullptr) std::erase(master_->details_, this);
  for (ArrayController* detail : details_) detail->master_ = nullptr;
}

void ArrayController::setManagedObjectContext(ManagedObjectContext* context) {
  if (context == context_) return;
  remember();
  if (context_ != nullptr) context_->unregisterEditor(*this);
  contextObservation_.cancel();
  undoObservation_.cancel();
  context_ = context;
  gone_.clear();
  returned_.clear();
  departed_.clear();
  source_ = nullptr;
  sourceID_ = 0;
  setContent({});
  arrange();
  selection_.clear();
  if (context_ != nullptr) {
    context_->registerEditor(*this);
    contextObservation_ = context_->observeChanges([this](const ContextChange& change) {
      contextChanged(change);
      storeObservers_.call(change);
    });
    undoObservation_ = context_->undoManager().observe([this] { endBulkChange(); });
  }
  announce();
  settle();
}

void ArrayController::bindContentToSelectionOf(ArrayController& master, std::string_view relationship) {
  master_ = &master;
  relationship_ = relationship;
  master.details_.push_back(this);
  settle();
}

void ArrayController::fetch() {
  if (context_ == nullptr) return;
  if (master_ != nullptr) {
    rearrangeObjects();
    return;
  }
  FetchRequest request;
  request.entityName = entityName_;
  const auto records = context_->executeFetchRequest(request);
  if (!records) return;
  settle();
  remember();
  const std::vector<ManagedObject*> selected = selectedAsArranged();
  setContent(*records);
  arrange();
  selection_ = indexesOf(selected);
  if (selection_.empty() && !arranged_.empty()) selection_ = {0};
  announce();
}

void ArrayController::setSortDescriptors(std::vector<SortDescriptor> descriptors) {
  sortDescriptors_ = std::move(descriptors);
  rearrangeObjects();
}

void ArrayController::rearrangeObjects() {
  settle();
  remember();
  const std::vector<ManagedObject*> selected = selectedAsArranged();
  arrange();
  selection_ = indexesOf(selected);
  announce();
}

// --- Adding and removing ---

bool ArrayController::canHoldRecords() const {
  return context_ != nullptr && (master_ == nullptr || current().sourceID_ != 0);
}

ManagedObject* ArrayController::newObject() {
  return context_ == nullptr ? nullptr : context_->insertNewObject(entityName_);
}

void ArrayController::addObject(ManagedObject& object) {
  insert(object, std::nullopt);
}

ManagedObject* ArrayController::add() {
  if (!canHoldRecords()) return nullptr;
  ManagedObject* const object = newObject();
  if (object != nullptr) addObject(*object);
  return object;
}

void ArrayController::insertObjectAtArrangedObjectIndex(ManagedObject& object, std::size_t index) {
  insert(object, index);
}

void ArrayController::insert(ManagedObject& object, std::optional<std::size_t> index) {
  settle();
  const bool selects = endEditing();
  if (!canHoldRecords() || object.managedObjectContext() != context_) return;
  if (members_.contains(&object)) {
    if (selects) select(indexesOf({&object}));
    return;
  }
  remember().arrangedChanged = true;
  if (master_ != nullptr) {
    ++ownChanges_;
    source_->addObject(object, relationship_);
    --ownChanges_;
  }
  const std::size_t place =
      index ? std::min(*index, arranged_.size()) : placeInOrder(object, arranged_, sortDescriptors_);
  content_.push_back(&object);
  members_.insert(&object);
  arranged_.insert(arranged_.begin() + static_cast<std::ptrdiff_t>(place), &object);
  IndexSet selected;
  if (selects) {
    selected = {place};
  } else {
    for (const std::size_t row : selection_) selected.insert(selected.end(), row < place ? row : row + 1);
  }
  selection_ = std::move(selected);
  announce();
  settle();
}

void ArrayController::removeObjectsAtArrangedObjectIndexes(const IndexSet& indexes) {
  settle();
  if (context_ == nullptr) return;
  std::vector<ManagedObject*> doomed;
  bool selectedOnesGo = false;
  for (const std::size_t index : indexes) {
    if (index >= arranged_.size()) break;
    doomed.push_back(arranged_[index]);
    selectedOnesGo = selectedOnesGo || selection_.contains(index);
  }
  if (doomed.empty()) return;
  if (selectedOnesGo) {
    discardEditing();
    for (ArrayController* detail : details_) detail->discardEditing();
  }
  remember();
  ++ownChanges_;
  UndoManager& undoManager = context_->undoManager();
  undoManager.beginUndoGrouping();
  for (ManagedObject* record : doomed) {
    // The deletion of one may have taken another along.
    if (!gone_.contains(record)) context_->deleteObject(*record);
  }
  undoManager.endUndoGrouping();
  --ownChanges_;
  settle();
}

// --- Selecting ---

std::optional<std::size_t> ArrayController::selectionIndex() const {
  const IndexSet& indexes = selectionIndexes();
  if (indexes.empty()) return std::nullopt;
  return *indexes.begin();
}

std::vector<ManagedObject*> ArrayController::selectedObjects() const {
  return current().selectedAsArranged();
}

std::vector<ManagedObject*> ArrayController::selectedAsArranged() const {
  std::vector<ManagedObject*> selected;
  selected.reserve(selection_.size());
  for (const std::size_t index : selection_) selected.push_back(arranged_[index]);
  return selected;
}

ManagedObject* ArrayController::onlySelectedObject() const {
  const IndexSet& indexes = selectionIndexes();
  return indexes.size() == 1 ? arranged_[*indexes.begin()] : nullptr;
}

bool ArrayController::setSelectionIndexes(const IndexSet& indexes) {
  settle();
  return endEditing() && select(indexes);
}

bool ArrayController::setSelectedObjects(const std::vector<ManagedObject*>& objects) {
  settle();
  return endEditing() && select(indexesOf(objects));
}

bool ArrayController::select(IndexSet indexes) {
  settle();
  indexes.erase(indexes.lower_bound(arranged_.size()), indexes.end());
  if (indexes == selection_) return true;
  remember();
  selection_ = std::move(indexes);
  announce();
  return true;
}

IndexSet ArrayController::indexesOf(const std::vector<ManagedObject*>& objects) const {
  if (objects.size() == 1) {
    // Often the record that was just added, which is selected already: no need to look through the list.
    if (selection_.size() == 1 && *selection_.begin() < arranged_.size() &&
        arranged_[*selection_.begin()] == objects.front()) {
      return selection_;
    }
    const auto found = std::find(arranged_.begin(), arranged_.end(), objects.front());
    if (found == arranged_.end()) return {};
    return {static_cast<std::size_t>(found - arranged_.begin())};
  }
  IndexSet indexes;
  const std::unordered_set<ManagedObject*> wanted(objects.begin(), objects.end());
  for (std::size_t index = 0; index < arranged_.size() && indexes.size() < wanted.size(); ++index) {
    if (wanted.contains(arranged_[index])) indexes.insert(indexes.end(), index);
  }
  return indexes;
}

// --- Editing ---

void ArrayController::objectDidBeginEditing(Editor& editor) {
  if (std::find(editors_.begin(), editors_.end(), &editor) == editors_.end()) editors_.push_back(&editor);
}

void ArrayController::objectDidEndEditing(Editor& editor) {
  std::erase(editors_, &editor);
}

bool ArrayController::commitEditing() {
  const std::vector<Editor*> editors = editors_;
  for (Editor* editor : editors) {
    // One commit may end another's edit, and take its editor away.
    if (std::find(editors_.begin(), editors_.end(), editor) == editors_.end()) continue;
    if (!editor->commitEditing()) return false;
  }
  return true;
}

void ArrayController::discardEditing() {
  const std::vector<Editor*> editors = editors_;
  for (Editor* editor : editors) {
    if (std::find(editors_.begin(), editors_.end(), editor) != editors_.end()) editor->discardEditing();
  }
}

bool ArrayController::endEditing() {
  return commitEditing() && std::all_of(details_.begin(), details_.end(),
                                        [](ArrayController* detail) { return detail->endEditing(); });
}

}  // namespace clipwave
