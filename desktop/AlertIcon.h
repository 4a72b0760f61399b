// The picture beside an alert's text.
#pragma once

#include <QPixmap>

namespace clipwave {

enum class AlertIcon { Information, Warning, Error };

// The desktop theme's; where it has none, a drawing that is sharp at every `pixelRatio`. `size` is in points.
QPixmap alertIcon(AlertIcon icon, int size, double pixelRatio);

}  // namespace clipwave
