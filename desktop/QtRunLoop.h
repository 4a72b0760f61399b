// The run loop inside Qt's event loop: timers, deferred calls and watched descriptors beside the window's own
// input and painting.
#pragma once

#include <memory>

#include "platform/foundation/RunLoop.h"

namespace clipwave {

// Needs the QCoreApplication of the main thread, which must outlive it, as must `clock`. Turns also go on
// while any event loop of Qt runs (an open menu, a drag). Work that is due gives way to input and painting,
// so that the window stays alive however long a chain of zero-delay timers is. runOnce also delivers the
// events that wait in Qt. A QCoreApplication::quit() ends the runs.
std::unique_ptr<RunLoop> makeQtRunLoop(Clock& clock);

}  // namespace clipwave
