#include "platform/appkit/Controls.h"

#include <algorithm>

namespace clipwave {

void TextField::setStringValue(std::string_view text) {
  if (!editing_ && stringValue_ == text) return;
  editing_ = false;
  stringValue_ = text;
  changed();
}

void TextField::edit(std::string_view text) {
  if (stringValue_ == text) return;
  if (!editing_) valueBeforeEditing_ = stringValue_;
  editing_ = true;
  stringValue_ = text;
  changed();
}

bool TextField::commitEditing() {
  if (!editing_) return true;
  if (committing_) return false;
  committing_ = true;
  // A copy: what validator and commit set off may set the field's text anew.
  const std::string proposed = stringValue_;
  const bool accepted = (!validator_ || validator_(*this, proposed)) && (!commit_ || commit_(proposed));
  committing_ = false;
  if (!accepted) return false;
  if (editing_) {
    editing_ = false;
    changed();
  }
  return true;
}

void TextField::discardEditing() {
  if (!editing_) return;
  editing_ = false;
  stringValue_ = valueBeforeEditing_;
  changed();
}

void TextField::setEnabled(bool enabled) {
  if (!enabled) discardEditing();
  Element::setEnabled(enabled);
}

bool PopUpButton::hasItemWithTag(int tag) const {
  return std::any_of(items_.begin(), items_.end(), [tag](const Item& item) { return item.tag == tag; });
}

void PopUpButton::chooseItemWithTag(int tag) {
  if (!isEnabled() || !hasItemWithTag(tag)) return;
  selectItemWithTag(tag);
  if (commit_) commit_(tag);
  if (action_) action_();
}

}  // namespace clipwave
