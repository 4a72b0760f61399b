// The .Mac member account as it is configured in the user's settings.
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/UserDefaultsController.h"

namespace clipwave {

class DMMemberAccount {
 public:
  // The configured account; none while the member's name or the address of the iDisk is not set.
  static std::optional<DMMemberAccount> accountFromPreferences(const UserDefaultsController& defaults);

  const std::string& name() const { return name_; }
  const std::string& address() const { return address_; }
  // The http address of the members' home pages, ending in "/".
  const std::string& homePageBaseURL() const { return homePageBaseURL_; }

 private:
  std::string name_;
  std::string address_;
  std::string homePageBaseURL_;
};

}  // namespace clipwave
