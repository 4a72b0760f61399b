// Binds a pop-up to a key of a list's selection: shows the common tag, and stores a choice in every selected
// record.
#pragma once

#include <string>

#include "platform/appkit/ArrayController.h"
#include "platform/appkit/Controls.h"
#include "platform/appkit/SelectedValue.h"

namespace clipwave {

// The pop-up and the controller must outlive the binding. Different tags, and a tag that no item has, show as
// no selected item; while no record is selected the pop-up is disabled. A choice is stored before the
// pop-up's action is sent, without validation and as an undo group of its own; as an empty one where every
// record has the tag already, so that the action can undo the choice and nothing else. Edits in fields stay
// pending.
class PopUpBinding {
 public:
  // A choice is named `undoActionName` in the Edit menu.
  PopUpBinding(PopUpButton& popUp, ArrayController& controller, std::string key, std::string undoActionName);
  PopUpBinding(const PopUpBinding&) = delete;
  PopUpBinding& operator=(const PopUpBinding&) = delete;
  ~PopUpBinding() { popUp_.setCommit(nullptr); }

 private:
  void refresh();
  void commit(int tag);

  PopUpButton& popUp_;
  ArrayController& controller_;
  std::string undoActionName_;
  SelectedValue selected_;
};

}  // namespace clipwave
