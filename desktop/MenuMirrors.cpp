#include "desktop/MenuMirrors.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QScopedValueRollback>

namespace clipwave {

MenuButtonMirror::MenuButtonMirror(QPushButton& widget, MenuButton& button)
    : QObject(&widget), widget_(widget), button_(button), menu_(new QMenu(&widget)) {
  for (QAction* entry : widget.actions()) {
    if (entry->property("startsGroup").toBool()) menu_->addSeparator();
    menu_->addAction(entry);
  }
  widget.setMenu(menu_);
  connect(menu_, &QMenu::aboutToShow, this, [this] { willShow(); });
  const auto show = [this] {
    widget_.setEnabled(button_.isEnabled());
    widget_.setHidden(button_.isHidden());
  };
  observation_ = button.observe(show);
  if (button.menu() != nullptr)
    popUpObservation_ = button.menu()->observePopUps([this](Element& view) { poppedUp(view); });
  show();
}

// The desktop's own way of opening the menu of a button is the click that the button waits for.
void MenuButtonMirror::willShow() {
  if (isShowing_) return;
  const QScopedValueRollback showing(isShowing_, true);
  button_.mouseDown();
}

void MenuButtonMirror::poppedUp(Element& view) {
  if (&view != &button_) return;
  if (isShowing_) return;
  const QScopedValueRollback showing(isShowing_, true);
  widget_.showMenu();
}

MenuItemMirror::MenuItemMirror(QAction& entry, MenuItem& item) : QObject(&entry) {
  const auto show = [&entry, &item] {
    entry.setEnabled(item.isEnabled());
    entry.setVisible(!item.isHidden());
    if (entry.isCheckable()) entry.setChecked(item.isOn());
  };
  observation_ = item.observe(show);
  connect(&entry, &QAction::triggered, this, [&item, show] {
    item.perform();
    // The entry has changed its own mark already; the program's counts.
    show();
  });
  show();
}

}  // namespace clipwave
