// A menu that pops up from a button or a view, and its entries.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/Element.h"

namespace clipwave {

class MenuItem : public Element {
 public:
  using Target = std::function<void(MenuItem& sender)>;

  // The action is the operation's name with its colons ("goHalfSize:"); the tag tells entries of one action
  // apart. What is shown as its title, the interface file says.
  explicit MenuItem(std::string action, int tag = 0) : action_(std::move(action)), tag_(tag) {}

  const std::string& action() const { return action_; }
  int tag() const { return tag_; }
  // Whether a check mark stands before it.
  bool isOn() const { return on_; }
  void setOn(bool on) { assign(on_, on); }
  void setTarget(Target target) { target_ = std::move(target); }
  // The user's choice; nothing happens while the entry is disabled.
  void perform() {
    if (isEnabled() && target_) target_(*this);
  }

 private:
  std::string action_;
  int tag_;
  bool on_ = false;
  Target target_;
};

class Menu {
 public:
  // Asked for each entry whether it can be chosen (the target's validateMenuItem:).
  using Validator = std::function<bool(const MenuItem&)>;

  // The items stay whose they are, and outlive the menu.
  void addItem(MenuItem& item) { items_.push_back(&item); }
  const std::vector<MenuItem*>& items() const { return items_; }
  // The first one of that action and tag; null for none.
  MenuItem* item(std::string_view action, int tag) const;
  void setValidator(Validator validator) { validator_ = std::move(validator); }

  // Asks the validator about every entry, then pops up at `view` as a context menu: who mirrors the menu
  // shows it there.
  void popUpContextMenu(Element& view);
  Observation observePopUps(std::function<void(Element& view)> function) {
    return popUps_.add(std::move(function));
  }

 private:
  void update();

  std::vector<MenuItem*> items_;
  Validator validator_;
  Observers<Element&> popUps_;
};

}  // namespace clipwave
