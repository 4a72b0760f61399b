#include "desktop/Symbols.h"

#include <QPainterPath>

namespace clipwave {
namespace {

// All shapes lie in a square of 16 units.
constexpr qreal kUnits = 16;

void drawLines(QPainter& painter, std::initializer_list<QPointF> points) {
  QPainterPath path(*points.begin());
  for (const QPointF& point : points) path.lineTo(point);
  painter.drawPath(path);
}

// A broadcast: what subscribers will receive.
void drawPublish(QPainter& painter) {
  painter.drawArc(QRectF(5, 6, 6, 6), -45 * 16, 90 * 16);
  painter.drawArc(QRectF(2, 3, 12, 12), -45 * 16, 90 * 16);
  painter.drawArc(QRectF(5, 6, 6, 6), 135 * 16, 90 * 16);
  painter.drawArc(QRectF(2, 3, 12, 12), 135 * 16, 90 * 16);
  painter.setBrush(painter.pen().color());
  painter.drawEllipse(QPointF(8, 9), 0.6, 0.6);
}

// An arrow onto a shelf: the movie goes along.
void drawCopy(QPainter& painter) {
  drawLines(painter, {{8, 10}, {8, 2.5}});
  drawLines(painter, {{4.8, 5.7}, {8, 2.5}, {11.2, 5.7}});
  drawLines(painter, {{2.5, 9.5}, {2.5, 13.5}, {13.5, 13.5}, {13.5, 9.5}});
}

void drawWarning(QPainter& painter) {
  drawLines(painter, {{8, 2.2}, {14.4, 13.6}, {1.6, 13.6}, {8, 2.2}});
  drawLines(painter, {{8, 6.6}, {8, 9.6}});
  painter.setBrush(painter.pen().color());
  painter.drawEllipse(QPointF(8, 11.7), 0.35, 0.35);
}

}  // namespace

void drawSymbol(QPainter& painter, Column::Symbol symbol, const QRectF& rect, const QColor& color) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(rect.topLeft());
  painter.scale(rect.width() / kUnits, rect.height() / kUnits);
  painter.setPen(QPen(color, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  if (symbol == Column::Symbol::Publish) drawPublish(painter);
  if (symbol == Column::Symbol::Copy) drawCopy(painter);
  if (symbol == Column::Symbol::Warning) drawWarning(painter);
  painter.restore();
}

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < 128;
}

QColor warningColor(const QPalette& palette) {
  return isDark(palette) ? QColor(0xF0, 0xB0, 0x50) : QColor(0xA8, 0x58, 0x00);
}

}  // namespace clipwave
