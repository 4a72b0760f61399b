#include "platform/coredata/RelationshipChange.h"

#include <algorithm>
#include <set>
#include <utility>

#include "platform/coredata/ManagedObjectContext.h"

namespace clipwave {

void RelationshipChange::join(ManagedObject& object, int index, ManagedObject& other) {
  steps_.push_back({true, object.shared_from_this(), index, other.shared_from_this()});
}

void RelationshipChange::part(ManagedObject& object, int index, ManagedObject& other) {
  steps_.push_back({false, object.shared_from_this(), index, other.shared_from_this()});
}

int RelationshipChange::inverseIndex(const Step& step) {
  return step.other->entity().indexOf(step.object->propertyAt(step.index).inverse);
}

void RelationshipChange::joinSide(ManagedObject& object, int index, ManagedObject& other, std::size_t place) {
  if (object.propertyAt(index).type == PropertyType::ToOne) {
    object.slot(index) = Value(&other);
    return;
  }
  auto& list = object.toMany(index);
  list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(place, list.size())), &other);
}

std::size_t RelationshipChange::partSide(ManagedObject& object, int index, const ManagedObject& other) {
  if (object.propertyAt(index).type == PropertyType::ToOne) {
    object.slot(index) = Value();
    return kAtEnd;
  }
  auto& list = object.toMany(index);
  // From the end: what was added last goes most often, and a cascade takes its records from there.
  const auto found = std::find(list.rbegin(), list.rend(), &other);
  if (found == list.rend()) return kAtEnd;
  const auto place = std::prev(found.base());
  const auto number = static_cast<std::size_t>(place - list.begin());
  list.erase(place);
  return number;
}

void RelationshipChange::carryOut(Step& step) {
  const int inverse = inverseIndex(step);
  if (step.joins) {
    joinSide(*step.object, step.index, *step.other, step.place);
    if (inverse >= 0) joinSide(*step.other, inverse, *step.object, step.inversePlace);
  } else {
    step.place = partSide(*step.object, step.index, *step.other);
    if (inverse >= 0) step.inversePlace = partSide(*step.other, inverse, *step.object);
  }
  ManagedObjectContext& context = *step.object->context_;
  context.markChanged(*step.object, step.index);
  if (inverse >= 0) context.markChanged(*step.other, inverse);
}

RelationshipChange RelationshipChange::reversed() const {
  RelationshipChange change;
  change.steps_.assign(steps_.rbegin(), steps_.rend());
  for (Step& step : change.steps_) step.joins = !step.joins;
  return change;
}

void RelationshipChange::announce() const {
  std::set<std::pair<ManagedObject*, int>> told;
  const auto tell = [&told](ManagedObject& object, int index) {
    if (told.emplace(&object, index).second) object.announce(index);
  };
  for (const Step& step : steps_) {
    tell(*step.object, step.index);
    if (const int inverse = inverseIndex(step); inverse >= 0) tell(*step.other, inverse);
  }
}

void RelationshipChange::apply() {
  if (steps_.empty()) return;
  ManagedObjectContext* const context = steps_.front().object->context_;
  for (const Step& step : steps_)
    if (context == nullptr || step.object->context_ != context || step.other->context_ != context) return;
  for (Step& step : steps_) carryOut(step);
  context->undoManager().registerUndo([change = reversed()]() mutable { change.apply(); });
  announce();
}

}  // namespace clipwave
