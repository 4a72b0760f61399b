// Where the member's password is kept: in the desktop's secret service, or where that is missing or refuses
// in a file that only its owner can read.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/Error.h"
#include "platform/foundation/FileManager.h"

namespace clipwave {

// Whose password, and where it is accepted.
struct SecretAccount {
  std::string address;  // of the iDisk
  std::string member;

  bool operator==(const SecretAccount&) const = default;
};

class SecretStore {
 public:
  virtual ~SecretStore() = default;
  // None when none is kept for that account. Fails when the secret service or the file says why it cannot
  // tell.
  virtual Result<std::optional<std::string>> password(const SecretAccount& account) = 0;
  // Replaces what is kept for the account; "" removes it. Fails when neither the secret service nor the file
  // takes the password, or when one of them cannot remove its own.
  virtual Result<void> setPassword(const SecretAccount& account, std::string_view password) = 0;
};

// `filePath`: of the file that serves where the secret service does not; "" for none.
std::unique_ptr<SecretStore> makeSecretStore(FileManager& files, std::string filePath);

}  // namespace clipwave
