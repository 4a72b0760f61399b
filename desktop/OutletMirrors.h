// Which widget can show which element of the program, and the mirror that does.
#pragma once

#include "desktop/InterfaceNames.h"

class QWidget;

namespace clipwave {

class WindowMirror;

// Shows the element in the widget from now on; false where the widget cannot. What the outlet stands for must
// outlive the widget.
bool mirrorOutlet(QWidget& widget, const Outlet& outlet, WindowMirror& mirror);

}  // namespace clipwave
