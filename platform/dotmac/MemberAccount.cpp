#include "platform/dotmac/MemberAccount.h"

namespace clipwave {

std::optional<DMMemberAccount> DMMemberAccount::accountFromPreferences(
    const UserDefaultsController& defaults) {
  DMMemberAccount account;
  account.name_ = defaults.string("dotMacMemberName");
  account.address_ = defaults.string("dotMacAddress");
  if (account.name_.empty() || account.address_.empty()) return std::nullopt;
  account.homePageBaseURL_ = defaults.string("dotMacHomePageURL");
  if (!account.homePageBaseURL_.ends_with('/')) account.homePageBaseURL_ += '/';
  return account;
}

}  // namespace clipwave
