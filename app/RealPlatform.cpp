#include "app/RealPlatform.h"

#include "platform/dotmac/RealDotMacKit.h"
#include "platform/quicktime/RealCaptureKit.h"

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
      urls_(makeURLLoading(runLoop, *files_)),
      http_(makeHTTPClient(runLoop)) {
  const auto folder = process_->configurationFolder();
  const auto settingsFile = [&folder](std::string_view name) {
    return folder ? stringByAppendingPathComponent(*folder, name) : std::string();
  };
  defaults_ = std::make_unique<UserDefaultsController>(*files_, settingsFile("Clipwave/defaults.plist"));
  secrets_ = makeSecretStore(*files_, settingsFile("Clipwave/password"));
  dotMac_ = makeDotMacKit({runLoop_, *http_, *files_, *defaults_, *secrets_, clock_, log_,
                           [this](std::string_view url) { workspace_->openURL(url); }});
  captureKit_ = makeCaptureKit({*files_, *defaults_, *movies_});
}

ApplicationServices RealPlatform::services() {
  return {application_,       clock_,   runLoop_,  *files_,     *process_,   *bundle_,    *defaults_,
          notifications_,     log_,     *movies_,  *aliases_,   *workspace_, interfaces_, *urls_,
          generalPasteboard_, *dotMac_, *secrets_, *captureKit_};
}

}  // namespace clipwave
