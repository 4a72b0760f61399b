#include "desktop/TerminationSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace clipwave {

namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};

// What a signal handler can reach.
std::array<int, 2> pipeEnds = {-1, -1};

void noteSignal(int) {
  const int error = errno;
  static_cast<void>(!::write(pipeEnds[1], "x", 1));
  errno = error;
}

}  // namespace

TerminationSignals::TerminationSignals(RunLoop& runLoop, std::function<void()> requested) {
  if (::pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  // Also while a question waits for its answer: who asks a process to end soon ends it without asking.
  watch_ = runLoop.watch(
      pipeEnds[0], RunLoop::Readiness::Readable,
      [requested = std::move(requested)] {
        char byte = 0;
        while (::read(pipeEnds[0], &byte, 1) == 1) {
        }
        requested();
      },
      RunLoop::Delivery::DefaultAndModal);
  for (const int signal : kSignals) {
    struct sigaction action {};
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action.sa_handler = noteSignal;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
  }
}

TerminationSignals::~TerminationSignals() {
  if (!watch_) return;
  for (const int signal : kSignals) {
    struct sigaction action {};
    if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == noteSignal)
      ::signal(signal, SIG_DFL);
  }
  watch_.reset();
  for (int& end : pipeEnds) {
    ::close(end);
    end = -1;
  }
}

}  // namespace clipwave
