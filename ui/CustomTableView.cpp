#include "ui/CustomTableView.h"

namespace clipwave {

namespace {

constexpr unsigned kDeleteCharacter = 127;
constexpr std::string_view kContentBinding = "content";

}  // namespace

void CustomTableView::bind(std::string_view binding, ArrayController* toObject,
                           std::string_view withKeyPath) {
  if (binding == kContentBinding) {
    tableContentController_ = toObject;
    tableContentKey_ = withKeyPath;
  }
  TableView::bind(binding, toObject, withKeyPath);
}

void CustomTableView::unbind(std::string_view binding) {
  TableView::unbind(binding);
  if (binding == kContentBinding) {
    tableContentController_ = nullptr;
    tableContentKey_.clear();
  }
}

bool CustomTableView::keyDown(const KeyEvent& event) {
  if (event.character != kDeleteCharacter || event.modifiers != 0) return TableView::keyDown(event);
  const IndexSet rows = selectedRowIndexes();
  if (rows.empty()) {
    application_.beep();
  } else if (tableContentController_ != nullptr) {
    tableContentController_->removeObjectsAtArrangedObjectIndexes(rows);
  }
  return true;
}

}  // namespace clipwave
