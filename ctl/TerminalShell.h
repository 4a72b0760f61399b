// The application's shell in a terminal: alerts become lines on standard error, questions are asked only of a
// person.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/appkit/Application.h"

namespace clipwave {

class TerminalShell final : public ApplicationShell {
 public:
  // Answers a question in place of the user, its check box included; nothing where it has no answer to it.
  using Answerer = std::function<std::optional<Alert::Answer>(Alert&)>;
  void setAnswerer(Answerer answerer) { answerer_ = std::move(answerer); }
  // What Open panels are answered with; nothing is "Cancel".
  void setChosenPaths(OpenPanelAnswer paths) { chosenPaths_ = std::move(paths); }
  // Whether any alert was shown that was not answered by the answerer: the command has failed.
  bool hasFailed() const { return failed_; }

  Alert::Answer runAlert(Alert& alert) override;
  OpenPanelAnswer runOpenPanel(const OpenPanel&) override { return chosenPaths_; }
  void beginAlertSheet(Alert alert, Window& window, std::function<void(Alert::Answer)> ended) override;
  void beginOpenPanelSheet(OpenPanel panel, Window& window,
                           std::function<void(OpenPanelAnswer)> ended) override;
  void beep() override {}
  void exitProcess(int status) override;

 private:
  Answerer answerer_;
  OpenPanelAnswer chosenPaths_;
  bool failed_ = false;
};

// One line on standard error: "title: message".
void printError(const std::string& title, const std::string& message);

// Tells what the alert says, and answers "Cancel": for a question that leads on to a window.
Alert::Answer declineAtTerminal(const Alert& alert);

// Asks a person at the terminal what becomes of a file that exists; nothing where no person is there. The end
// of input, and anything to be read from the descriptor `interrupts`, is the answer "Cancel".
std::optional<Alert::Answer> askAtTerminal(Alert& alert, int interrupts);

}  // namespace clipwave
