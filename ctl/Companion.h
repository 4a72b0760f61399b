// The companion's process: the application's classes over the real platform, without a window.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/ClipwaveProgram.h"
#include "app/RealPlatform.h"
#include "ctl/TerminalShell.h"

namespace clipwave {

// What a command ends with.
enum ExitStatus : int { kDone = 0, kFailed = 1, kUsage = 2, kLibraryOpenElsewhere = 75 };

class Companion {
 public:
  // `verbose`: log lines appear on standard error.
  Companion(const std::string& executablePath, bool verbose);

  // Opens the library, its tables and its lists. Anything but kDone has been reported.
  ExitStatus openLibrary();
  // Lets the calls run that wait for the next pass, then ends in the quit sequence, which saves. kFailed when
  // it did not save or when the user was told of any failure.
  ExitStatus finish();
  // For commands that never save.
  ExitStatus finishWithoutSaving() const { return shell_.hasFailed() ? kFailed : kDone; }

  bool isVerbose() const { return isVerbose_; }
  TerminalShell& shell() { return shell_; }
  RunLoop& runLoop() { return *runLoop_; }
  const ApplicationServices& services() const { return program_->services(); }
  UserDefaultsController& defaults() { return platform_->defaults(); }
  FileManager& files() { return platform_->files(); }
  Pasteboard& pasteboard() { return platform_->generalPasteboard(); }
  Controller& controller() { return program_->controller(); }
  lanternAppDelegate& delegate() { return program_->delegate(); }
  MainInterface& interface() { return program_->interface(); }
  ManagedObjectContext& context() { return *controller().channelController().managedObjectContext(); }

 private:
  bool isVerbose_;
  SystemClock clock_;
  TerminalShell shell_;
  StateOnlyInterfaceLoader interfaces_;
  std::unique_ptr<Log> log_;
  std::unique_ptr<RunLoop> runLoop_;
  std::unique_ptr<RealPlatform> platform_;
  std::unique_ptr<ClipwaveProgram> program_;
};

}  // namespace clipwave
