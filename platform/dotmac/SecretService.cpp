#include "platform/dotmac/SecretService.h"

#include <libsecret/secret.h>

#include <utility>

#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

constexpr char kServer[] = "server";
constexpr char kMember[] = "member";
constexpr int kRefused = 2;

const SecretSchema& schema() {
  static const SecretSchema kSchema = [] {
    SecretSchema filled = {};
    filled.name = "org.clipwave.Member";
    filled.flags = SECRET_SCHEMA_NONE;
    filled.attributes[0] = {kServer, SECRET_SCHEMA_ATTRIBUTE_STRING};
    filled.attributes[1] = {kMember, SECRET_SCHEMA_ATTRIBUTE_STRING};
    return filled;
  }();
  return kSchema;
}

// What GLib says went wrong, as ours; frees it.
Error taken(GError* error, int code) {
  Error ours{"SecretService",
             code,
             error != nullptr ? error->message : localized("Account", "The secret service refused."),
             {}};
  g_clear_error(&error);
  return ours;
}

// Whether the session has a bus with a secret service on it. The process is to live on when the bus ends.
Result<void> findService() {
  GError* error = nullptr;
  GDBusConnection* const bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error);
  if (bus == nullptr) return taken(error, kNoSecretService);
  g_dbus_connection_set_exit_on_close(bus, FALSE);
  SecretService* const service = secret_service_get_sync(SECRET_SERVICE_NONE, nullptr, &error);
  g_object_unref(bus);
  if (service == nullptr) return taken(error, kNoSecretService);
  g_object_unref(service);
  return {};
}

class DesktopSecretService final : public SecretStore {
 public:
  Result<std::optional<std::string>> password(const SecretAccount& account) override {
    if (auto found = findService(); !found) return found.error();
    GError* error = nullptr;
    char* const secret =
        secret_password_lookup_sync(&schema(), nullptr, &error, kServer, account.address.c_str(), kMember,
                                    account.member.c_str(), nullptr);
    if (error != nullptr) return taken(error, kRefused);
    if (secret == nullptr) return std::optional<std::string>();
    std::string password = secret;
    secret_password_free(secret);
    return std::optional(std::move(password));
  }

  Result<void> setPassword(const SecretAccount& account, std::string_view password) override {
    if (auto found = findService(); !found) return found;
    GError* error = nullptr;
    if (password.empty()) {
      secret_password_clear_sync(&schema(), nullptr, &error, kServer, account.address.c_str(), kMember,
                                 account.member.c_str(), nullptr);
      return error == nullptr ? Result<void>() : taken(error, kRefused);
    }
    const std::string label = "Clipwave: " + account.member + " at " + account.address;
    const bool isStored = secret_password_store_sync(
        &schema(), SECRET_COLLECTION_DEFAULT, label.c_str(), std::string(password).c_str(), nullptr, &error,
        kServer, account.address.c_str(), kMember, account.member.c_str(), nullptr);
    return isStored ? Result<void>() : taken(error, kRefused);
  }
};

}  // namespace

std::unique_ptr<SecretStore> makeSecretService() {
  return std::make_unique<DesktopSecretService>();
}

}  // namespace clipwave
