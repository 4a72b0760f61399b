#include "desktop/AlertIcon.h"

#include <QIcon>
#include <QPainter>

namespace clipwave {
namespace {

struct Drawing {
  const char* themeName;
  QRgb ground;
  QRgb sign;
};

Drawing drawingOf(AlertIcon icon) {
  if (icon == AlertIcon::Information) return {"dialog-information", 0xff2f7fd6, 0xffffffff};
  if (icon == AlertIcon::Warning) return {"dialog-warning", 0xfff5b51e, 0xff3a2c00};
  return {"dialog-error", 0xffd6402f, 0xffffffff};
}

// In a square of side 1.
void draw(QPainter& painter, AlertIcon icon, const Drawing& drawing) {
  const QColor ground = QColor::fromRgba(drawing.ground);
  painter.setBrush(ground);
  // Round joins give the triangle soft corners.
  painter.setPen(QPen(ground, 0.12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const bool isTriangle = icon == AlertIcon::Warning;
  if (isTriangle) {
    painter.drawPolygon(QPolygonF({{0.5, 0.14}, {0.93, 0.87}, {0.07, 0.87}}));
  } else {
    painter.drawEllipse(QRectF(0.09, 0.09, 0.82, 0.82));
  }
  painter.setPen(QPen(QColor::fromRgba(drawing.sign), 0.1, Qt::SolidLine, Qt::RoundCap));
  const double top = isTriangle ? 0.36 : 0.26, bottom = isTriangle ? 0.78 : 0.74;
  if (icon == AlertIcon::Information) {
    painter.drawLine(QPointF(0.5, 0.46), QPointF(0.5, bottom));
    painter.drawPoint(QPointF(0.5, top + 0.01));
  } else {
    painter.drawLine(QPointF(0.5, top), QPointF(0.5, bottom - 0.2));
    painter.drawPoint(QPointF(0.5, bottom));
  }
}

}  // namespace

QPixmap alertIcon(AlertIcon icon, int size, double pixelRatio) {
  const Drawing drawing = drawingOf(icon);
  const QIcon themed = QIcon::fromTheme(QLatin1String(drawing.themeName));
  if (!themed.isNull()) return themed.pixmap(QSize(size, size), pixelRatio);
  QPixmap pixmap(QSize(size, size) * pixelRatio);
  pixmap.setDevicePixelRatio(pixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size, size);
  draw(painter, icon, drawing);
  return pixmap;
}

}  // namespace clipwave
