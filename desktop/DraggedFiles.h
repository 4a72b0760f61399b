// What the desktop drags over a table, in the program's terms.
#pragma once

#include <QMimeData>
#include <optional>

#include "platform/appkit/Dragging.h"

namespace clipwave {

// The drag of files of this machine, and of nothing else; none for every other drag, and for one whose source
// lets its files only be moved.
std::optional<DraggingInfo> draggedFiles(const QMimeData& mime, Qt::DropActions possibleActions);
// What the desktop is told: the file stays its own. Never a move, for whoever is told so deletes the file.
Qt::DropAction acknowledgement(Qt::DropActions possibleActions);

}  // namespace clipwave
