// What a window made from an interface file still lacks when uic is done with it.
#pragma once

class QWidget;

namespace clipwave {

// Reads these dynamic properties in the tree of `window`:
// - "symbol" of an action, a menu, a button or a label: the name of its image;
// - "page" of an action: the name of the tab page that it shows;
// - "trailingAction" of a tool bar: from the action of that name on, everything stands at its far end.
// Menus in tool bars open at the first click; the controls of a window's rows have one height, also after a
// change of font or style. A wheel over a combo box rolls what is around it. To be called once for a window.
// False when a name leads nowhere; the rest is done all the same.
bool dressWindow(QWidget& window);

}  // namespace clipwave
