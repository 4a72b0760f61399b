#include "desktop/WindowMirror.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollArea>
#include <QTabWidget>
#include <QTimer>

#include "desktop/Text.h"

namespace clipwave {

void reveal(QWidget& widget) {
  for (QWidget* around = widget.parentWidget(); around != nullptr; around = around->parentWidget()) {
    if (auto* tabs = qobject_cast<QTabWidget*>(around)) {
      for (int page = 0; page < tabs->count(); ++page)
        if (tabs->widget(page)->isAncestorOf(&widget)) tabs->setCurrentIndex(page);
    } else if (auto* scroll = qobject_cast<QScrollArea*>(around)) {
      scroll->ensureWidgetVisible(&widget);
    }
  }
}

WindowMirror::WindowMirror(QWidget& widget, Window& window)
    : QObject(&widget),
      widget_(widget),
      window_(window),
      shownResponder_(window.firstResponder()),
      observation_(window.observe([this] { windowChanged(); })) {
  widget_.installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { focusMoved(now); });
  windowChanged();
}

void WindowMirror::addResponder(QWidget& widget, Responder& responder) {
  responders_[&widget] = &responder;
  widgets_[&responder] = &widget;
  connect(&widget, &QObject::destroyed, this, [this, gone = &widget, &responder] {
    responders_.erase(gone);
    widgets_.erase(&responder);
  });
  if (window_.firstResponder() == &responder) followFirstResponder();
}

void WindowMirror::windowChanged() {
  if (!window_.title().empty()) widget_.setWindowTitle(toQString(window_.title()));
  if (window_.isVisible() != widget_.isVisible()) {
    if (window_.isVisible()) {
      widget_.show();
    } else {
      const QWidget* active = QApplication::activeWindow();
      widget_.hide();
      if (QWidget* parent = widget_.parentWidget()) {
        // What comes next may block: the window underneath has to be whole by then.
        parent->window()->repaint();
        // Not every desktop gives the keyboard back to the window that a sheet stood on.
        if (active == nullptr || active == &widget_) parent->activateWindow();
      }
    }
  }
  if (window_.isKeyWindow() && !widget_.isActiveWindow()) bringToFront();
  if (window_.firstResponder() != shownResponder_) followFirstResponder();
}

void WindowMirror::bringToFront() {
  // The newest window is in front anyway; not every display can raise one.
  if (hasBeenActive_) widget_.raise();
  widget_.activateWindow();
}

bool WindowMirror::eventFilter(QObject* object, QEvent* event) {
  if (object != &widget_) return false;
  if (event->type() == QEvent::WindowActivate) {
    hasBeenActive_ = true;
    if (window_.isVisible()) window_.makeKeyAndOrderFront();
    return false;
  }
  if (event->type() == QEvent::WindowDeactivate) {
    window_.resignKeyWindow();
    return false;
  }
  const bool isEscape = event->type() == QEvent::KeyPress &&
                        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
                        widget_.inherits("QDialog");
  if (event->type() != QEvent::Close && !isEscape) return false;
  event->ignore();
  if (closeRequest_) closeRequest_();
  return true;
}

Responder* WindowMirror::responderOf(QWidget* widget) const {
  for (; widget != nullptr && widget != &widget_; widget = widget->parentWidget()) {
    const auto found = responders_.find(widget);
    if (found != responders_.end()) return found->second;
  }
  return nullptr;
}

void WindowMirror::focusMoved(QWidget* now) {
  // Another window, a menu or a list of choices: an edit in progress stays as it is.
  if (now == nullptr || now->window() != &widget_) return;
  Responder* responder = responderOf(now);
  shownResponder_ = responder != nullptr ? responder : &window_;
  if (window_.makeFirstResponder(shownResponder_)) return;
  // Refused: the cursor goes back to the entry that is not acceptable yet.
  QTimer::singleShot(0, this, [this] { showFirstResponder(); });
}

void WindowMirror::showFirstResponder() {
  const auto found = widgets_.find(window_.firstResponder());
  if (found == widgets_.end()) return;
  reveal(*found->second);
  found->second->setFocus();
}

void WindowMirror::followFirstResponder() {
  shownResponder_ = window_.firstResponder();
  const auto found = widgets_.find(shownResponder_);
  if (found == widgets_.end()) {
    if (QWidget* focused = widget_.focusWidget(); focused != nullptr && responderOf(focused) != nullptr)
      focused->clearFocus();
    return;
  }
  QWidget& target = *found->second;
  if (target.hasFocus()) return;
  reveal(target);
  target.setFocus();
  if (auto* line = qobject_cast<QLineEdit*>(&target)) line->selectAll();
}

}  // namespace clipwave
