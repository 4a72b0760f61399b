// The .Mac member account as it is configured in the user's settings, without its password.
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/UserDefaultsController.h"

namespace clipwave {

struct MemberSettings {
  // The user defaults of the account.
  static constexpr const char* kName = "dotMacMemberName";
  static constexpr const char* kAddress = "dotMacAddress";
  static constexpr const char* kHomePage = "dotMacHomePageURL";
  static constexpr const char* kAllowsPlainHTTP = "dotMacAllowsPlainHTTP";
  static constexpr const char* kExpiryDate = "dotMacExpiryDate";
  static constexpr const char* kSignUpPage = "dotMacSignUpURL";
  static constexpr const char* kRenewalPage = "dotMacRenewalURL";

  std::string name;
  std::string address;          // http or https, of the iDisk's top level
  std::string homePageBaseURL;  // http or https, ends in "/"
  bool mayGoUnencrypted = false;

  // None while the member's name or the address of the iDisk is not set.
  static std::optional<MemberSettings> fromDefaults(const UserDefaultsController& defaults);
};

}  // namespace clipwave
