// The running application: alerts, sheets, modal runs, errors shown, quitting.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/Alert.h"
#include "platform/appkit/OpenPanel.h"
#include "platform/appkit/Window.h"
#include "platform/foundation/Error.h"
#include "platform/foundation/RunLoop.h"

namespace clipwave {

// What the application asks the world for: pixels and answers. The desktop shows dialogues; the companion
// writes to the terminal; a test answers from a script.
class ApplicationShell {
 public:
  virtual ~ApplicationShell() = default;
  // Shows the alert and returns the answer; the run loop is in modal mode meanwhile. The check box's state is
  // written back.
  virtual Alert::Answer runAlert(Alert& alert) = 0;
  // Runs the panel application-modally.
  virtual OpenPanelAnswer runOpenPanel(const OpenPanel& panel) = 0;
  // Shows the alert or the panel as a sheet on `window` and returns at once; `ended` is called from the loop,
  // once.
  virtual void beginAlertSheet(Alert alert, Window& window, std::function<void(Alert::Answer)> ended) = 0;
  virtual void beginOpenPanelSheet(OpenPanel panel, Window& window,
                                   std::function<void(OpenPanelAnswer)> ended) = 0;
  virtual void beep() = 0;
  // Ends the process at once; does not return (a test's shell may record the status and throw out of the
  // call).
  virtual void exitProcess(int status) = 0;
};

enum class TerminateReply { TerminateNow, TerminateCancel };

class ApplicationDelegate {
 public:
  virtual ~ApplicationDelegate() = default;
  virtual TerminateReply applicationShouldTerminate() = 0;
  // May rewrite an error before it is shown.
  virtual Error willPresentError(const Error& error) = 0;
  virtual void openFiles(const std::vector<std::string>& paths) = 0;
  virtual bool applicationShouldTerminateAfterLastWindowClosed() = 0;
};

class Application {
 public:
  // Both must outlive the application.
  Application(RunLoop& runLoop, ApplicationShell& shell) : runLoop_(runLoop), shell_(shell) {}
  virtual ~Application() = default;

  RunLoop& runLoop() { return runLoop_; }
  void setDelegate(ApplicationDelegate* delegate) { delegate_ = delegate; }
  ApplicationDelegate* delegate() const { return delegate_; }

  // NSRunAlertPanel and NSRunCriticalAlertPanel: modal for the whole application, returns the answer.
  Alert::Answer runAlert(Alert& alert) { return shell_.runAlert(alert); }
  Alert::Answer runAlertPanel(std::string_view title, std::string_view message,
                              std::string_view defaultButton, std::string_view alternateButton = {},
                              std::string_view otherButton = {});
  Alert::Answer runCriticalAlertPanel(std::string_view title, std::string_view message,
                                      std::string_view defaultButton, std::string_view alternateButton = {},
                                      std::string_view otherButton = {});
  // NSBeginAlertSheet; `ended` may be empty.
  void beginAlertSheet(Alert alert, Window& window, std::function<void(Alert::Answer)> ended);
  OpenPanelAnswer runOpenPanel(const OpenPanel& panel) { return shell_.runOpenPanel(panel); }
  void beginOpenPanelSheet(OpenPanel panel, Window& window, std::function<void(OpenPanelAnswer)> ended);

  // Attaches `sheet` to `window` and shows it; modal for that window only. `ended` is called by endSheet with
  // its code, before endSheet returns; it is the end handler that orders the sheet out (without a handler
  // endSheet does). Does nothing when `sheet` is a sheet already.
  void beginSheet(Window& sheet, Window& window, std::function<void(int returnCode)> ended);
  // Does nothing when `sheet` is no sheet at the moment.
  void endSheet(Window& sheet, int returnCode = 0);
  // Shows the window and runs the loop in modal mode until stopModal.
  void runModalForWindow(Window& window);
  void stopModal() { runLoop_.stopModal(); }

  // Shows an error in an alert with the button "OK", after the delegate's willPresentError. Answers whether a
  // recovery succeeded: errors that offer none answer false.
  bool presentError(const Error& error);

  // The quit sequence: asks the delegate; ends the run loop when it says now. isTerminated() then stays true.
  void terminate();
  bool isTerminated() const { return terminated_; }
  // Ends the process at once, nothing saved.
  void exitProcess(int status) { shell_.exitProcess(status); }
  void beep() { shell_.beep(); }

 private:
  RunLoop& runLoop_;
  ApplicationShell& shell_;
  ApplicationDelegate* delegate_ = nullptr;
  std::map<Window*, std::pair<Window*, std::function<void(int)>>> sheets_;
  bool terminated_ = false;
  bool terminating_ = false;  // while the delegate is being asked
};

}  // namespace clipwave
