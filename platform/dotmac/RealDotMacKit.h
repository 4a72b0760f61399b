// The .Mac service over any WebDAV server.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "platform/dotmac/DotMacKit.h"
#include "platform/dotmac/SecretStore.h"
#include "platform/foundation/Clock.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/HTTPClient.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/UserDefaultsController.h"

namespace clipwave {

// What the kit works with; all of it must outlive the kit, its accounts, sessions and transactions.
struct DotMacServices {
  RunLoop& runLoop;
  HTTPClient& http;
  FileManager& files;
  UserDefaultsController& defaults;
  SecretStore& secrets;
  Clock& clock;
  // Why something failed that the callers learn as a number only: one line each.
  Log& log;
  // Shows a page of the service to the user.
  std::function<void(std::string_view url)> openURL;
};

struct DotMacOptions {
  // How long a question that is answered at once may take.
  Seconds answerTimeout{30};
  // How long a failed or aborted upload may take to end: for the answer to a MOVE that is under way, and for
  // the removal of the temporary file.
  Seconds cleanUpTimeout{5};
  // The same from when a server first answers that it still holds that file locked.
  Seconds lockedTimeout{30};
};

std::unique_ptr<DotMacKit> makeDotMacKit(DotMacServices services, DotMacOptions options = {});

}  // namespace clipwave
