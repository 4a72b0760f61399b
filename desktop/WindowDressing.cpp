#include "desktop/WindowDressing.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

#include "desktop/SymbolicIcon.h"

namespace clipwave {
namespace {

QString textOf(const QObject& object, const char* property) {
  return object.property(property).toString();
}

bool setSymbol(QObject& object) {
  const QString name = textOf(object, "symbol");
  if (name.isEmpty()) return true;
  const QIcon icon = imageNamed(name);
  if (auto* action = qobject_cast<QAction*>(&object)) {
    action->setIcon(icon);
  } else if (auto* menu = qobject_cast<QMenu*>(&object)) {
    menu->setIcon(icon);
  } else if (auto* button = qobject_cast<QAbstractButton*>(&object)) {
    button->setIcon(icon);
    if (qobject_cast<QToolButton*>(button)) button->setText({});
  } else if (auto* label = qobject_cast<QLabel*>(&object)) {
    label->setPixmap(icon.pixmap(label->minimumSize(), label->devicePixelRatioF()));
  }
  return !icon.isNull();
}

bool connectPage(QWidget& window, QAction& action) {
  const QString name = textOf(action, "page");
  if (name.isEmpty()) return true;
  for (auto* tabs : window.findChildren<QTabWidget*>()) {
    auto* page = window.findChild<QWidget*>(name);
    if (tabs->indexOf(page) < 0) continue;
    QObject::connect(&action, &QAction::triggered, tabs, [tabs, page] { tabs->setCurrentWidget(page); });
    return true;
  }
  return false;
}

bool arrangeToolBar(QToolBar& bar) {
  for (QAction* action : bar.actions()) {
    auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(action));
    if (button && action->menu()) button->setPopupMode(QToolButton::InstantPopup);
  }
  const QString name = textOf(bar, "trailingAction");
  if (name.isEmpty()) return true;
  for (QAction* action : bar.actions()) {
    if (action->objectName() != name) continue;
    auto* gap = new QWidget(&bar);
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar.insertWidget(action, gap);
    return true;
  }
  return false;
}

}  // namespace

bool dressWindow(QWidget& window) {
  bool complete = true;
  for (QObject* object : window.findChildren<QObject*>()) {
    complete = setSymbol(*object) && complete;
    if (auto* action = qobject_cast<QAction*>(object)) complete = connectPage(window, *action) && complete;
    if (auto* bar = qobject_cast<QToolBar*>(object)) complete = arrangeToolBar(*bar) && complete;
  }
  return complete;
}

}  // namespace clipwave
