#include "platform/appkit/PopUpBinding.h"

#include <utility>

namespace clipwave {

PopUpBinding::PopUpBinding(PopUpButton& popUp, ArrayController& controller, std::string key,
                           std::string undoActionName)
    : popUp_(popUp),
      controller_(controller),
      undoActionName_(std::move(undoActionName)),
      selected_(controller, std::move(key), [this] { refresh(); }) {
  popUp_.setCommit([this](int tag) { commit(tag); });
  refresh();
}

void PopUpBinding::refresh() {
  const Value tag = selected_.value();
  popUp_.selectItemWithTag(tag.isNull() ? std::nullopt
                                        : std::optional<int>(static_cast<int>(tag.integerValue())));
  popUp_.setEnabled(selected_.hasSelection());
}

void PopUpBinding::commit(int tag) {
  ManagedObjectContext* context = controller_.managedObjectContext();
  if (context == nullptr) return;
  context->undoManager().beginUndoGrouping();
  selected_.set(tag);
  controller_.setUndoActionName(undoActionName_);
  context->undoManager().endUndoGrouping();
}

}  // namespace clipwave
