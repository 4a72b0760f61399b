// Mirrors that show a button's menu and the menu's entries.
#pragma once

#include <QObject>

#include "record/MenuButton.h"

class QAction;
class QMenu;
class QPushButton;

namespace clipwave {

// Lives with the widget, whose own actions are the menu's entries; one with the property "startsGroup" has a
// line above it. Before it is shown, each entry is asked whether it can be chosen.
class MenuButtonMirror final : public QObject {
  Q_OBJECT
 public:
  MenuButtonMirror(QPushButton& widget, MenuButton& button);

 private:
  void willShow();
  void poppedUp(Element& view);

  QPushButton& widget_;
  MenuButton& button_;
  QMenu* menu_;
  bool isShowing_ = false;  // as the user wants it
  Observation observation_;
  Observation popUpObservation_;
};

// Lives with the entry.
class MenuItemMirror final : public QObject {
  Q_OBJECT
 public:
  MenuItemMirror(QAction& entry, MenuItem& item);

 private:
  Observation observation_;
};

}  // namespace clipwave
