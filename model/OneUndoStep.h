// Makes a change of several values one undo step, so that observers never meet half of it.
#pragma once

#include <functional>

#include "platform/coredata/ManagedObject.h"

namespace clipwave {

// Runs `change`, whose own undo steps are dropped, and registers `takeBack` in their place. `change` stores
// and announces nothing, for what observers do in answer must keep its undo steps. `takeBack` is called with
// the record on undo, when the record is still in a store; it registers its own way back by coming here
// again.
void performAsOneUndoStep(ManagedObject& record, const std::function<void()>& change,
                          std::function<void(ManagedObject&)> takeBack);

}  // namespace clipwave
