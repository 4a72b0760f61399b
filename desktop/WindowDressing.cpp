#include "desktop/WindowDressing.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

#include "desktop/ElidedLabel.h"
#include "desktop/SymbolicIcon.h"
#include "desktop/Text.h"

namespace clipwave {
namespace {

constexpr int kSmallestRow = 24;

bool setSymbol(QObject& object) {
  const QString name = propertyText(object, "symbol");
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
  const QString name = propertyText(action, "page");
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
  const QString name = propertyText(bar, "trailingAction");
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

template <class... Kinds>
bool isOneOf(const QWidget& widget) {
  return ((qobject_cast<const Kinds*>(&widget) != nullptr) || ...);
}

// Gives the controls of a window one height, so that the rows of panes side by side stand on one line: that
// of its tallest kind of field, in the font and style there are.
class EvenRows final : public QObject {
 public:
  explicit EvenRows(QWidget& window) : QObject(&window), window_(window) {
    window.installEventFilter(this);
    adjust();
  }
  bool eventFilter(QObject* /*object*/, QEvent* event) override {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
      QMetaObject::invokeMethod(
          this, [this] { adjust(); }, Qt::QueuedConnection);  // the children come later
    return false;
  }

 private:
  void adjust() {
    const QList<QWidget*> widgets = window_.findChildren<QWidget*>();
    int height = kSmallestRow;
    for (const QWidget* widget : widgets) {
      if (!isOneOf<QLineEdit, QComboBox, QAbstractSpinBox>(*widget)) continue;
      widget->ensurePolished();
      height = std::max(height, widget->sizeHint().height());
    }
    for (QWidget* widget : widgets) {
      const bool isInner = isOneOf<QComboBox, QAbstractSpinBox>(*widget->parentWidget());
      if (isInner || !widget->styleSheet().isEmpty()) continue;
      if (isOneOf<QLineEdit, QComboBox, QAbstractSpinBox, QPushButton, QCheckBox, ElidedLabel>(*widget))
        widget->setMinimumHeight(height);
    }
  }

  QWidget& window_;
};

// A wheel that rolls a pane along must not choose something else in the lists that come under the pointer.
class SteadyChoices final : public QObject {
 public:
  explicit SteadyChoices(QWidget& window) : QObject(&window) {
    for (QComboBox* box : window.findChildren<QComboBox*>()) {
      box->setFocusPolicy(Qt::StrongFocus);
      box->installEventFilter(this);
    }
  }
  bool eventFilter(QObject* /*object*/, QEvent* event) override {
    if (event->type() != QEvent::Wheel) return false;
    event->ignore();
    return true;
  }
};

}  // namespace

bool dressWindow(QWidget& window) {
  bool complete = true;
  for (QObject* object : window.findChildren<QObject*>()) {
    complete = setSymbol(*object) && complete;
    if (auto* action = qobject_cast<QAction*>(object)) complete = connectPage(window, *action) && complete;
    // A click on a button leaves the cursor in the entry that is being typed.
    if (auto* button = qobject_cast<QAbstractButton*>(object); button && button->focusPolicy() != Qt::NoFocus)
      button->setFocusPolicy(Qt::TabFocus);
    if (auto* bar = qobject_cast<QToolBar*>(object)) complete = arrangeToolBar(*bar) && complete;
  }
  new EvenRows(window);
  new SteadyChoices(window);
  return complete;
}

}  // namespace clipwave
