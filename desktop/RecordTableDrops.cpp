// Files dragged over a table.
#include <QDragEnterEvent>
#include <QScrollBar>
#include <QTimerEvent>

#include "desktop/DraggedFiles.h"
#include "desktop/RecordTable.h"

namespace clipwave {
namespace {

constexpr int kEdgeThatScrolls = 16;
constexpr int kScrollInterval = 30;  // milliseconds
constexpr int kScrollStep = 8;       // pixels
// The share of a row's height, above and below, that means between rows.
constexpr int kShareBetweenRows = 4;

}  // namespace

RecordTable::DropPlace RecordTable::dropPlaceAt(const QPoint& position) const {
  const QModelIndex index = indexAt(position);
  if (!index.isValid()) return {model_->rowCount(), TableDropOperation::Above};
  const QRect row = visualRect(index);
  const int edge = row.height() / kShareBetweenRows;
  if (position.y() < row.top() + edge) return {index.row(), TableDropOperation::Above};
  if (position.y() > row.bottom() - edge) return {index.row() + 1, TableDropOperation::Above};
  return {index.row(), TableDropOperation::On};
}

void RecordTable::dragEnterEvent(QDragEnterEvent* event) {
  endDrag();
  if (table_ != nullptr) drag_ = draggedFiles(*event->mimeData(), event->possibleActions());
  if (!drag_) {
    event->ignore();
    return;
  }
  updateDrag(*event);
  // Refused at this place, it may be welcome at the next.
  event->accept();
}

void RecordTable::dragMoveEvent(QDragMoveEvent* event) {
  const int y = event->position().toPoint().y();
  dragScrollStep_ = y < kEdgeThatScrolls ? -kScrollStep : 0;
  if (y > viewport()->height() - kEdgeThatScrolls) dragScrollStep_ = kScrollStep;
  if (drag_ && dragScrollStep_ != 0) {
    if (!scrollWhileDragging_.isActive()) scrollWhileDragging_.start(kScrollInterval, this);
  } else {
    scrollWhileDragging_.stop();
  }
  updateDrag(*event);
}

// Asks the program once for each place: looking at the files may take longer than the pointer's next step.
void RecordTable::updateDrag(QDropEvent& event) {
  if (!drag_) {
    event.ignore();
    return;
  }
  const DropPlace place = dropPlaceAt(event.position().toPoint());
  if (dropPlace_ != place) {
    dropPlace_ = place;
    dropAnswer_ = table_->draggingUpdated(*drag_, place.row, place.operation);
  }
  event.setDropAction(acknowledgement(event.possibleActions()));
  event.setAccepted(dropAnswer_ != NSDragOperationNone);
}

void RecordTable::dragLeaveEvent(QDragLeaveEvent*) {
  endDrag();
}

void RecordTable::dropEvent(QDropEvent* event) {
  const std::optional<DraggingInfo> drag = std::exchange(drag_, std::nullopt);
  const DropPlace place = dropPlaceAt(event->position().toPoint());
  endDrag();
  event->setDropAction(acknowledgement(event->possibleActions()));
  event->setAccepted(drag && table_->performDrop(*drag, place.row, place.operation));
}

void RecordTable::endDrag() {
  drag_.reset();
  dropPlace_.reset();
  dropAnswer_ = NSDragOperationNone;
  scrollWhileDragging_.stop();
  if (table_ != nullptr) table_->draggingExited();
}

void RecordTable::timerEvent(QTimerEvent* event) {
  if (event->timerId() != scrollWhileDragging_.timerId()) {
    QTreeView::timerEvent(event);
    return;
  }
  verticalScrollBar()->setValue(verticalScrollBar()->value() + dragScrollStep_);
  // Another row is under the pointer now: its next step is to ask anew.
  dropPlace_.reset();
}

}  // namespace clipwave
