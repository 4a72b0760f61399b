// The lower half of the main window: a band of controls, the lower view that can cover it, the publish strip.
#pragma once

#include <QWidget>

#include "platform/appkit/Element.h"

namespace clipwave {

// Places its children "band", "lowerView" and "publishStrip". The strip stands at the bottom and the band at
// the top, both of a fixed height; the lower view is where the state's frame says.
class LowerArea final : public QWidget {
  Q_OBJECT

 public:
  explicit LowerArea(QWidget* parent = nullptr) : QWidget(parent) {}
  // Mirrors the frame of `lowerView` both ways from now on: a frame set there moves the widget, and the
  // height of this area decides the frame's. A frame that reaches over the band covers it. To be called while
  // the band is free; `lowerView` must outlive this widget.
  void attach(View& lowerView);
  // A band that is covered is out of the reach of the keyboard and of assistive technology.
  bool coversBand() const { return coversBand_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QWidget* part(const char* name) const;
  int freeViewHeight() const;  // while the band is free
  void areaChanged();
  void frameChanged();
  void place(const Rect& frame);

  View* lowerView_ = nullptr;
  Observation observation_;
  bool coversBand_ = false;
};

}  // namespace clipwave
