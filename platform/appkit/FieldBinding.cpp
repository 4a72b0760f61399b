#include "platform/appkit/FieldBinding.h"

#include <utility>

namespace clipwave {
namespace {

std::string textOf(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Boolean:
    case Value::Kind::Integer:
      return std::to_string(value.integerValue());
    default:
      return std::string(value.stringValue());
  }
}

}  // namespace

FieldBinding::FieldBinding(TextField& field, ArrayController& controller, std::string key,
                           std::function<void(const Error&)> presentError)
    : field_(field),
      controller_(controller),
      key_(std::move(key)),
      presentError_(std::move(presentError)),
      selectionObservation_(controller.observeSelectedObjects([this] { selectionChanged(); })),
      fieldObservation_(field.observe([this] { fieldChanged(); })),
      bulkChangeObservation_(controller.observeEndOfBulkChange([this] {
        if (stale_) valueChanged();
      })) {
  field_.setCommit([this](std::string_view text) { return commit(text); });
  selectionChanged();
}

FieldBinding::~FieldBinding() {
  field_.setCommit(nullptr);
  if (registered_) controller_.objectDidEndEditing(*this);
}

void FieldBinding::selectionChanged() {
  valueObservations_.clear();
  for (ManagedObject* record : controller_.selectedObjects()) {
    valueObservations_.push_back(record->observe(key_, [this] { valueChanged(); }));
  }
  refresh();
}

void FieldBinding::valueChanged() {
  // What many records have in common is found once, not at each one's change.
  if (controller_.isInBulkChange()) {
    stale_ = true;
  } else {
    refresh();
  }
}

void FieldBinding::fieldChanged() {
  if (field_.isEditing() == registered_) return;
  registered_ = field_.isEditing();
  if (registered_) {
    controller_.objectDidBeginEditing(*this);
  } else {
    controller_.objectDidEndEditing(*this);
    // The value as it is stored: a validator may have changed the text, or the edit was dropped.
    refresh();
  }
}

void FieldBinding::refresh() {
  if (field_.isEditing()) return;
  stale_ = false;
  field_.setStringValue(textOf(controller_.selection().value(key_)));
}

bool FieldBinding::commit(std::string_view text) {
  const Validation answer = controller_.selection().commitValue(key_, text.empty() ? Value() : Value(text));
  if (!answer.valid && answer.error && presentError_) presentError_(*answer.error);
  return answer.valid;
}

}  // namespace clipwave
