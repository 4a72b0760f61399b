// The signals by which a person or the system asks a command to come to an end.
#pragma once

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <functional>
#include <memory>

#include "platform/foundation/RunLoop.h"

namespace clipwave {

// Turns an interrupt, or the closing of the terminal, into a call for as long as it lives. Until then neither
// ends the process: what was copied is still to be saved. What the process was started to ignore, as by
// nohup, it ignores.
class Interrupts {
 public:
  Interrupts(RunLoop& runLoop, std::function<void()> interrupted) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      struct sigaction action {};
      // A blocked signal would come even if it is ignored.
      if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN)
        sigaddset(&signals, signal);
    }
    sigprocmask(SIG_BLOCK, &signals, &before_);
    descriptor_ = ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    watch_ = runLoop.watch(descriptor_, RunLoop::Readiness::Readable,
                           [this, interrupted = std::move(interrupted)] {
                             if (takeOne()) interrupted();
                           });
  }
  ~Interrupts() {
    watch_.reset();
    while (takeOne()) continue;
    if (descriptor_ >= 0) ::close(descriptor_);
    sigprocmask(SIG_SETMASK, &before_, nullptr);
  }
  Interrupts(const Interrupts&) = delete;
  Interrupts& operator=(const Interrupts&) = delete;

  int descriptor() const { return descriptor_; }

 private:
  bool takeOne() const {
    signalfd_siginfo info;
    return ::read(descriptor_, &info, sizeof info) > 0;
  }

  sigset_t before_{};
  int descriptor_ = -1;
  std::unique_ptr<DescriptorWatch> watch_;
};

}  // namespace clipwave
