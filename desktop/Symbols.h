// The few small symbols of the lists, drawn in any colour at any resolution.
#pragma once

#include <QPainter>
#include <QPalette>

#include "desktop/Column.h"

namespace clipwave {

// The symbol fills the rectangle.
void drawSymbol(QPainter& painter, Column::Symbol symbol, const QRectF& rect, const QColor& color);
bool isDark(const QPalette& palette);
// For marks of trouble: told from text, and calm, on light and on dark backgrounds.
QColor warningColor(const QPalette& palette);

}  // namespace clipwave
