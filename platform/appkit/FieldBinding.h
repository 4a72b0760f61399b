// Binds a text field to a key of a list's selection: shows the common value, and commits an edit to every
// selected record.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/appkit/ArrayController.h"
#include "platform/appkit/Controls.h"

namespace clipwave {

// The field and the controller must outlive the binding. While the field is being edited it is an editor of
// the controller: commitEditing validates the text and sets it; an empty text sets the absent value. A
// refusal with an error hands the error to `presentError`, and the field stays in editing.
class FieldBinding : public Editor {
 public:
  FieldBinding(TextField& field, ArrayController& controller, std::string key,
               std::function<void(const Error&)> presentError);
  ~FieldBinding() override;

  bool commitEditing() override { return field_.commitEditing(); }
  void discardEditing() override { field_.discardEditing(); }

 private:
  void refresh();
  bool commit(std::string_view text);

  TextField& field_;
  ArrayController& controller_;
  std::string key_;
  std::function<void(const Error&)> presentError_;
  bool registered_ = false;
  Observation selectionObservation_;
  Observation fieldObservation_;
  std::vector<Observation> valueObservations_;
};

}  // namespace clipwave
