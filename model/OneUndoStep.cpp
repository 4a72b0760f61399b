#include "model/OneUndoStep.h"

#include <utility>

#include "platform/coredata/ManagedObjectContext.h"

namespace clipwave {

void performAsOneUndoStep(ManagedObject& record, const std::function<void()>& change,
                          std::function<void(ManagedObject&)> takeBack) {
  ManagedObjectContext* context = record.managedObjectContext();
  if (!context) return change();
  context->undoManager().registerUndo([weak = record.weak_from_this(), takeBack = std::move(takeBack)] {
    const auto alive = weak.lock();
    if (alive && alive->managedObjectContext()) takeBack(*alive);
  });
  context->undoManager().disableUndoRegistration();
  change();
  context->undoManager().enableUndoRegistration();
}

}  // namespace clipwave
