// A window that comes and goes: its dialogues, and the wiring of the names that only it knows.
#pragma once

#include <QDialog>
#include <QPointer>
#include <vector>

#include "desktop/InterfaceWiring.h"

namespace clipwave {

// Destroying it takes every widget and mirror away at once; the elements they show may go right after it. The
// dialogues may have gone before, with their parent.
class LoadedWindow {
 public:
  explicit LoadedWindow(InterfaceNames names) : wiring_(std::move(names)) {}
  ~LoadedWindow();
  LoadedWindow(const LoadedWindow&) = delete;
  LoadedWindow& operator=(const LoadedWindow&) = delete;

  InterfaceWiring& wiring() { return wiring_; }
  QDialog& addDialog(QWidget* parent);

 private:
  InterfaceWiring wiring_;
  std::vector<QPointer<QDialog>> dialogs_;
};

}  // namespace clipwave
