// Shows a window's state in a top-level widget: visibility, title, and who has the keyboard focus.
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <map>

#include "platform/appkit/Window.h"

namespace clipwave {

// Lives with its widget; the window must outlive it. How modal the window is, its widget says: a sheet's is a
// dialogue on the main window, modal for that one alone.
class WindowMirror final : public QObject {
  Q_OBJECT

 public:
  WindowMirror(QWidget& widget, Window& window);

  Window& window() { return window_; }
  QWidget& widget() { return widget_; }
  // Called when the user closes the window; without it, it stays open.
  void setCloseRequest(std::function<void()> request) { closeRequest_ = std::move(request); }
  // Brings the entry that has the keyboard focus in sight: one that is not acceptable keeps it, also while
  // another page is shown.
  void showFirstResponder();
  // The widget and what it shows have the keyboard focus together.
  void addResponder(QWidget& widget, Responder& responder);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void windowChanged();
  void bringToFront();
  void focusMoved(QWidget* now);
  void followFirstResponder();
  Responder* responderOf(QWidget* widget) const;

  QWidget& widget_;
  Window& window_;
  std::function<void()> closeRequest_;
  std::map<QWidget*, Responder*> responders_;
  std::map<Responder*, QWidget*> widgets_;
  Responder* shownResponder_;
  bool hasBeenActive_ = false;
  Observation observation_;
};

// Brings a widget in sight: the tab pages and scroll areas around it show it.
void reveal(QWidget& widget);

}  // namespace clipwave
