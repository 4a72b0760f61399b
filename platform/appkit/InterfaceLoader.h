// Loads the windows that are made on first use from their interface files.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/appkit/Window.h"

namespace clipwave {

// Owns a window that was loaded from an interface file, and what shows it.
class WindowController {
 public:
  explicit WindowController(std::string windowNibName) : windowNibName_(std::move(windowNibName)) {}
  virtual ~WindowController() = default;
  const std::string& windowNibName() const { return windowNibName_; }
  Window& window() { return window_; }

  // What shows the window's elements, kept with them. A subclass with elements of its own drops it before
  // they go.
  void setInterface(std::shared_ptr<void> interface) { interface_ = std::move(interface); }
  void dropInterface() { interface_.reset(); }

 private:
  std::string windowNibName_;
  Window window_;
  std::shared_ptr<void> interface_;
};

class InterfaceLoader {
 public:
  virtual ~InterfaceLoader() = default;
  // Attaches the interface file of the controller's name to its window. Without a display there is nothing to
  // attach: the window is state.
  virtual void loadWindow(WindowController& controller) = 0;
};

// For processes without a display.
class StateOnlyInterfaceLoader final : public InterfaceLoader {
 public:
  void loadWindow(WindowController&) override {}
};

}  // namespace clipwave
