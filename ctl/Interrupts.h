// The signals by which a person or the system asks a command to come to an end.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "ctl/CaughtSignals.h"
#include "platform/foundation/RunLoop.h"

namespace clipwave {

// Turns an interrupt, or the closing of the terminal, into a call for as long as it lives. Until then neither
// ends the process: what was copied is still to be saved. What the process was started to ignore, as by
// nohup, it ignores.
class Interrupts {
 public:
  Interrupts(RunLoop& runLoop, std::function<void()> interrupted)
      : watch_(runLoop.watch(signals_.descriptor(), RunLoop::Readiness::Readable,
                             [this, interrupted = std::move(interrupted)] {
                               if (signals_.take()) interrupted();
                             })) {}

  // Readable while one is to be told.
  int descriptor() const { return signals_.descriptor(); }

 private:
  CaughtSignals signals_{SIGINT, SIGTERM, SIGHUP};
  std::unique_ptr<DescriptorWatch> watch_;
};

}  // namespace clipwave
