// Remembers a window's place, its size and its dividers from one start to the next.
#pragma once

#include <string>

#include "platform/foundation/UserDefaultsController.h"

class QMainWindow;

namespace clipwave {

class WindowMemory {
 public:
  // Both must outlive it.
  WindowMemory(QMainWindow& window, UserDefaultsController& defaults)
      : window_(window), defaults_(defaults) {}

  // As it was when it was kept last; without that, as its interface file says. What lies outside the screens
  // that there are now is brought back in.
  void restore();
  void keep();

 private:
  QMainWindow& window_;
  UserDefaultsController& defaults_;
};

}  // namespace clipwave
