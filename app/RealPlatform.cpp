#include "app/RealPlatform.h"

namespace clipwave {

RealPlatform::RealPlatform(const std::string& executablePath, RunLoop& runLoop, SystemClock& clock,
                           ApplicationShell& shell, InterfaceLoader& interfaces, Log& log)
    : runLoop_(runLoop),
      clock_(clock),
      interfaces_(interfaces),
      log_(log),
      application_(runLoop, shell),
      files_(makeFileManager()),
      process_(makeProcessInfo()),
      bundle_(std::make_unique<Bundle>(*files_, findResourceFolder(*files_, executablePath))),
      movies_(makeMovieOpener()),
      aliases_(makeAliasManager(clock)),
      workspace_(makeWorkspace(*files_)),
      urls_(makeURLLoading(runLoop, *files_)) {
  const auto folder = process_->configurationFolder();
  defaults_ = std::make_unique<UserDefaultsController>(
      *files_, folder ? stringByAppendingPathComponent(*folder, "Clipwave/defaults.plist") : std::string());
}

ApplicationServices RealPlatform::services() {
  return {application_, clock_,      runLoop_,       *files_, *process_,
          *bundle_,     *defaults_,  notifications_, log_,    *movies_,
          *aliases_,    *workspace_, interfaces_,    *urls_,  generalPasteboard_};
}

}  // namespace clipwave
