#include "desktop/SplitView.h"

#include <QMouseEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace clipwave {
namespace {

// QSplitterHandle moves the divider wherever the mouse is; this one asks its splitter first.
class LimitedHandle final : public QSplitterHandle {
 public:
  LimitedHandle(SplitView& view) : QSplitterHandle(view.orientation(), &view), view_(view) {}

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    grip_ = along(event->position().toPoint());
    QSplitterHandle::mousePressEvent(event);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    if (!(event->buttons() & Qt::LeftButton)) return;
    const int divider = view_.indexOf(this) - 1;  // handle 0 is the hidden one before the first widget
    const int wanted = along(view_.mapFromGlobal(event->globalPosition().toPoint())) - grip_;
    if (view_.isMirrored()) {
      // Coordinates begin at the right edge here, for the limits as for the splitter.
      moveSplitter(view_.width() - view_.constrained(view_.width() - view_.handleWidth() - wanted, divider));
    } else {
      moveSplitter(view_.constrained(wanted, divider));
    }
  }

 private:
  int along(QPoint point) const { return orientation() == Qt::Horizontal ? point.x() : point.y(); }

  SplitView& view_;
  int grip_ = 0;  // where in the handle the mouse took hold of it
};

}  // namespace

void SplitView::setConstraints(Limit min, Limit max) {
  min_ = std::move(min);
  max_ = std::move(max);
}

int SplitView::constrained(int wanted, int divider) const {
  const auto first = static_cast<float>(extent(divider, false));
  const auto last = static_cast<float>(extent(divider + 1, true) - handleWidth());
  const float lowest = std::max(first, min_ ? min_(first, divider) : first);
  const float highest = std::min(last, max_ ? max_(last, divider) : last);
  const float place = std::max(lowest, std::min(static_cast<float>(wanted), highest));
  return static_cast<int>(std::lround(std::min(place, last)));
}

QSplitterHandle* SplitView::createHandle() {
  return new LimitedHandle(*this);
}

bool SplitView::isMirrored() const {
  return orientation() == Qt::Horizontal && isRightToLeft();
}

int SplitView::extent(int index, bool end) const {
  const QRect place = widget(index)->geometry();
  if (isMirrored()) return width() - (end ? place.left() : place.right() + 1);
  if (orientation() == Qt::Horizontal) return end ? place.right() + 1 : place.left();
  return end ? place.bottom() + 1 : place.top();
}

}  // namespace clipwave
