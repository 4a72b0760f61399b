#include "ctl/PasswordPrompt.h"

#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <initializer_list>
#include <iostream>

namespace clipwave {

namespace {

sigset_t signalSet(std::initializer_list<int> signals) {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : signals) sigaddset(&set, signal);
  return set;
}

// For as long as it lives the terminal shows nothing of what is typed. Signals that came meanwhile do their
// work when the terminal is as it was before; one that stops the process would else leave a silent terminal
// to the shell.
class SilentTerminal {
 public:
  SilentTerminal() {
    const sigset_t held = signalSet({SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP});
    const sigset_t ending = signalSet({SIGINT, SIGTERM, SIGHUP, SIGQUIT});
    sigprocmask(SIG_BLOCK, &held, &maskBefore_);
    signals_ = ::signalfd(-1, &ending, SFD_CLOEXEC);
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
    if (signals_ >= 0) ::close(signals_);
    sigprocmask(SIG_SETMASK, &maskBefore_, nullptr);
  }
  SilentTerminal(const SilentTerminal&) = delete;
  SilentTerminal& operator=(const SilentTerminal&) = delete;

  // False when a signal is about to end the process.
  bool waitForInput() const {
    pollfd sources[] = {{STDIN_FILENO, POLLIN, 0}, {signals_, POLLIN, 0}};
    while (::poll(sources, 2, -1) < 0 && errno == EINTR) continue;
    return sources[1].revents == 0;
  }

 private:
  termios before_{};
  sigset_t maskBefore_{};
  int signals_ = -1;
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
    const SilentTerminal terminal;
    std::cerr << prompt << std::flush;
    if (terminal.waitForInput()) line = readLine();
  }
  return line.empty() ? std::nullopt : std::optional(line);
}

}  // namespace clipwave
