// The few small symbols of the lists, drawn in the palette's colours at any resolution.
#pragma once

#include <QIcon>
#include <QPalette>

#include "desktop/Column.h"

namespace clipwave {

// Follows the application's palette each time it is drawn.
QIcon symbolIcon(Column::Symbol symbol);
// In a colour given by the caller; the symbol fills the rectangle.
void drawSymbol(QPainter& painter, Column::Symbol symbol, const QRectF& rect, const QColor& color);
// For marks of trouble: told from text, and calm, on light and on dark backgrounds.
QColor warningColor(const QPalette& palette);

}  // namespace clipwave
