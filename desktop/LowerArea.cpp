#include "desktop/LowerArea.h"

#include <QPainter>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>

#include "ui/WindowLayout.h"

namespace clipwave {
namespace {

constexpr int kStripHeight = static_cast<int>(kLowerViewOriginY);
constexpr int kBandHeight = static_cast<int>(kLayoutHeightDifference);
constexpr int kComfortableViewHeight = 248;
constexpr int kSmallestViewHeight = 136;

}  // namespace

void LowerArea::attach(View& lowerView) {
  lowerView_ = &lowerView;
  observation_ = lowerView.observe([this] { frameChanged(); });
  areaChanged();
}

QSize LowerArea::sizeHint() const {
  return {minimumSizeHint().width(), kStripHeight + kBandHeight + kComfortableViewHeight};
}

QSize LowerArea::minimumSizeHint() const {
  int width = 0;
  for (const char* name : {"band", "lowerView", "publishStrip"}) {
    if (const QWidget* child = part(name)) width = std::max(width, child->minimumSizeHint().width());
  }
  return {width, kStripHeight + kBandHeight + kSmallestViewHeight};
}

void LowerArea::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  areaChanged();
}

// A hairline sets the strip off, in every palette.
void LowerArea::paintEvent(QPaintEvent* /*event*/) {
  QColor line = palette().color(QPalette::WindowText);
  line.setAlphaF(0.16F);
  QPainter(this).fillRect(0, height() - kStripHeight, width(), 1, line);
}

QWidget* LowerArea::part(const char* name) const {
  return findChild<QWidget*>(QLatin1String(name), Qt::FindDirectChildrenOnly);
}

int LowerArea::freeViewHeight() const {
  return std::max(0, height() - kStripHeight - kBandHeight);
}

void LowerArea::areaChanged() {
  const int viewHeight = freeViewHeight() + (coversBand_ ? kBandHeight : 0);
  const Rect frame{{0, kLowerViewOriginY}, {static_cast<double>(width()), static_cast<double>(viewHeight)}};
  // Observed, so that it comes back as the state's frame; one that is there already does not.
  if (lowerView_) lowerView_->setFrame(frame);
  place(frame);
}

void LowerArea::frameChanged() {
  const Rect& frame = lowerView_->frame();
  coversBand_ = frame.origin.y + frame.size.height > kStripHeight + freeViewHeight();
  place(frame);
}

void LowerArea::place(const Rect& frame) {
  const int bottom = height() - static_cast<int>(std::lround(frame.origin.y));
  const int viewSize = static_cast<int>(std::lround(frame.size.height));
  if (QWidget* band = part("band")) {
    band->setGeometry(0, 0, width(), kBandHeight);
    band->setVisible(!coversBand_);
  }
  if (QWidget* view = part("lowerView")) {
    view->setGeometry(static_cast<int>(std::lround(frame.origin.x)), bottom - viewSize,
                      static_cast<int>(std::lround(frame.size.width)), viewSize);
  }
  if (QWidget* strip = part("publishStrip"))
    strip->setGeometry(0, height() - kStripHeight, width(), kStripHeight);
}

}  // namespace clipwave
