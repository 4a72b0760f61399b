#include "platform/dotmac/MemberSettings.h"

namespace clipwave {

std::optional<MemberSettings> MemberSettings::fromDefaults(const UserDefaultsController& defaults) {
  MemberSettings settings;
  settings.name = defaults.string("dotMacMemberName");
  settings.address = defaults.string("dotMacAddress");
  if (settings.name.empty() || settings.address.empty()) return std::nullopt;
  settings.homePageBaseURL = defaults.string("dotMacHomePageURL");
  if (!settings.homePageBaseURL.ends_with('/')) settings.homePageBaseURL += '/';
  settings.mayGoUnencrypted = defaults.boolean("dotMacAllowsPlainHTTP");
  return settings;
}

}  // namespace clipwave
