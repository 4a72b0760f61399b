#include "ctl/PasswordPrompt.h"

#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <initializer_list>
#include <iostream>
#include <optional>
#include <utility>
#include <vector>

#include "ctl/CaughtSignals.h"

namespace clipwave {

namespace {

// For as long as it lives the terminal shows nothing of what is typed. Signals that came meanwhile do their
// work when the terminal is as it was before; one that stops the process would else leave a silent terminal
// to the shell.
class SilentTerminal {
 public:
  SilentTerminal() {
    isSilent_ = ::tcgetattr(STDIN_FILENO, &before_) == 0;
    if (!isSilent_) return;
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    // Line breaks, too: the prompt's line is ended here.
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHONL);
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
  }
  ~SilentTerminal() {
    if (isSilent_) ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
    std::cerr << std::endl;
    while (const auto signal = signals_->take()) held_.push_back(*signal);
    signals_.reset();
    for (const int signal : held_) ::raise(signal);
  }
  SilentTerminal(const SilentTerminal&) = delete;
  SilentTerminal& operator=(const SilentTerminal&) = delete;

  // False when a signal is about to end the process; one that stops it waits.
  bool waitForInput() {
    for (;;) {
      pollfd sources[] = {{STDIN_FILENO, POLLIN, 0}, {signals_->descriptor(), POLLIN, 0}};
      while (::poll(sources, 2, -1) < 0 && errno == EINTR) continue;
      while (const auto signal = signals_->take()) held_.push_back(*signal);
      if (std::ranges::any_of(held_, [](int signal) { return signal != SIGTSTP; })) return false;
      if (sources[0].revents != 0) return true;
    }
  }

 private:
  termios before_{};
  std::optional<CaughtSignals> signals_{
      std::in_place, std::initializer_list<int>{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP}};
  std::vector<int> held_;
  bool isSilent_ = false;
};

// Byte by byte: what follows the line belongs to someone else.
std::string readLine() {
  std::string line;
  for (;;) {
    char byte = 0;
    const ssize_t length = ::read(STDIN_FILENO, &byte, 1);
    if (length < 0 && errno == EINTR) continue;
    if (length <= 0 || byte == '\n') break;
    line += byte;
  }
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

}  // namespace

std::optional<std::string> readPassword(const std::string& prompt) {
  std::string line;
  if (::isatty(STDIN_FILENO) == 0) {
    line = readLine();
  } else {
    SilentTerminal terminal;
    std::cerr << prompt << std::flush;
    if (terminal.waitForInput()) line = readLine();
  }
  return line.empty() ? std::nullopt : std::optional(line);
}

}  // namespace clipwave
