// The program's own images by name: drawn from SVG at the size that is asked for, one-coloured symbols in the
// palette's colours.
#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <QString>

class QPainter;

namespace clipwave {

// The image of that name among the program's resources; a null icon when there is none. What is drawn in
// "currentColor" takes the colour that text has in the application's palette, also where that changes later:
// normal, disabled or selected.
QIcon imageNamed(const QString& name);
// Draws that image into the rectangle, its "currentColor" being the one given. Nothing for an unknown name.
void paintImage(QPainter& painter, const QString& name, const QRectF& rect, const QColor& colour);

}  // namespace clipwave
