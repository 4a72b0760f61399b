#include "desktop/LevelMeter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

namespace clipwave {

namespace {

constexpr QColor kCalm{72, 160, 112};
constexpr QColor kTooLoud{214, 62, 50};
constexpr float kNearlyFull = 0.95F;
constexpr float kQuietest = 48;  // decibels below full

}  // namespace

LevelMeter::LevelMeter(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LevelMeter::setLevel(float level) {
  const int before = barLength();
  const bool wasTooLoud = std::exchange(level_, std::clamp(level, 0.0F, 1.0F)) >= kNearlyFull;
  if (barLength() != before || wasTooLoud != (level_ >= kNearlyFull)) update();
}

int LevelMeter::barLength() const {
  if (level_ <= 0) return 0;
  const float share = 1 + 20 * std::log10(level_) / kQuietest;
  return static_cast<int>(std::lround(std::max(share, 0.0F) * static_cast<float>(width())));
}

void LevelMeter::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  QColor ground = palette().color(QPalette::WindowText);
  ground.setAlphaF(0.12F);
  painter.fillRect(rect(), ground);
  QRect bar(0, 0, barLength(), height());
  if (layoutDirection() == Qt::RightToLeft) bar.moveRight(rect().right());
  painter.fillRect(bar, level_ >= kNearlyFull ? kTooLoud : kCalm);
}

}  // namespace clipwave
