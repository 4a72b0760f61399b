#include "platform/coredata/ManagedObject.h"

#include <algorithm>
#include <limits>
#include <map>

#include "platform/coredata/ManagedObjectContext.h"
#include "platform/coredata/RelationshipChange.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

const Value kAbsent{};
const std::vector<ManagedObject*> kNoObjects{};

bool isRelationship(const PropertyDescription& property) {
  return property.type == PropertyType::ToOne || property.type == PropertyType::ToMany;
}

bool fits(const PropertyDescription& property, const Value& value) {
  switch (property.type) {
    case PropertyType::String:
      return value.kind() == Value::Kind::String;
    case PropertyType::Date:
      return value.kind() == Value::Kind::Date;
    case PropertyType::Boolean:
      return value.kind() == Value::Kind::Boolean;
    case PropertyType::Integer32:
      return value.kind() == Value::Kind::Integer &&
             value.integerValue() >= std::numeric_limits<std::int32_t>::min() &&
             value.integerValue() <= std::numeric_limits<std::int32_t>::max();
    case PropertyType::Binary:
      return value.kind() == Value::Kind::Data;
    case PropertyType::Handle:
      return value.kind() == Value::Kind::Handle;
    case PropertyType::ToOne:
      return value.recordValue() != nullptr && value.recordValue()->entity().name() == property.destination;
    case PropertyType::ToMany:
      return false;
  }
  return false;
}

}  // namespace

struct ManagedObject::ObserverTable {
  std::map<int, Observers<>> byKey;
};

ManagedObject::ManagedObject(const EntityDescription& entity)
    : entity_(&entity),
      values_(std::make_unique<Value[]>(entity.properties().size())),
      toMany_(entity.toManyCount() == 0 ? nullptr
                                        : std::make_unique<std::vector<ManagedObject*>[]>(
                                              static_cast<std::size_t>(entity.toManyCount()))) {}

ManagedObject::~ManagedObject() = default;

Value ManagedObject::value(std::string_view key) {
  const int index = entity_->indexOf(key);
  return index < 0 ? Value() : valueAt(index);
}

Value ManagedObject::valueAt(int index) {
  const PropertyDescription& property = propertyAt(index);
  if (property.getter != nullptr) return property.getter(*this);
  if (property.type != PropertyType::ToMany) return primitiveValue(index);
  const auto& objects = toMany(index);
  return Array(objects.begin(), objects.end());
}

bool ManagedObject::setValue(std::string_view key, const Value& value) {
  const int index = entity_->indexOf(key);
  if (index < 0) return false;
  const PropertyDescription& property = propertyAt(index);
  if (property.setter != nullptr) {
    property.setter(*this, value);
    return true;
  }
  if (property.storage == Storage::Derived || property.type == PropertyType::ToMany) return false;
  if (property.type == PropertyType::ToOne) {
    if (!value.isNull() && !fits(property, value)) return false;
    return setRelatedObject(index, value.recordValue());
  }
  store(index, value, ChangeKind::Edit, true);
  return true;
}

Validation ManagedObject::checkType(int index, const Value& value) const {
  const PropertyDescription& property = propertyAt(index);
  if (value.isNull() || fits(property, value)) return Validation::ok();
  return Validation::refused(
      cocoaError(kKeyValueValidationError,
                 filledIn(localized("Library", "“%1” of a %2 cannot hold a value of this type."),
                          {property.name, entity_->name()})));
}

Validation ManagedObject::validateValue(std::string_view key, Value& proposed) {
  const int index = entity_->indexOf(key);
  if (index < 0) {
    return Validation::refused(
        cocoaError(kKeyValueValidationError,
                   filledIn(localized("Library", "A %1 has no “%2”."), {entity_->name(), key})));
  }
  return validateAt(index, proposed);
}

Validation ManagedObject::validateAt(int index, Value& proposed) {
  // Before the validator, which may then rely on the type, and after it, since it may have put another value.
  Validation result = checkType(index, proposed);
  const PropertyDescription& property = propertyAt(index);
  if (!result.valid || property.validator == nullptr) return result;
  result = property.validator(*this, proposed);
  return result.valid ? checkType(index, proposed) : result;
}

Validation ManagedObject::commitValue(std::string_view key, Value proposed) {
  Validation result = validateValue(key, proposed);
  if (result.valid) setValue(key, proposed);
  return result;
}

const Value& ManagedObject::primitiveValue(std::string_view key) const {
  const int index = entity_->indexOf(key);
  return index < 0 ? kAbsent : primitiveValue(index);
}

