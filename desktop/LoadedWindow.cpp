#include "desktop/LoadedWindow.h"

#include "desktop/WindowMirror.h"

namespace clipwave {

LoadedWindow::~LoadedWindow() {
  for (; !dialogs_.empty(); dialogs_.pop_back()) {
    if (dialogs_.back() == nullptr) continue;
    // A dialogue that goes moves the focus, which its mirror would follow.
    delete dialogs_.back()->findChild<WindowMirror*>(QString(), Qt::FindDirectChildrenOnly);
    delete dialogs_.back().data();
  }
}

QDialog& LoadedWindow::addDialog(QWidget* parent) {
  dialogs_.emplace_back(new QDialog(parent));
  return *dialogs_.back();
}

}  // namespace clipwave
