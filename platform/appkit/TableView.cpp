#include "platform/appkit/TableView.h"

#include <algorithm>

namespace clipwave {

void TableView::bind(std::string_view binding, ArrayController* toObject, std::string_view) {
  if (binding != "content" || toObject == nullptr) return;
  contentController_ = toObject;
  selectionObservation_ = toObject->observeSelectedObjects([this] { changed(); });
  arrangedObservation_ = toObject->observeArrangedObjects([this] { changed(); });
  changed();
}

void TableView::unbind(std::string_view binding) {
  if (binding != "content" || contentController_ == nullptr) return;
  contentController_ = nullptr;
  selectionObservation_.cancel();
  arrangedObservation_.cancel();
  changed();
}

IndexSet TableView::selectedRowIndexes() const {
  return contentController_ == nullptr ? IndexSet() : contentController_->selectionIndexes();
}

bool TableView::selectRowIndexes(const IndexSet& rows) {
  if (delegate_ != nullptr && !delegate_->selectionShouldChangeInTableView(*this)) return false;
  return contentController_ != nullptr && contentController_->setSelectionIndexes(rows);
}

void TableView::setDropRow(int row, TableDropOperation operation) {
  if (row == dropRow_ && operation == dropOperation_) return;
  dropRow_ = row;
  dropOperation_ = operation;
  changed();
}

unsigned TableView::draggingUpdated(const DraggingInfo& info, int row, TableDropOperation operation) {
  const bool carriesOurTypes =
      std::any_of(draggedTypes_.begin(), draggedTypes_.end(),
                  [&](const std::string& type) { return info.draggingPasteboard.hasType(type); });
  if (!carriesOurTypes || delegate_ == nullptr) return NSDragOperationNone;
  setDropRow(row, operation);
  const unsigned answer = delegate_->validateDrop(*this, info, row, operation);
  if (answer == NSDragOperationNone) draggingExited();
  return answer;
}

bool TableView::performDrop(const DraggingInfo& info, int row, TableDropOperation operation) {
  if (draggingUpdated(info, row, operation) == NSDragOperationNone) return false;
  // Where the delegate retargeted it to. The mark goes before the drop changes the rows under it.
  const int targetRow = dropRow_;
  const TableDropOperation targetOperation = dropOperation_;
  draggingExited();
  return delegate_->acceptDrop(*this, info, targetRow, targetOperation);
}

bool TableView::keyDown(const KeyEvent& event) {
  const bool extend = event.modifiers == KeyEvent::Shift;
  if (contentController_ == nullptr || (event.modifiers != 0 && !extend)) return false;
  const std::size_t count = contentController_->arrangedObjects().size();
  const IndexSet selected = selectedRowIndexes();
  std::size_t target = 0;
  switch (event.character) {
    case NSUpArrowFunctionKey:
      if (count > 0)
        target = selected.empty() ? count - 1 : *selected.begin() - (*selected.begin() > 0 ? 1 : 0);
      break;
    case NSDownArrowFunctionKey:
      if (!selected.empty()) target = std::min(*selected.rbegin() + 1, count - 1);
      break;
    case NSHomeFunctionKey:
      break;
    case NSEndFunctionKey:
      if (count > 0) target = count - 1;
      break;
    default:
      return false;
  }
  if (count == 0) return true;
  IndexSet rows = {target};
  if (extend && !selected.empty()) {
    for (std::size_t row = std::min(target, *selected.begin()); row <= std::max(target, *selected.rbegin());
         ++row) {
      rows.insert(row);
    }
  }
  selectRowIndexes(rows);
  return true;
}

}  // namespace clipwave
