// What the library's records ask of the running application, answered from its services and its channel list.
#pragma once

#include <optional>
#include <string>

#include "app/ApplicationServices.h"
#include "model/LibraryHost.h"
#include "platform/appkit/ArrayController.h"

namespace clipwave {

class ApplicationLibraryHost final : public LibraryHost {
 public:
  ApplicationLibraryHost(const ApplicationServices& services, ArrayController& channelController)
      : services_(services), channelController_(channelController) {}

  Clock& clock() override { return services_.clock; }
  RunLoop& runLoop() override { return services_.runLoop; }
  FileManager& files() override { return services_.files; }
  ProcessInfo& process() override { return services_.process; }
  UserDefaultsController& defaults() override { return services_.defaults; }
  NotificationCenter& notifications() override { return services_.notifications; }
  Log& log() override { return services_.log; }
  MovieOpener& movies() override { return services_.movies; }
  AliasManager& aliases() override { return services_.aliases; }
  ManagedObject* selectedChannel() override;
  std::optional<DotMacMember> dotMacMember() override;
  void showCriticalAlert(const std::string& title, const std::string& message) override;
  std::string localizedString(const std::string& key, const std::string& table) override;

 private:
  ApplicationServices services_;
  ArrayController& channelController_;
};

}  // namespace clipwave
