// Binds a text field to a key of a list's selection: shows the common value, and commits an edit to every
// selected record.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/appkit/ArrayController.h"
#include "platform/appkit/Controls.h"
#include "platform/appkit/SelectedValue.h"

namespace clipwave {

// The field and the controller must outlive the binding. While the field is being edited it is an editor of
// the controller: commitEditing validates the text and sets it; an empty text sets the absent value. A
// refusal with an error hands the error to `presentError` (which may be empty), and the field stays in
// editing. Values that change meanwhile do not disturb the edit. Several different values show as "", and the
// field says so.
class FieldBinding : public Editor {
 public:
  FieldBinding(TextField& field, ArrayController& controller, std::string key,
               std::function<void(const Error&)> presentError);
  FieldBinding(const FieldBinding&) = delete;
  FieldBinding& operator=(const FieldBinding&) = delete;
  ~FieldBinding() override;

  // Names a committed edit in the Edit menu.
  void setUndoActionName(std::string name) { undoActionName_ = std::move(name); }

  bool commitEditing() override { return field_.commitEditing(); }
  void discardEditing() override { field_.discardEditing(); }

 private:
  void fieldChanged();
  void refresh();
  bool commit(std::string_view text);

  TextField& field_;
  ArrayController& controller_;
  std::function<void(const Error&)> presentError_;
  std::string undoActionName_;
  bool registered_ = false;  // as an editor of the controller
  SelectedValue selected_;
  Observation fieldObservation_;
};

}  // namespace clipwave
