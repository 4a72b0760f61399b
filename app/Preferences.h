// What the preferences window edits: user defaults, and the member account with its password.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/dotmac/SecretStore.h"
#include "platform/foundation/Observation.h"
#include "platform/foundation/UserDefaultsController.h"

namespace clipwave {

class Preferences {
 public:
  // Both must outlive it.
  Preferences(UserDefaultsController& defaults, SecretStore& secrets)
      : defaults_(defaults), secrets_(secrets) {}

  // Settings are named by their key in the user defaults; the password is this one.
  static constexpr std::string_view kPassword = "password";

  // Whether there is a setting of that key; without the initial values, any may be one.
  bool has(std::string_view key) const;
  // As it is shown and typed; always "" for the password.
  std::string text(std::string_view key) const;
  bool flag(std::string_view key) const { return defaults_.boolean(key); }
  // A kept password cannot be shown, only replaced. May block on the desktop's secret service.
  bool hasPassword() const;

  // Each answers what is wrong, in a sentence; nothing when it was set. An emptied text goes back to its
  // initial value. A number stays a number. Another address or another name forgets the password.
  std::optional<std::string> setText(std::string_view key, std::string_view text);
  std::optional<std::string> setFlag(std::string_view key, bool flag);

  // Called after the setting has another value.
  Observation observe(std::string_view key, std::function<void()> function);

 private:
  SecretAccount account() const;
  std::optional<std::string> set(std::string_view key, const Value& value);
  std::optional<std::string> setPassword(std::string_view password);
  std::optional<std::string> troubleWithAddress(std::string_view key, std::string_view address) const;

  UserDefaultsController& defaults_;
  SecretStore& secrets_;
  Observers<> passwordObservers_;
};

}  // namespace clipwave
