// Turns the signals that ask a process to end into a call on the run loop.
#pragma once

#include <functional>
#include <memory>

#include "platform/foundation/RunLoop.h"

namespace clipwave {

// SIGINT, SIGTERM and SIGHUP, but for those that the process was started to ignore. One at a time in a
// process; with its end the signals end the process at once again.
class TerminationSignals {
 public:
  // `requested` is called from the run loop, in modal mode as well; never where no pipe can be made.
  TerminationSignals(RunLoop& runLoop, std::function<void()> requested);
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  std::unique_ptr<DescriptorWatch> watch_;
};

}  // namespace clipwave
