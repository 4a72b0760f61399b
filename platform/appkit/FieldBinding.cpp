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
      presentError_(std::move(presentError)),
      selected_(controller, std::move(key), [this] { refresh(); }),
      fieldObservation_(field.observe([this] { fieldChanged(); })) {
  field_.setCommit([this](std::string_view text) { return commit(text); });
  refresh();
}

FieldBinding::~FieldBinding() {
  field_.setCommit(nullptr);
  if (registered_) controller_.objectDidEndEditing(*this);
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
  field_.setStringValue(textOf(selected_.value()));
  field_.setStandsForSeveral(selected_.differs());
}

bool FieldBinding::commit(std::string_view text) {
  const Validation answer = selected_.commit(text.empty() ? Value() : Value(text));
  if (answer.valid) controller_.setUndoActionName(undoActionName_);
  if (!answer.valid && answer.error && presentError_) presentError_(*answer.error);
  return answer.valid;
}

}  // namespace clipwave
