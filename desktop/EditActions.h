// The Edit menu's operations: on the text being typed where there is one, else on the library.
#pragma once

#include <QString>

#include "platform/coredata/UndoManager.h"

class QAction;

namespace clipwave {

// `manager` may be null: then only typing can be undone.
void undoLastChange(UndoManager* manager);
void redoLastChange(UndoManager* manager);
bool canUndoChange(UndoManager* manager);
bool canRedoChange(UndoManager* manager);
// The menu entries' titles, with the change that they would take back: "Undo Clear Movie".
QString undoTitle(UndoManager* manager);
QString redoTitle(UndoManager* manager);

// Sends "cut", "copy", "paste" or "selectAll" to the widget that has the keyboard focus, when it knows it.
void sendToFocus(const char* operation);

}  // namespace clipwave
