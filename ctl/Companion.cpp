#include "ctl/Companion.h"

namespace clipwave {

namespace {

class SilentLog final : public Log {
 public:
  void write(std::string_view) override {}
};

}  // namespace

Companion::Companion(const std::string& executablePath, bool verbose)
    : isVerbose_(verbose), runLoop_(makeRunLoop(clock_)) {
  if (verbose) {
    log_ = std::make_unique<StandardErrorLog>("clipwavectl");
  } else {
    log_ = std::make_unique<SilentLog>();
  }
  platform_ = std::make_unique<RealPlatform>(executablePath, *runLoop_, clock_, shell_, interfaces_, *log_);
  program_ = std::make_unique<ClipwaveProgram>(platform_->services());
}

ExitStatus Companion::openLibrary() {
  if (const auto& error = defaults().loadError()) {
    printError("Settings", error->localizedDescription);
    return kFailed;
  }
  controller().awakeWithoutWindow();
  if (controller().channelController().managedObjectContext() != nullptr) return kDone;
  const auto& error = delegate().storeError();
  return error && error->code == kFileLockingError ? kLibraryOpenElsewhere : kFailed;
}

ExitStatus Companion::finish() {
  runLoop_->runUntilIdle();
  platform_->application().terminate();
  return shell_.hasFailed() || !platform_->application().isTerminated() ? kFailed : kDone;
}

}  // namespace clipwave
