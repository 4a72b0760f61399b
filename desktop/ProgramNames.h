// The names in the interface files, and what of the program each of them stands for.
#pragma once

#include "app/ClipwaveProgram.h"
#include "app/Preferences.h"
#include "desktop/InterfaceNames.h"

namespace clipwave {

// What only the desktop can do.
struct DesktopActions {
  std::function<void()> quit;
  std::function<void(const std::string& message)> tell;  // a passing word in the status bar
};

// Both must outlive what is made of the names.
InterfaceNames namesOfProgram(ClipwaveProgram& program, Preferences& preferences,
                              const DesktopActions& desktop);

}  // namespace clipwave
