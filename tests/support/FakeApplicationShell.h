// A desktop that answers alerts and panels from a script and keeps what it was asked.
#pragma once

#include <deque>
#include <stdexcept>

#include "platform/appkit/Application.h"

namespace clipwave::testing {

// Thrown out of exitProcess, which must not return.
struct ProcessExit {
  int status;
};

// An alert without a scripted answer gets Default when it has one button and throws otherwise. An Open panel
// that is no sheet is cancelled where the script has no paths for it. Sheets wait until the test ends them.
class FakeApplicationShell final : public ApplicationShell {
 public:
  struct AlertSheet {
    Window* window;
    std::function<void(Alert::Answer)> ended;
  };

  // The script.
  void answerAlert(Alert::Answer answer, std::optional<bool> checkBox = {}) {
    answers_.push_back({answer, checkBox});
  }
  void answerOpenPanel(OpenPanelAnswer paths) { panelAnswers_.push_back(std::move(paths)); }

  // Every alert in order, sheets included: "title|message|buttons", the buttons joined by "/".
  std::vector<std::string> alerts;
  std::vector<Alert> alertDetails;     // the same alerts in full, as they were asked
  std::vector<OpenPanel> openPanels;   // every panel in order, sheets included
  std::deque<AlertSheet> alertSheets;  // begun and not yet ended
  int beeps = 0;

  // Ends the sheet that was begun first, as the loop would.
  void endAlertSheet(Alert::Answer answer = Alert::Answer::Default) {
    const auto ended = std::move(alertSheets.at(0).ended);
    alertSheets.pop_front();
    ended(answer);
  }
  void endOpenPanelSheet(OpenPanelAnswer paths) {
    const auto ended = std::move(openPanelSheets_.at(0));
    openPanelSheets_.pop_front();
    ended(std::move(paths));
  }

  Alert::Answer runAlert(Alert& alert) override {
    record(alert);
    if (answers_.empty()) {
      if (!alert.alternateButton.empty() || !alert.otherButton.empty()) throw std::logic_error(alerts.back());
      return Alert::Answer::Default;
    }
    const auto [answer, checkBox] = answers_.front();
    answers_.pop_front();
    if (checkBox && alert.checkBox) alert.checkBox->isOn = *checkBox;
    return answer;
  }
  OpenPanelAnswer runOpenPanel(const OpenPanel& panel) override {
    openPanels.push_back(panel);
    if (panelAnswers_.empty()) return {};
    OpenPanelAnswer answer = std::move(panelAnswers_.front());
    panelAnswers_.pop_front();
    return answer;
  }
  void beginAlertSheet(Alert alert, Window& window, std::function<void(Alert::Answer)> ended) override {
    record(alert);
    alertSheets.push_back({&window, std::move(ended)});
  }
  void beginOpenPanelSheet(OpenPanel panel, Window&, std::function<void(OpenPanelAnswer)> ended) override {
    openPanels.push_back(std::move(panel));
    openPanelSheets_.push_back(std::move(ended));
  }
  void beep() override { ++beeps; }
  void exitProcess(int status) override { throw ProcessExit{status}; }

 private:
  void record(const Alert& alert) {
    std::string text = alert.title + "|" + alert.message + "|" + alert.defaultButton;
    for (const std::string& button : {alert.alternateButton, alert.otherButton})
      if (!button.empty()) text += "/" + button;
    alerts.push_back(std::move(text));
    alertDetails.push_back(alert);
  }

  std::deque<std::pair<Alert::Answer, std::optional<bool>>> answers_;
  std::deque<OpenPanelAnswer> panelAnswers_;
  std::deque<std::function<void(OpenPanelAnswer)>> openPanelSheets_;
};

}  // namespace clipwave::testing
