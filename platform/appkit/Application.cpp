#include "platform/appkit/Application.h"

#include <utility>

#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

Alert makeAlert(Alert::Style style, std::string_view title, std::string_view message,
                std::string_view defaultButton, std::string_view alternateButton,
                std::string_view otherButton) {
  Alert alert;
  alert.style = style;
  alert.title = title;
  alert.message = message;
  alert.defaultButton = defaultButton;
  alert.alternateButton = alternateButton;
  alert.otherButton = otherButton;
  return alert;
}

}  // namespace

Alert::Answer Application::runAlertPanel(std::string_view title, std::string_view message,
                                         std::string_view defaultButton, std::string_view alternateButton,
                                         std::string_view otherButton) {
  Alert alert =
      makeAlert(Alert::Style::Informational, title, message, defaultButton, alternateButton, otherButton);
  return runAlert(alert);
}

Alert::Answer Application::runCriticalAlertPanel(std::string_view title, std::string_view message,
                                                 std::string_view defaultButton,
                                                 std::string_view alternateButton,
                                                 std::string_view otherButton) {
  Alert alert =
      makeAlert(Alert::Style::Critical, title, message, defaultButton, alternateButton, otherButton);
  return runAlert(alert);
}

void Application::beginAlertSheet(Alert alert, Window& window, std::function<void(Alert::Answer)> ended) {
  if (!ended) ended = [](Alert::Answer) {};
  shell_.beginAlertSheet(std::move(alert), window, std::move(ended));
}

void Application::beginOpenPanelSheet(OpenPanel panel, Window& window,
                                      std::function<void(OpenPanelAnswer)> ended) {
  if (!ended) ended = [](const OpenPanelAnswer&) {};
  shell_.beginOpenPanelSheet(std::move(panel), window, std::move(ended));
}

void Application::beginSheet(Window& sheet, Window& window, std::function<void(int)> ended) {
  // Asked for twice (two clicks on one button): the sheet that is up stays the only one, with its own
  // handler.
  if (sheets_.contains(&sheet)) return;
  sheets_.emplace(&sheet, std::make_pair(&window, std::move(ended)));
  window.setAttachedSheet(&sheet);
  sheet.makeKeyAndOrderFront();
}

void Application::endSheet(Window& sheet, int returnCode) {
  const auto found = sheets_.find(&sheet);
  if (found == sheets_.end()) return;
  const auto [window, ended] = std::move(found->second);
  sheets_.erase(found);
  // Another sheet on the same window, begun while this one was up, is the window's sheet from now on.
  Window* remaining = nullptr;
  for (const auto& [other, entry] : sheets_) {
    if (entry.first == window) remaining = other;
  }
  window->setAttachedSheet(remaining);
  if (ended) {
    ended(returnCode);
  } else {
    sheet.orderOut();
  }
}

void Application::runModalForWindow(Window& window) {
  window.makeKeyAndOrderFront();
  runLoop_.runModal();
  // Quitting ends every modal run that this one stands in.
  if (terminated_ && runLoop_.mode() == RunLoop::Mode::Modal) runLoop_.stopModal();
}

bool Application::presentError(const Error& error) {
  const Error shown = delegate_ != nullptr ? delegate_->willPresentError(error) : error;
  runAlertPanel("", shown.localizedDescription, localized("Alerts", "OK"));
  return false;
}

void Application::terminate() {
  // The question that the delegate asks may itself bring another request to quit.
  if (terminated_ || terminating_) return;
  terminating_ = true;
  const TerminateReply reply =
      delegate_ != nullptr ? delegate_->applicationShouldTerminate() : TerminateReply::TerminateNow;
  terminating_ = false;
  if (reply == TerminateReply::TerminateCancel) return;
  terminated_ = true;
  if (runLoop_.mode() == RunLoop::Mode::Modal) runLoop_.stopModal();
  runLoop_.stop();
}

}  // namespace clipwave
