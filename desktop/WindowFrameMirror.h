// Keeps a window's frame and what is measured around it in step with its top-level widget.
#pragma once

#include <QMargins>
#include <QObject>
#include <QRect>

#include "platform/appkit/Window.h"

class QWidget;

namespace clipwave {

// Lives with its widget; the window must outlive it. The user's moves and resizes become the state's frame; a
// frame that the program sets moves and resizes the widget, as far as the screen has room for it, around the
// same centre. Decorations, smallest content and the content view follow the widget.
class WindowFrameMirror final : public QObject {
  Q_OBJECT

 public:
  WindowFrameMirror(QWidget& widget, Window& window);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void widgetChanged();
  void windowChanged();
  void place(const Rect& frame);
  void center();
  QMargins decorations() const;
  QRect frameGeometry() const;
  QRect room() const;

  QWidget& widget_;
  Window& window_;
  Rect shownFrame_;
  int shownCenterCount_;
  Observation observation_;
};

}  // namespace clipwave
