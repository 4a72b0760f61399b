// How a list follows the store and its master's selection, and tells its observers.
#include <algorithm>
#include <utility>

#include "platform/appkit/ArrayController.h"

namespace clipwave {
namespace {

// Room for the next records, so that the first addition to a long list does not move all of it in memory.
std::size_t roomToGrow(std::size_t size) {
  return size / 8 + 16;
}

}  // namespace

// Lists are read far more often than they change, and may be read in the middle of an undo: whoever reads
// gets them as the store stands, while observers are told when all of it is done.
ArrayController& ArrayController::current() const {
  auto& self = const_cast<ArrayController&>(*this);
  self.takeOverChanges();
  return self;
}

bool ArrayController::isUndoingOrRedoing() const {
  return context_ != nullptr && (context_->undoManager().isUndoing() || context_->undoManager().isRedoing());
}

bool ArrayController::isInBulkChange() const {
  return bulkChanges_ > 0 || isUndoingOrRedoing();
}

void ArrayController::endBulkChange() {
  if (isInBulkChange()) return;
  settle();
  bulkChangeObservers_.call();
}

bool ArrayController::waitsForMoreChanges() const {
  return ownChanges_ > 0 || isUndoingOrRedoing() || (master_ != nullptr && master_->waitsForMoreChanges());
}

void ArrayController::contextChanged(const ContextChange& change) {
  switch (change.kind) {
    case ContextChange::Kind::ValueChanged:
      tellOfValue(change);
      // What this list does to the relationship itself it has in its content already.
      if (change.object != source_ || change.property != sourceProperty_ || ownChanges_ > 0) return;
      relationshipChanged_ = true;
      break;
    case ContextChange::Kind::Deleted:
      if (std::erase(returned_, change.object) > 0) break;
      if (!members_.contains(change.object)) return;
      gone_.insert(change.object);
      departed_.insert(change.object->objectID());
      break;
    case ContextChange::Kind::Inserted:
      if (gone_.erase(change.object) > 0) break;
      if (master_ != nullptr || !departed_.contains(change.object->objectID())) return;
      returned_.push_back(change.object);
      break;
  }
  settle();
}

// One place for all keys of all selected records: an observer in each record for each field of a window would
// be half a million of them when ten thousand records are selected.
void ArrayController::tellOfValue(const ContextChange& change) {
  if (valueObservers_.empty() || !toldSelected_.contains(change.object)) return;
  const EntityDescription& entity = change.object->entity();
  const auto tell = [this, &entity](int property) {
    const auto found = valueObservers_.find(entity.properties()[static_cast<std::size_t>(property)].name);
    if (found != valueObservers_.end()) found->second.call();
  };
  tell(change.property);
  for (const int dependent : entity.dependentsOf(change.property)) tell(dependent);
}

void ArrayController::takeOverChanges() {
  // Sorting reads keys, and a derived key may look at the list.
  if (takingOver_) return;
  ManagedObject* const source =
      master_ != nullptr && context_ != nullptr ? master_->onlySelectedObject() : nullptr;
  const bool sourceChanged = sourceID_ != (source == nullptr ? 0 : source->objectID());
  if (!sourceChanged && gone_.empty() && returned_.empty() && !relationshipChanged_) return;

  takingOver_ = true;
  Unannounced& before = remember();
  const std::vector<ManagedObject*> selected = selectedAsArranged();
  dropGoneRecords();
  if (sourceChanged) {
    before.sourceChanged = true;
    source_ = source;
    sourceID_ = source == nullptr ? 0 : source->objectID();
    sourceProperty_ = source == nullptr ? -1 : source->entity().indexOf(relationship_);
  }
  if (sourceChanged || relationshipChanged_) readRelationship(source);
  bringBackRecords();
  selection_ = before.sourceChanged ? IndexSet() : indexesOf(selected);
  takingOver_ = false;
}

void ArrayController::dropGoneRecords() {
  if (gone_.empty()) return;
  Unannounced& before = remember();
  const auto isGone = [this, one = gone_.size() == 1 ? *gone_.begin() : nullptr](ManagedObject* record) {
    return one != nullptr ? record == one : gone_.contains(record);
  };
  const auto first = std::find_if(arranged_.begin(), arranged_.end(), isGone);
  const auto firstIndex = static_cast<std::size_t>(first - arranged_.begin());
  before.firstRemoved = std::min(before.firstRemoved.value_or(firstIndex), firstIndex);
  before.arrangedChanged = true;
  arranged_.erase(std::remove_if(first, arranged_.end(), isGone), arranged_.end());
  std::erase_if(content_, isGone);
  for (ManagedObject* record : gone_) members_.erase(record);
  gone_.clear();
}

void ArrayController::readRelationship(ManagedObject* source) {
  relationshipChanged_ = false;
  std::vector<ManagedObject*> related;
  if (source != nullptr) related = source->relatedObjects(relationship_);
  if (related == content_) return;
  const bool hasNewOnes = !std::all_of(related.begin(), related.end(),
                                       [this](auto* record) { return members_.contains(record); });
  setContent(std::move(related));
  if (hasNewOnes || remember().sourceChanged) {
    arrange();
    return;
  }
  // Records that only left do not disturb the order of those that stay.
  const auto left = [this](ManagedObject* record) { return !members_.contains(record); };
  const auto first = std::find_if(arranged_.begin(), arranged_.end(), left);
  if (first == arranged_.end()) return;
  Unannounced& before = remember();
  const auto firstIndex = static_cast<std::size_t>(first - arranged_.begin());
  before.firstRemoved = std::min(before.firstRemoved.value_or(firstIndex), firstIndex);
  before.arrangedChanged = true;
  std::erase_if(arranged_, left);
}

void ArrayController::bringBackRecords() {
  if (returned_.empty()) return;
  std::vector<ManagedObject*> content = content_;
  content.insert(content.end(), returned_.begin(), returned_.end());
  returned_.clear();
  std::stable_sort(content.begin(), content.end(),
                   [](ManagedObject* a, ManagedObject* b) { return a->objectID() < b->objectID(); });
  setContent(std::move(content));
  arrange();
}

void ArrayController::setContent(std::vector<ManagedObject*> content) {
  content_ = std::move(content);
  content_.reserve(content_.size() + roomToGrow(content_.size()));
  members_.clear();
  members_.reserve(content_.size() + roomToGrow(content_.size()));
  members_.insert(content_.begin(), content_.end());
  relationshipChanged_ = false;
}

void ArrayController::arrange() {
  std::vector<ManagedObject*> arranged;
  arranged.reserve(content_.size() + roomToGrow(content_.size()));
  arranged.assign(content_.begin(), content_.end());
  sortRecords(arranged, sortDescriptors_);
  if (arranged == arranged_) return;
  arranged_ = std::move(arranged);
  remember().arrangedChanged = true;
}

// --- Telling ---

void ArrayController::settle() {
  if (waitsForMoreChanges()) return;
  // The master first: where its selection got lost it finds another, and that decides this list's content.
  if (master_ != nullptr) master_->settle();
  takeOverChanges();
  if (!unannounced_) return;
  selectAfterChange();
  announce();
}

void ArrayController::selectAfterChange() {
  if (!selection_.empty() || arranged_.empty()) return;
  const Unannounced& before = *unannounced_;
  if (before.sourceChanged || before.wasEmpty) {
    selection_ = {0};
  } else if (!before.selected.empty()) {
    selection_ = {std::min(before.firstRemoved.value_or(0), arranged_.size() - 1)};
  }
}

ArrayController::Unannounced& ArrayController::remember() {
  if (!unannounced_) {
    unannounced_ = Unannounced{};
    unannounced_->selected = selectedAsArranged();
    unannounced_->wasEmpty = arranged_.empty();
  }
  return *unannounced_;
}

void ArrayController::announce() {
  if (!unannounced_) return;
  const Unannounced before = std::move(*unannounced_);
  unannounced_.reset();
  const std::vector<ManagedObject*> selected = selectedAsArranged();
  const bool selectionChanged = before.selected != selected;
  if (selectionChanged) {
    toldSelected_.clear();
    toldSelected_.insert(selected.begin(), selected.end());
    // Setters have committed what they could; what is pending still belongs to records that went.
    discardEditing();
    const std::vector<ArrayController*> details = details_;
    for (ArrayController* detail : details) detail->settle();
  }
  if (before.arrangedChanged) arrangedObservers_.call();
  if (selectionChanged) selectionObservers_.call();
}

}  // namespace clipwave
