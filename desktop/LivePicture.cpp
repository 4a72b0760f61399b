#include "desktop/LivePicture.h"

#include <QPainter>
#include <cmath>
#include <cstring>

namespace clipwave {

namespace {

bool looksTheSame(const Bitmap& a, const Bitmap& b) {
  return a.width == b.width && a.height == b.height && a.bytesPerRow == b.bytesPerRow &&
         std::memcmp(a.bytes.get(), b.bytes.get(), a.bytesPerRow * static_cast<std::size_t>(a.height)) == 0;
}

// Over black, what is premultiplied looks as if it were opaque: nothing has to be blended.
QImage imageOf(const Bitmap& bitmap) {
  return {bitmap.bytes.get(), bitmap.width, bitmap.height, static_cast<qsizetype>(bitmap.bytesPerRow),
          QImage::Format_RGBX8888};
}

}  // namespace

LivePicture::LivePicture(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void LivePicture::attach(ImageView& view) {
  view_ = &view;
  observation_ = view.observe([this] { imageChanged(); });
  imageChanged();
  frameChanged();
}

void LivePicture::imageChanged() {
  if (view_->image() == bitmap_ || !isVisible()) return;
  // A new bitmap comes sixty times a second, a new picture far less often; comparing is cheaper than
  // painting.
  const bool isSame = bitmap_ && view_->image() && looksTheSame(*bitmap_, *view_->image());
  bitmap_ = view_->image();
  image_ = bitmap_ ? imageOf(*bitmap_) : QImage();
  if (!isSame) update();
}

void LivePicture::frameChanged() {
  if (view_ == nullptr) return;
  const QWidget& content = *window();
  const QPoint corner = mapTo(&content, QPoint(0, height()));
  view_->setFrame({{static_cast<double>(corner.x()), static_cast<double>(content.height() - corner.y())},
                   {static_cast<double>(width()), static_cast<double>(height())}});
}

void LivePicture::resizeEvent(QResizeEvent* /*event*/) {
  frameChanged();
}

void LivePicture::moveEvent(QMoveEvent* /*event*/) {
  frameChanged();
}

void LivePicture::showEvent(QShowEvent* /*event*/) {
  if (view_ != nullptr) imageChanged();
}

void LivePicture::paintEvent(QPaintEvent* /*event*/) {
  ++paintCount_;
  QPainter painter(this);
  QSize shown = image_.size();
  if (shown.width() > width() || shown.height() > height()) shown.scale(size(), Qt::KeepAspectRatio);
  const QRect place(QPoint((width() - shown.width()) / 2, (height() - shown.height()) / 2), shown);
  for (const QRect& ground : QRegion(rect()) - QRegion(place)) painter.fillRect(ground, Qt::black);
  if (image_.isNull()) return;
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  const double ratio = devicePixelRatioF();
  painter.setRenderHint(QPainter::SmoothPixmapTransform,
                        shown != image_.size() || ratio != std::floor(ratio));
  painter.drawImage(place, image_);
}

}  // namespace clipwave
