#include "platform/appkit/SelectedValue.h"

#include <utility>

namespace clipwave {

SelectedValue::SelectedValue(ArrayController& controller, std::string key, std::function<void()> changed)
    : controller_(controller),
      key_(std::move(key)),
      changed_(std::move(changed)),
      selectionObservation_(controller.observeSelectedObjects(changed_)),
      valueObservation_(controller.observeSelectedValue(key_, [this] { valueChanged(); })),
      bulkChangeObservation_(controller.observeEndOfBulkChange([this] {
        if (isStale_) valueChanged();
      })) {}

Value SelectedValue::value() const {
  if (!isOfMany()) return controller_.selection().value(key_);
  return findCommon().value_or(Value());
}

bool SelectedValue::differs() const {
  if (!isOfMany()) return controller_.selection().state(key_) == Selection::State::MultipleValues;
  return !findCommon();
}

bool SelectedValue::isOfMany() const {
  return controller_.selectionIndexes().size() > kMany;
}

std::optional<Value> SelectedValue::findCommon() const {
  const auto& records = controller_.arrangedObjects();
  const auto valueOf = [this](ManagedObject& record) {
    const PropertyDescription* property = record.entity().property(key_);
    const bool isStored = property != nullptr && property->storage != Storage::Derived;
    return isStored ? record.primitiveValue(key_) : record.value(key_);
  };
  std::optional<Value> common;
  for (const std::size_t row : controller_.selectionIndexes()) {
    const Value value = valueOf(*records[row]);
    if (!common) common = value;
    if (*common != value) return std::nullopt;
  }
  return common;
}

void SelectedValue::valueChanged() {
  // What many records have in common is found once, not at each one's change.
  isStale_ = controller_.isInBulkChange();
  if (!isStale_) changed_();
}

}  // namespace clipwave
