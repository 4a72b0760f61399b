#include "ctl/TerminalShell.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <iostream>

namespace clipwave {

void printError(const std::string& title, const std::string& message) {
  std::cerr << (title.empty() ? std::string("Error") : title) << (message.empty() ? "" : ": ") << message
            << '\n';
}

Alert::Answer TerminalShell::runAlert(Alert& alert) {
  if (answerer_) {
    if (const auto answer = answerer_(alert)) return *answer;
  }
  failed_ = true;
  // A question that nobody is there to answer is not put; what led to it has been told.
  if (alert.alternateButton.empty()) printError(alert.title, alert.message);
  return Alert::Answer::Default;
}

void TerminalShell::beginAlertSheet(Alert alert, Window&, std::function<void(Alert::Answer)> ended) {
  const Alert::Answer answer = runAlert(alert);
  if (ended) ended(answer);
}

void TerminalShell::beginOpenPanelSheet(OpenPanel, Window&, std::function<void(OpenPanelAnswer)> ended) {
  if (ended) ended({});
}

Alert::Answer declineAtTerminal(const Alert& alert) {
  printError(alert.title, alert.message);
  return Alert::Answer::Alternate;
}

void TerminalShell::exitProcess(int status) {
  std::cout.flush();
  printError("Error", "The feed could not be written to /tmp. The library was not saved.");
  std::_Exit(status);
}

namespace {

// What was typed, without its line break; nothing at the end of input or on an interrupt.
std::optional<std::string> readLine(int interrupts) {
  pollfd sources[] = {{STDIN_FILENO, POLLIN, 0}, {interrupts, POLLIN, 0}};
  while (::poll(sources, 2, -1) < 0 && errno == EINTR) continue;
  if (sources[1].revents != 0) return std::nullopt;
  char text[256];
  const ssize_t length = ::read(STDIN_FILENO, text, sizeof text);
  if (length <= 0) return std::nullopt;
  std::string line(text, static_cast<std::size_t>(length));
  if (line.ends_with('\n')) line.pop_back();
  return line;
}

}  // namespace

std::optional<Alert::Answer> askAtTerminal(Alert& alert, int interrupts) {
  if (::isatty(STDIN_FILENO) == 0 || ::isatty(STDERR_FILENO) == 0) return std::nullopt;
  for (;;) {
    // The status line, if any, makes room for the question.
    std::cerr << "\r\033[K" << alert.message
              << "\n[k]eep, [r]eplace, [c]ancel; K or R for all: " << std::flush;
    const std::optional<std::string> line = readLine(interrupts);
    if (!line) {
      std::cerr << '\n';
      return Alert::Answer::Other;
    }
    if (alert.checkBox) alert.checkBox->isOn = *line == "K" || *line == "R";
    if (*line == "k" || *line == "K") return Alert::Answer::Default;
    if (*line == "r" || *line == "R") return Alert::Answer::Alternate;
    if (*line == "c" || *line == "C") return Alert::Answer::Other;
  }
}

}  // namespace clipwave
