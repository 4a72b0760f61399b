// The platform as it really is: owns the services that every process of ours is built on.
#pragma once

#include <memory>
#include <string>

#include "app/ApplicationServices.h"
#include "platform/foundation/HTTPClient.h"

namespace clipwave {

class RealPlatform {
 public:
  // `executablePath` is the running program's own file, beside which the resources are looked for; the rest
  // is what a process chooses. All of it outlives the platform.
  RealPlatform(const std::string& executablePath, RunLoop& runLoop, SystemClock& clock,
               ApplicationShell& shell, InterfaceLoader& interfaces, Log& log);

  ApplicationServices services();
  Application& application() { return application_; }
  FileManager& files() { return *files_; }
  UserDefaultsController& defaults() { return *defaults_; }
  Pasteboard& generalPasteboard() { return generalPasteboard_; }

 private:
  RunLoop& runLoop_;
  SystemClock& clock_;
  InterfaceLoader& interfaces_;
  Log& log_;
  Application application_;
  std::unique_ptr<FileManager> files_;
  std::unique_ptr<ProcessInfo> process_;
  std::unique_ptr<Bundle> bundle_;
  std::unique_ptr<UserDefaultsController> defaults_;
  NotificationCenter notifications_;
  std::unique_ptr<MovieOpener> movies_;
  std::unique_ptr<AliasManager> aliases_;
  std::unique_ptr<Workspace> workspace_;
  std::unique_ptr<URLLoading> urls_;
  Pasteboard generalPasteboard_;
  std::unique_ptr<HTTPClient> http_;
  std::unique_ptr<SecretStore> secrets_;
  std::unique_ptr<DotMacKit> dotMac_;
  std::unique_ptr<CaptureKit> captureKit_;
};

}  // namespace clipwave
