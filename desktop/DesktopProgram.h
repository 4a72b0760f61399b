// The desktop program put together: the real platform, the program over it, its windows, and the ways in
// which the desktop speaks to it.
#pragma once

#include <QObject>
#include <memory>
#include <string>
#include <vector>

#include "app/ClipwaveProgram.h"
#include "app/RealPlatform.h"
#include "desktop/Arrivals.h"
#include "desktop/DesktopInterface.h"
#include "desktop/DesktopShell.h"
#include "desktop/SingleInstance.h"
#include "desktop/TerminationSignals.h"
#include "platform/foundation/Log.h"

class QSessionManager;

namespace clipwave {

class DesktopProgram final : public QObject {
  Q_OBJECT

 public:
  // `executablePath`: of the running program, beside which its resources are looked for. Needs a
  // QApplication.
  explicit DesktopProgram(const std::string& executablePath);
  ~DesktopProgram() override;

  // Runs until the user quits, and answers the process's exit status. `arguments` are movies to be opened
  // and addresses of feeds to be imported; what is neither is told on standard error (CommandLine.h). Where
  // the program runs already, they are handed to it, and this one ends at once.
  int run(const std::vector<std::string>& arguments);

  // Opens the library and shows the window; false, with the reason told, where the program cannot go on.
  bool start(const std::vector<std::string>& items);
  DesktopInterface& interface() { return *interface_; }
  ClipwaveProgram& program() { return *program_; }
  RunLoop& runLoop() { return *runLoop_; }

 private:
  void dressApplication();
  void commitSession(QSessionManager& session);

  SystemClock clock_;
  std::unique_ptr<RunLoop> runLoop_;
  StandardErrorLog log_{"clipwave"};
  std::unique_ptr<FileManager> files_;  // of the shell
  DesktopShell shell_;
  DesktopInterfaceLoader loader_;
  std::unique_ptr<RealPlatform> platform_;
  std::unique_ptr<ClipwaveProgram> program_;
  std::unique_ptr<DesktopInterface> interface_;
  std::unique_ptr<Arrivals> arrivals_;
  std::unique_ptr<SingleInstance> instance_;
  std::unique_ptr<TerminationSignals> signals_;
};

}  // namespace clipwave
