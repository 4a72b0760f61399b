#include "desktop/Spinner.h"

#include <QPainter>
#include <QStyle>

namespace clipwave {
namespace {

constexpr int kSpokes = 12;
constexpr int kMillisecondsPerStep = 80;

}  // namespace

Spinner::Spinner(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Spinner::setSpinning(bool spinning) {
  spinning_ = spinning;
  updateTimer();
  update();
}

void Spinner::paintEvent(QPaintEvent* /*event*/) {
  if (!spinning_) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(rect().toRectF().center());
  const double unit = qMin(width(), height()) / 16.0;
  painter.scale(unit, unit);
  painter.rotate(360.0 / kSpokes * step_);
  QColor colour = palette().color(QPalette::WindowText);
  for (int spoke = 0; spoke < kSpokes; ++spoke) {
    // The head of the wheel is dark, its tail fades.
    colour.setAlphaF(0.12F + 0.88F * static_cast<float>(spoke) / (kSpokes - 1));
    painter.setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, -4), QPointF(0, -6.8));
    painter.rotate(360.0 / kSpokes);
  }
}

void Spinner::timerEvent(QTimerEvent* /*event*/) {
  step_ = (step_ + 1) % kSpokes;
  update();
}

void Spinner::showEvent(QShowEvent* /*event*/) {
  updateTimer();
}

void Spinner::hideEvent(QHideEvent* /*event*/) {
  updateTimer();
}

// A wheel that nobody sees costs nothing, and one that must not move stands still.
void Spinner::updateTimer() {
  const bool moves = spinning_ && isVisible() && style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
  if (!moves) {
    timer_.stop();
  } else if (!timer_.isActive()) {
    timer_.start(kMillisecondsPerStep, this);
  }
}

}  // namespace clipwave