void ManagedObject::setPrimitiveValue(std::string_view key, Value value, ChangeKind kind, bool announced) {
  const int index = entity_->indexOf(key);
  if (index < 0) return;
  const PropertyDescription& property = propertyAt(index);
  if (!isRelationship(property)) {
    store(index, std::move(value), kind, announced);
  } else if (property.type == PropertyType::ToOne && (value.isNull() || fits(property, value))) {
    setRelatedObject(index, value.recordValue());
  }
}

// The one place where an attribute of a record changes, undo and redo included.
void ManagedObject::store(int index, Value value, ChangeKind kind, bool announced) {
  Value& place = slot(index);
  if (place != value) {
    if (context_ != nullptr) {
      context_->willReplace(*this, index, place, value);
      if (kind != ChangeKind::Unrecorded) context_->markChanged(*this, index);
      if (kind == ChangeKind::Edit) {
        context_->undoManager().registerUndo([object = shared_from_this(), index, old = place] {
          object->store(index, old, ChangeKind::Edit, true);
        });
      }
    }
    place = std::move(value);
  }
  if (announced) announce(index);
}

void ManagedObject::didChangeValue(std::string_view key) {
  if (const int index = entity_->indexOf(key); index >= 0) announce(index);
}

void ManagedObject::announce(int index) {
  const bool contextListens = context_ != nullptr && !context_->observers_.empty();
  if (!observers_ && !contextListens) return;
  const auto keptAlive = weak_from_this().lock();
  const auto tell = [this](int key) {
    if (const auto found = observers_->byKey.find(key); found != observers_->byKey.end())
      found->second.call();
  };
  if (observers_) {
    tell(index);
    for (const int dependent : entity_->dependentsOf(index)) tell(dependent);
  }
  if (context_ != nullptr) context_->observers_.call({ContextChange::Kind::ValueChanged, this, index});
}

Observation ManagedObject::observe(std::string_view key, std::function<void()> function) {
  const int index = entity_->indexOf(key);
  if (index < 0) return {};
  if (!observers_) observers_ = std::make_unique<ObserverTable>();
  return observers_->byKey[index].add(std::move(function));
}

ManagedObject* ManagedObject::relatedObject(std::string_view toOneKey) const {
  return primitiveValue(toOneKey).recordValue();
}

const std::vector<ManagedObject*>& ManagedObject::relatedObjects(std::string_view toManyKey) const {
  const int index = entity_->indexOf(toManyKey);
  return index < 0 || entity_->toManySlot(index) < 0 ? kNoObjects : toMany(index);
}

bool ManagedObject::setRelatedObject(int index, ManagedObject* object) {
  if (context_ == nullptr || (object != nullptr && object->context_ != context_)) return false;
  ManagedObject* const old = primitiveValue(index).recordValue();
  if (old == object) {
    announce(index);
    return true;
  }
  RelationshipChange change;
  if (old != nullptr) change.part(*this, index, *old);
  if (object != nullptr) {
    // A one-to-one partner leaves the record that it had.
    const int inverse = object->entity().indexOf(propertyAt(index).inverse);
    ManagedObject* const rival = inverse < 0 ? nullptr : object->primitiveValue(inverse).recordValue();
    if (rival != nullptr) change.part(*object, inverse, *rival);
    change.join(*this, index, *object);
  }
  change.apply();
  return true;
}

void ManagedObject::addObject(ManagedObject& object, std::string_view toManyKey) {
  const int index = entity_->indexOf(toManyKey);
  if (index < 0 || entity_->toManySlot(index) < 0) return;
  const PropertyDescription& property = propertyAt(index);
  if (object.entity().name() != property.destination) return;
  const int inverse = object.entity().indexOf(property.inverse);
  RelationshipChange change;
  if (inverse >= 0 && object.propertyAt(inverse).type == PropertyType::ToOne) {
    ManagedObject* const owner = object.primitiveValue(inverse).recordValue();
    if (owner == this) return;
    if (owner != nullptr) change.part(object, inverse, *owner);
  } else if (const auto& list = toMany(index); std::find(list.begin(), list.end(), &object) != list.end()) {
    return;
  }
  change.join(*this, index, object);
  change.apply();
}

void ManagedObject::removeObject(ManagedObject& object, std::string_view toManyKey) {
  const auto& list = relatedObjects(toManyKey);
  if (std::find(list.rbegin(), list.rend(), &object) == list.rend()) return;
  RelationshipChange change;
  change.part(*this, entity_->indexOf(toManyKey), object);
  change.apply();
}

}  // namespace clipwave
