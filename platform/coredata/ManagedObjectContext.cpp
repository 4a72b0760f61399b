#include "platform/coredata/ManagedObjectContext.h"

#include <algorithm>
#include <utility>

#include "platform/coredata/RelationshipChange.h"
#include "platform/foundation/Localization.h"

namespace clipwave {

struct ManagedObjectContext::EntityTable {
  explicit EntityTable(const EntityDescription& description) : entity(description) {}

  const EntityDescription& entity;
  // By age. Not a vector: undo brings records back into the middle.
  std::map<std::int64_t, std::shared_ptr<ManagedObject>> objects = {};
  std::vector<std::pair<int, AttributeIndex>> indexes = {};

  AttributeIndex* indexAt(int position) {
    for (auto& [key, index] : indexes)
      if (key == position) return &index;
    return nullptr;
  }
};

ManagedObjectContext::ManagedObjectContext(std::unique_ptr<PersistentStoreCoordinator> coordinator,
                                           RunLoop& runLoop)
    : coordinator_(std::move(coordinator)), runLoop_(runLoop), undoManager_(runLoop) {
  for (const auto& entity : managedObjectModel().entities()) {
    auto& made = *tables_.emplace_back(std::make_unique<EntityTable>(*entity));
    for (std::size_t i = 0; i < entity->properties().size(); ++i)
      if (entity->properties()[i].indexed) made.indexes.emplace_back(static_cast<int>(i), AttributeIndex());
  }
  content_ = coordinator_->takeContent();
  const auto objects = std::exchange(content_.objects, {});
  for (const auto& object : objects) {
    EntityTable& home = tableOf(*object);
    home.objects.emplace_hint(home.objects.end(), object->objectID(), object);
    object->context_ = this;
    addToIndexes(home, *object);
  }
  for (const auto& object : objects) object->awakeFromFetch();
}

ManagedObjectContext::~ManagedObjectContext() {
  for (const auto& each : tables_)
    for (const auto& [id, object] : each->objects) object->context_ = nullptr;
}

ManagedObjectContext::EntityTable* ManagedObjectContext::table(std::string_view entityName) const {
  for (const auto& each : tables_)
    if (each->entity.name() == entityName) return each.get();
  return nullptr;
}

ManagedObjectContext::EntityTable& ManagedObjectContext::tableOf(const ManagedObject& object) const {
  return **std::find_if(tables_.begin(), tables_.end(),
                        [&object](const auto& each) { return &each->entity == &object.entity(); });
}

void ManagedObjectContext::addToIndexes(EntityTable& home, ManagedObject& object) {
  for (auto& [key, index] : home.indexes)
    if (const Value& value = object.primitiveValue(key); value.isString())
      index.add(value.stringValue(), object);
}

void ManagedObjectContext::removeFromIndexes(EntityTable& home, const ManagedObject& object) {
  for (auto& [key, index] : home.indexes) {
    if (const Value& value = object.primitiveValue(key); value.isString())
      index.remove(value.stringValue(), object);
  }
}

void ManagedObjectContext::willReplace(ManagedObject& object, int index, const Value& old, const Value& now) {
  if (!object.propertyAt(index).indexed) return;
  AttributeIndex& records = *tableOf(object).indexAt(index);
  if (old.isString()) records.remove(old.stringValue(), object);
  if (now.isString()) records.add(now.stringValue(), object);
}

void ManagedObjectContext::markChanged(ManagedObject& object, int index) {
  hasChanges_ = true;
  // A list of records is kept by its other side, where it has one: a channel is not validated anew for each
  // of its episodes.
  const PropertyDescription& property = object.propertyAt(index);
  if (property.type != PropertyType::ToMany || property.inverse.empty()) markChanged(object);
}

void ManagedObjectContext::markChanged(ManagedObject& object) {
  hasChanges_ = true;
  if (object.isChanged_) return;
  object.isChanged_ = true;
  changed_.emplace_hint(changed_.end(), object.objectID(), &object);
}

ManagedObject* ManagedObjectContext::insertNewObject(std::string_view entityName) {
  const EntityTable* const home = table(entityName);
  if (home == nullptr) return nullptr;
  const std::shared_ptr<ManagedObject> object = home->entity.makeObject();
  object->objectID_ = content_.nextObjectID++;
  const auto& properties = home->entity.properties();
  for (std::size_t i = 0; i < properties.size(); ++i) object->values_[i] = properties[i].defaultValue;
  place(object);
  object->awakeFromInsert();
  if (object->context_ != this) return nullptr;  // it has thought better of it
  observers_.call({ContextChange::Kind::Inserted, object.get()});
  return object.get();
}

void ManagedObjectContext::place(const std::shared_ptr<ManagedObject>& object) {
  EntityTable& home = tableOf(*object);
  object->context_ = this;
  home.objects.emplace_hint(home.objects.end(), object->objectID(), object);
  addToIndexes(home, *object);
  markChanged(*object);
  undoManager_.registerUndo([this, object] { takeOut(*object); });
}

void ManagedObjectContext::putBack(const std::shared_ptr<ManagedObject>& object) {
  place(object);
  observers_.call({ContextChange::Kind::Inserted, object.get()});
}

void ManagedObjectContext::deleteObject(ManagedObject& object) {
  if (object.context_ != this || object.isLeaving_) return;
  const auto kept = object.shared_from_this();
  object.isLeaving_ = true;
  cascade(object);
  takeOut(object);
  object.isLeaving_ = false;
}

void ManagedObjectContext::cascade(ManagedObject& object) {
  const auto& properties = object.entity().properties();
  for (std::size_t i = 0; i < properties.size(); ++i) {
    if (properties[i].deleteRule != DeleteRule::Cascade) continue;
    const int index = static_cast<int>(i);
    // The last first, so that undo, going backwards, appends each at its old place.
    for (;;) {
      ManagedObject* target = object.primitiveValue(index).recordValue();
      if (properties[i].type == PropertyType::ToMany && !object.toMany(index).empty())
        target = object.toMany(index).back();
      if (target == nullptr) break;
      RelationshipChange change;
      change.part(object, index, *target);
      change.apply();
      deleteObject(*target);
    }
  }
}

void ManagedObjectContext::nullify(ManagedObject& object) {
  const auto& properties = object.entity().properties();
  for (std::size_t i = 0; i < properties.size(); ++i) {
    const int index = static_cast<int>(i);
    RelationshipChange change;
    if (ManagedObject* const target = object.primitiveValue(index).recordValue())
      change.part(object, index, *target);
    if (properties[i].type == PropertyType::ToMany) {
      const auto& list = object.toMany(index);
      for (auto target = list.rbegin(); target != list.rend(); ++target) change.part(object, index, **target);
    }
    change.apply();
  }
}

// Relationships without an inverse: their owners have to be looked for.
void ManagedObjectContext::nullifyReferencesTo(ManagedObject& object) {
  RelationshipChange change;
  for (const auto& each : tables_) {
    const auto& properties = each->entity.properties();
    for (std::size_t i = 0; i < properties.size(); ++i) {
      if (properties[i].destination != object.entity().name() || !properties[i].inverse.empty()) continue;
      const int index = static_cast<int>(i);
      for (const auto& [id, owner] : each->objects) {
        bool refers = owner->primitiveValue(index).recordValue() == &object;
        if (properties[i].type == PropertyType::ToMany) {
          const auto& list = owner->toMany(index);
          refers = std::find(list.begin(), list.end(), &object) != list.end();
        }
        if (refers) change.part(*owner, index, object);
      }
    }
  }
  change.apply();
}

void ManagedObjectContext::takeOut(ManagedObject& object) {
  if (object.context_ != this) return;
  const auto kept = object.shared_from_this();
  nullify(object);
  nullifyReferencesTo(object);
  EntityTable& home = tableOf(object);
  removeFromIndexes(home, object);
  home.objects.erase(object.objectID());
  changed_.erase(object.objectID());
  object.isChanged_ = false;
  object.context_ = nullptr;
  hasChanges_ = true;
  undoManager_.registerUndo([this, kept] { putBack(kept); });
  observers_.call({ContextChange::Kind::Deleted, &object});
}

Result<std::vector<ManagedObject*>> ManagedObjectContext::executeFetchRequest(const FetchRequest& request) {
  EntityTable* const home = table(request.entityName);
  if (home == nullptr)
    return cocoaError(
        kFetchRequestError,
        filledIn(localized("Library", "There is no kind of record named “%1”."), {request.entityName}));
  const int key = home->entity.indexOf(request.key);
  if (!request.key.empty() && (key < 0 || home->entity.toManySlot(key) >= 0)) {
    return cocoaError(kFetchRequestError, filledIn(localized("Library", "A %1 cannot be found by “%2”."),
                                                   {request.entityName, request.key}));
  }
  std::vector<ManagedObject*> found;
  const AttributeIndex* const index = key < 0 ? nullptr : home->indexAt(key);
  if (index != nullptr && request.value.isString()) {
    for (const auto& [id, object] : index->find(request.value.stringValue())) found.push_back(object);
  } else {
    for (const auto& [id, object] : home->objects)
      if (key < 0 || object->primitiveValue(key) == request.value) found.push_back(object.get());
  }
  if (request.predicate)
    std::erase_if(found, [&request](ManagedObject* object) { return !request.predicate(*object); });
  return found;
}

ManagedObject* ManagedObjectContext::objectWithID(std::int64_t objectID) const {
  for (const auto& each : tables_)
    if (const auto found = each->objects.find(objectID); found != each->objects.end())
      return found->second.get();
  return nullptr;
}

std::size_t ManagedObjectContext::countOfEntity(std::string_view entityName) const {
  const EntityTable* const home = table(entityName);
  return home == nullptr ? 0 : home->objects.size();
}

const AttributeIndex* ManagedObjectContext::index(std::string_view entityName, std::string_view key) const {
  EntityTable* const home = table(entityName);
  return home == nullptr ? nullptr : home->indexAt(home->entity.indexOf(key));
}

Result<void> ManagedObjectContext::validateForSave() {
  std::vector<std::shared_ptr<ManagedObject>> records;
  for (const auto& [id, object] : changed_) records.push_back(object->shared_from_this());
  std::vector<Error> errors;
  for (const auto& record : records) {
    const auto& properties = record->entity().properties();
    // A validator may take records away.
    for (std::size_t i = 0; i < properties.size() && record->context_ == this; ++i) {
      const PropertyDescription& property = properties[i];
      if (property.storage != Storage::Stored || property.type == PropertyType::ToMany) continue;
      Value proposed = record->values_[i];
      const Validation result = record->validateAt(static_cast<int>(i), proposed);
      if (result.valid) continue;
      errors.push_back(result.error.value_or(
          cocoaError(kKeyValueValidationError, filledIn(localized("Library", "“%1” of a %2 is not valid."),
                                                        {property.name, record->entity().name()}))));
    }
  }
  if (errors.empty()) return {};
  if (errors.size() == 1) return errors.front();
  Error all = cocoaError(kValidationMultipleErrorsError,
                         filledIn(localized("Library", "%1 values of the library are not valid."),
                                  {std::to_string(errors.size())}));
  all.detailedErrors = std::move(errors);
  return all;
}

Result<void> ManagedObjectContext::save() {
  if (!hasChanges_ && coordinator_->fileExists()) return {};
  if (Result<void> valid = validateForSave(); !valid) return valid;
  for (const auto& each : tables_)
    for (const auto& [id, object] : each->objects) content_.objects.push_back(object);
  Result<void> written = coordinator_->write(content_);
  content_.objects.clear();
  content_.objects.shrink_to_fit();
  if (!written) return written;
  for (const auto& [id, object] : changed_) object->isChanged_ = false;
  changed_.clear();
  hasChanges_ = false;
  return {};
}

void ManagedObjectContext::registerEditor(Editor& editor) {
  editors_.push_back(&editor);
}

void ManagedObjectContext::unregisterEditor(Editor& editor) {
  std::erase(editors_, &editor);
}

bool ManagedObjectContext::commitEditing() {
  // An editor may go, or come, while another one commits.
  for (Editor* const editor : std::vector<Editor*>(editors_)) {
    const bool isStillThere = std::find(editors_.begin(), editors_.end(), editor) != editors_.end();
    if (isStillThere && !editor->commitEditing()) return false;
  }
  return true;
}

void ManagedObjectContext::discardEditing() {
  for (Editor* const editor : std::vector<Editor*>(editors_)) {
    if (std::find(editors_.begin(), editors_.end(), editor) != editors_.end()) editor->discardEditing();
  }
}

}  // namespace clipwave
