#include "desktop/PictureArea.h"

#include <QPainter>
#include <algorithm>
#include <utility>

namespace clipwave {
namespace {

// Neutral and the same under every palette, so that no colour of the window tints the picture.
constexpr QColor kGround{28, 28, 30};
constexpr QColor kText{172, 172, 178};
constexpr QColor kDrawing{110, 110, 116};
constexpr QColor kNoticeGround{0, 0, 0, 176};
constexpr QColor kNoticeText{240, 240, 242};

constexpr int kMargin = 16;
constexpr int kFocusWidth = 2;
// The bars of the drawing for sound: heights, and a bar's width with the gap behind it.
constexpr int kBars[] = {12, 24, 40, 20, 32, 48, 28, 16, 36, 20, 10};
constexpr int kBarWidth = 4;
constexpr int kBarStep = 8;
constexpr int kDrawingHeight = 48;

}  // namespace

PictureArea::PictureArea(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PictureArea::setPicture(QImage picture) {
  picture_ = std::move(picture);
  update();
}

void PictureArea::setMessage(const QString& message) {
  if (std::exchange(message_, message) != message) describe();
}

void PictureArea::setShowsSound(bool shows) {
  if (std::exchange(showsSound_, shows) != shows) update();
}

void PictureArea::setNotice(const QString& notice) {
  if (std::exchange(notice_, notice) != notice) describe();
}

void PictureArea::describe() {
  setAccessibleDescription(notice_.isEmpty() ? message_ : notice_);
  update();
}

QSize PictureArea::pixelSize() const {
  return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

QSize PictureArea::sizeHint() const {
  return {320, 240};
}

QSize PictureArea::minimumSizeHint() const {
  return {120, 90};
}

void PictureArea::resizeEvent(QResizeEvent* /*event*/) {
  emit resized();
}

void PictureArea::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), kGround);
  if (picture_.isNull())
    paintMessage(painter);
  else
    paintPicture(painter);
  if (!notice_.isEmpty()) paintNotice(painter);
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), kFocusWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
  }
}

// A picture that was made for this area is drawn pixel by pixel; another one (smaller than the area, or on
// its way while the window is resized) is drawn smoothly.
void PictureArea::paintPicture(QPainter& painter) const {
  const double ratio = devicePixelRatioF();
  const QSize area = pixelSize();
  QSize shown = picture_.size().scaled(area, Qt::KeepAspectRatio);
  const bool isExact =
      std::abs(shown.width() - picture_.width()) <= 1 && std::abs(shown.height() - picture_.height()) <= 1;
  if (isExact) shown = picture_.size();
  const QPoint corner((area.width() - shown.width()) / 2, (area.height() - shown.height()) / 2);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, !isExact);
  painter.drawImage(QRectF(QPointF(corner) / ratio, QSizeF(shown) / ratio), picture_);
}

void PictureArea::paintMessage(QPainter& painter) const {
  const QRect text = rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
  painter.setPen(kText);
  const int flags = Qt::AlignCenter | Qt::TextWordWrap;
  if (!showsSound_ || height() < 2 * kDrawingHeight) {
    painter.drawText(text, flags, message_);
    return;
  }
  const int count = static_cast<int>(std::size(kBars));
  const int middle = rect().center().y() - kMargin;
  int x = rect().center().x() - (count * kBarStep - (kBarStep - kBarWidth)) / 2;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kDrawing);
  for (const int height : kBars) {
    painter.drawRoundedRect(QRectF(x, middle - height / 2.0, kBarWidth, height), 2, 2);
    x += kBarStep;
  }
  painter.restore();
  const int top = middle + kDrawingHeight / 2 + kMargin / 2;
  painter.drawText(QRect(text.left(), top, text.width(), text.bottom() - top),
                   Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, message_);
}

void PictureArea::paintNotice(QPainter& painter) const {
  const QRect space = rect().adjusted(kMargin, 0, -kMargin, 0);
  const QRect text = painter.boundingRect(space, Qt::AlignCenter | Qt::TextWordWrap, notice_);
  const int height = std::min(text.height() + kMargin, rect().height());
  const QRect band(0, rect().height() - height, width(), height);
  painter.fillRect(band, kNoticeGround);
  painter.setPen(kNoticeText);
  painter.drawText(band.adjusted(kMargin, 0, -kMargin, 0), Qt::AlignCenter | Qt::TextWordWrap, notice_);
}

}  // namespace clipwave
