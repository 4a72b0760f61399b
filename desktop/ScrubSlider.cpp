#include "desktop/ScrubSlider.h"

#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionSlider>

namespace clipwave {

ScrubSlider::ScrubSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {}

// The handle is brought under the pointer first, so that the press takes hold of it and a drag can go on.
void ScrubSlider::mousePressEvent(QMouseEvent* event) {
  QStyleOptionSlider option;
  initStyleOption(&option);
  const QRect handle = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
  const QPoint position = event->position().toPoint();
  if (event->button() == Qt::LeftButton && !handle.contains(position))
    setSliderPosition(valueAt(position.x()));
  QSlider::mousePressEvent(event);
}

int ScrubSlider::valueAt(int x) const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  const QRect groove = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
  const QRect handle = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
  return QStyle::sliderValueFromPosition(minimum(), maximum(), x - groove.x() - handle.width() / 2,
                                         groove.width() - handle.width(), option.upsideDown);
}

}  // namespace clipwave
