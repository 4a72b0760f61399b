// Turns the signals that ask a process to end into a call on the run loop.
#pragma once

#include <functional>
#include <memory>

#include "platform/foundation/RunLoop.h"

namespace clipwave {

// SIGINT, SIGTERM and SIGHUP, but for those that the process was started to ignore. One at a time in a
// process; the signals' old ways come back with its end.
class TerminationSignals {
 public:
  TerminationSignals(RunLoop& runLoop, std::function<void()> requested);
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  std::unique_ptr<DescriptorWatch> watch_;
};

}  // namespace clipwave
