// The live picture of a capture: the newest image of an image view, on black.
#pragma once

#include <QImage>
#include <QWidget>
#include <memory>

#include "platform/appkit/ImageView.h"

namespace clipwave {

class LivePicture final : public QWidget {
  Q_OBJECT

 public:
  explicit LivePicture(QWidget* parent = nullptr);

  // The widget shows the view's image in its own size, one pixel of it to each of the window's, and keeps the
  // view's frame; an image that is larger than the widget is shown smaller. The view must outlive the widget.
  void attach(ImageView& view);
  // How often it was painted.
  int paintCount() const { return paintCount_; }

  QSize sizeHint() const override { return {320, 240}; }
  QSize minimumSizeHint() const override { return {320, 120}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void imageChanged();
  void frameChanged();

  ImageView* view_ = nullptr;
  std::shared_ptr<const Bitmap> bitmap_;
  QImage image_;  // of the bitmap's own bytes
  int paintCount_ = 0;
  Observation observation_;
};

}  // namespace clipwave
