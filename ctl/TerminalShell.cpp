#include "ctl/TerminalShell.h"

#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace clipwave {

void printError(const std::string& title, const std::string& message) {
  std::cerr << (title.empty() ? std::string("Error") : title) << ": " << message << '\n';
}

Alert::Answer TerminalShell::runAlert(Alert& alert) {
  if (answerer_) {
    if (const auto answer = answerer_(alert)) return *answer;
  }
  failed_ = true;
  printError(alert.title, alert.message);
  return Alert::Answer::Default;
}

void TerminalShell::beginAlertSheet(Alert alert, Window&, std::function<void(Alert::Answer)> ended) {
  const Alert::Answer answer = runAlert(alert);
  if (ended) ended(answer);
}

void TerminalShell::beginOpenPanelSheet(OpenPanel, Window&, std::function<void(OpenPanelAnswer)> ended) {
  if (ended) ended({});
}

void TerminalShell::exitProcess(int status) {
  std::cout.flush();
  printError("Error", "The feed could not be written. Nothing of this run has been saved.");
  std::_Exit(status);
}

std::optional<Alert::Answer> askAtTerminal(Alert& alert) {
  if (::isatty(STDIN_FILENO) == 0 || ::isatty(STDERR_FILENO) == 0) return std::nullopt;
  for (;;) {
    std::cerr << alert.message << "\n[k]eep, [r]eplace, [c]ancel; K or R for all: " << std::flush;
    std::string line;
    if (!std::getline(std::cin, line)) return Alert::Answer::Other;
    if (line.size() != 1) continue;
    if (alert.checkBox && (line == "K" || line == "R")) alert.checkBox->isOn = true;
    switch (line[0]) {
      case 'k':
      case 'K':
        return Alert::Answer::Default;
      case 'r':
      case 'R':
        return Alert::Answer::Alternate;
      case 'c':
        return Alert::Answer::Other;
      default:
        break;
    }
  }
}

}  // namespace clipwave
