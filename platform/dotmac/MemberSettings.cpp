#include "platform/dotmac/MemberSettings.h"

namespace clipwave {

std::optional<MemberSettings> MemberSettings::fromDefaults(const UserDefaultsController& defaults) {
  MemberSettings settings;
  settings.name = defaults.string(kName);
  settings.address = defaults.string(kAddress);
  if (settings.name.empty() || settings.address.empty()) return std::nullopt;
  settings.homePageBaseURL = defaults.string(kHomePage);
  if (!settings.homePageBaseURL.ends_with('/')) settings.homePageBaseURL += '/';
  settings.mayGoUnencrypted = defaults.boolean(kAllowsPlainHTTP);
  return settings;
}

}  // namespace clipwave
