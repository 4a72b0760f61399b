// A button that shows the menu attached to it.
#pragma once

#include "platform/appkit/Controls.h"
#include "platform/appkit/Menu.h"

namespace clipwave {

class MenuButton final : public Button {
 public:
  // The menu outlives the button; null for none.
  void setMenu(Menu* menu) { menu_ = menu; }
  Menu* menu() const { return menu_; }

  // The click as any button takes it, then the menu. Nothing happens while the button is disabled.
  void mouseDown() {
    if (!isEnabled()) return;
    performClick();
    if (menu_ != nullptr) menu_->popUpContextMenu(*this);
  }
  // A drag that begins on the button moves nothing.
  void mouseDragged() {}

 private:
  Menu* menu_ = nullptr;
};

}  // namespace clipwave
