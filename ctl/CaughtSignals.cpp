#include "ctl/CaughtSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>

namespace clipwave {

namespace {

// What a signal handler can reach.
std::atomic<int> writeEnd{-1};

void note(int signal) {
  const int error = errno;
  const auto byte = static_cast<unsigned char>(signal);
  static_cast<void>(!::write(writeEnd, &byte, 1));
  errno = error;
}

}  // namespace

CaughtSignals::CaughtSignals(std::initializer_list<int> signals) : writeEndBefore_(writeEnd) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  readEnd_ = ends[0];
  writeEnd = ends[1];
  for (const int signal : signals) {
    struct sigaction before {};
    if (::sigaction(signal, nullptr, &before) != 0 || before.sa_handler == SIG_IGN) continue;
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    if (::sigaction(signal, &action, nullptr) == 0) before_.emplace_back(signal, before);
  }
}

CaughtSignals::~CaughtSignals() {
  for (const auto& [signal, before] : before_) ::sigaction(signal, &before, nullptr);
  if (readEnd_ < 0) return;
  ::close(writeEnd.exchange(writeEndBefore_));
  ::close(readEnd_);
}

std::optional<int> CaughtSignals::take() const {
  unsigned char signal = 0;
  if (::read(readEnd_, &signal, 1) != 1) return std::nullopt;
  return signal;
}

}  // namespace clipwave
