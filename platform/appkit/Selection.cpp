#include "platform/appkit/ArrayController.h"

namespace clipwave {

Value Selection::value(std::string_view key) const {
  const std::vector<ManagedObject*> selected = controller_.selectedObjects();
  if (selected.empty()) return {};
  Value common = selected.front()->value(key);
  for (std::size_t i = 1; i < selected.size(); ++i) {
    if (selected[i]->value(key) != common) return {};
  }
  return common;
}

Selection::State Selection::state(std::string_view key) const {
  const std::vector<ManagedObject*> selected = controller_.selectedObjects();
  if (selected.empty()) return State::None;
  if (selected.size() == 1) return State::Single;
  const Value first = selected.front()->value(key);
  for (std::size_t i = 1; i < selected.size(); ++i) {
    if (selected[i]->value(key) != first) return State::MultipleValues;
  }
  return State::SameValue;
}

// What one record's change sets off may take another out of the list.
template <class Function>
void Selection::forEachInBulk(const Function& function) {
  ++controller_.bulkChanges_;
  for (ManagedObject* record : controller_.selectedObjects())
    if (controller_.current().members_.contains(record) && !function(*record)) break;
  --controller_.bulkChanges_;
  controller_.endBulkChange();
}

void Selection::setValue(std::string_view key, const Value& value) {
  forEachInBulk([&](ManagedObject& record) {
    record.setValue(key, value);
    return true;
  });
}

void Selection::changeValues(std::string_view key, const std::function<Value(const Value&)>& next) {
  forEachInBulk([&](ManagedObject& record) {
    record.setValue(key, next(record.value(key)));
    return true;
  });
}

Validation Selection::commitValue(std::string_view key, const Value& value) {
  Validation answer = Validation::ok();
  forEachInBulk([&](ManagedObject& record) {
    answer = record.commitValue(key, value);
    return answer.valid;
  });
  return answer;
}

}  // namespace clipwave
