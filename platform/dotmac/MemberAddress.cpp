#include "platform/dotmac/MemberAddress.h"

#include "platform/dotmac/WebDAVAddress.h"
#include "platform/foundation/ASCII.h"
#include "platform/foundation/Localization.h"

namespace clipwave {

std::string hostAndPortOf(std::string_view address) {
  const auto disk = WebDAVAddress::fromText(address);
  return disk ? disk->server().hostAndPort : std::string();
}

bool isReadableOnTheWay(std::string_view address) {
  const auto disk = WebDAVAddress::fromText(address);
  return disk && disk->server().isReadableOnTheWay();
}

std::optional<std::string> troubleWithMemberAddress(std::string_view address) {
  if (trimmed(address) != address) return localized("Account", "An address has no spaces around it.");
  const auto disk = WebDAVAddress::fromText(address);
  return disk ? std::nullopt : std::optional(disk.error().localizedDescription);
}

}  // namespace clipwave
