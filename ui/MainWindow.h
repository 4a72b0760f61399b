// The main window, which remembers which of its two layouts is in force.
#pragma once

#include "platform/appkit/Window.h"

namespace clipwave {

class MainWindow final : public Window {
 public:
  // The simple layout is in force; the window's stored layout is the advanced one.
  bool isSimple() const { return isSimple_; }
  void setIsSimple(bool isSimple) { assign(isSimple_, isSimple); }

 private:
  bool isSimple_ = false;
};

}  // namespace clipwave
