// What a record asks of the application that holds it; implemented by the application, faked by tests.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/coredata/ManagedObject.h"
#include "platform/foundation/Clock.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/foundation/ProcessInfo.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/UserDefaultsController.h"
#include "platform/quicktime/AliasManager.h"
#include "platform/quicktime/Movie.h"

namespace clipwave {

// The configured .Mac member account, as far as a record needs it.
struct DotMacMember {
  std::string name;
  std::string homePageBaseURL;  // ends in "/"
};

class LibraryHost {
 public:
  virtual ~LibraryHost() = default;

  virtual Clock& clock() = 0;
  virtual RunLoop& runLoop() = 0;
  virtual FileManager& files() = 0;
  virtual ProcessInfo& process() = 0;
  virtual UserDefaultsController& defaults() = 0;
  virtual NotificationCenter& notifications() = 0;
  virtual Log& log() = 0;
  virtual MovieOpener& movies() = 0;
  virtual AliasManager& aliases() = 0;

  // The one channel selected in the channel list; none when no single channel is.
  virtual ManagedObject* selectedChannel() = 0;
  virtual std::optional<DotMacMember> dotMacMember() = 0;
  // A critical alert with the button "OK", modal for the application.
  virtual void showCriticalAlert(const std::string& title, const std::string& message) = 0;
  // The entry of the strings table (the resource "<table>.plist", a dictionary) for `key`; the key itself
  // when there is none.
  virtual std::string localizedString(const std::string& key, const std::string& /*table*/) { return key; }
};

}  // namespace clipwave
