// Passwords in memory.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "platform/dotmac/SecretStore.h"

namespace clipwave::testing {

class FakeSecretStore final : public SecretStore {
 public:
  std::map<std::pair<std::string, std::string>, std::string> passwords;  // by address and member

  Result<std::optional<std::string>> password(const SecretAccount& account) override {
    const auto found = passwords.find({account.address, account.member});
    if (found == passwords.end()) return std::optional<std::string>();
    return std::optional(found->second);
  }
  Result<void> setPassword(const SecretAccount& account, std::string_view password) override {
    passwords.erase({account.address, account.member});
    if (!password.empty()) passwords[{account.address, account.member}] = password;
    return {};
  }
};

}  // namespace clipwave::testing
