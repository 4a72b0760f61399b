#include "platform/dotmac/MemberAddress.h"

#include "platform/dotmac/WebDAVAddress.h"
#include "platform/foundation/WebAddress.h"

namespace clipwave {

std::string hostAndPortOf(std::string_view url) {
  return webAddressOf(url).value_or(WebAddress()).hostAndPort;
}

bool isReadableOnTheWay(std::string_view url) {
  const auto server = webAddressOf(url);
  return server && !server->isEncrypted && !server->isLoopback;
}

std::optional<std::string> troubleWithMemberAddress(std::string_view url) {
  const auto server = webAddressOf(url.substr(0, url.find_first_of("/?#", url.find("//") + 2)));
  if (!server) return "An address begins with http:// or https:// and the name of a host.";
  if (server->hasUserInfo)
    return "An address with a user name or a password in it is not kept; say the address without them.";
  if (url.find_first_of("?#") != url.npos) return "An address holds no \"?\" and no \"#\".";
  if (!WebDAVAddress::fromText(url)) return "The address holds characters that no address can hold.";
  return std::nullopt;
}

}  // namespace clipwave
