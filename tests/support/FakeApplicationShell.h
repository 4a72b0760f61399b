// A desktop that answers alerts and panels from a script and keeps what it was asked.
#pragma once

#include <gtest/gtest.h>

#include <deque>

#include "platform/appkit/Application.h"

namespace clipwave::testing {

// Thrown out of exitProcess, which must not return.
struct ProcessExit {
  int status;
};

// An alert without a scripted answer gets Default when it has one button and fails the test otherwise. An
// Open panel that is no sheet is cancelled. Sheets wait until the test ends them.
class FakeApplicationShell final : public ApplicationShell {
 public:
  struct AlertSheet {
    Alert alert;
    Window* window;
    std::function<void(Alert::Answer)> ended;
  };
  struct OpenPanelSheet {
    OpenPanel panel;
    Window* window;
    std::function<void(OpenPanelAnswer)> ended;
  };

  // The script.
  void answerAlert(Alert::Answer answer, std::optional<bool> checkBox = {}) {
    answers_.push_back({answer, checkBox});
  }

  // Every alert in order, sheets included: "title|message|buttons", the buttons joined by "/".
  std::vector<std::string> alerts;
  std::vector<Alert> alertDetails;     // the same alerts in full, as they were asked
  std::vector<OpenPanel> openPanels;   // every panel in order, sheets included
  std::deque<AlertSheet> alertSheets;  // begun and not yet ended
  std::deque<OpenPanelSheet> openPanelSheets;
  int beeps = 0;

  // Ends the sheet that was begun first, as the loop would.
  void endAlertSheet(Alert::Answer answer = Alert::Answer::Default) {
    ASSERT_FALSE(alertSheets.empty()) << "no alert sheet is up";
    const AlertSheet sheet = std::move(alertSheets.front());
    alertSheets.pop_front();
    sheet.ended(answer);
  }
  void endOpenPanelSheet(OpenPanelAnswer paths) {
    ASSERT_FALSE(openPanelSheets.empty()) << "no Open panel sheet is up";
    const OpenPanelSheet sheet = std::move(openPanelSheets.front());
    openPanelSheets.pop_front();
    sheet.ended(std::move(paths));
  }

  Alert::Answer runAlert(Alert& alert) override {
    record(alert);
    if (answers_.empty()) {
      EXPECT_TRUE(alert.alternateButton.empty() && alert.otherButton.empty()) << alerts.back();
      return Alert::Answer::Default;
    }
    const auto [answer, checkBox] = answers_.front();
    answers_.pop_front();
    if (checkBox && alert.checkBox) alert.checkBox->isOn = *checkBox;
    return answer;
  }
  OpenPanelAnswer runOpenPanel(const OpenPanel& panel) override {
    openPanels.push_back(panel);
    return {};
  }
  void beginAlertSheet(Alert alert, Window& window, std::function<void(Alert::Answer)> ended) override {
    record(alert);
    alertSheets.push_back({std::move(alert), &window, std::move(ended)});
  }
  void beginOpenPanelSheet(OpenPanel panel, Window& window,
                           std::function<void(OpenPanelAnswer)> ended) override {
    openPanels.push_back(panel);
    openPanelSheets.push_back({std::move(panel), &window, std::move(ended)});
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
};

}  // namespace clipwave::testing
