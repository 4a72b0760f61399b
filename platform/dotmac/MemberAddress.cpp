#include "platform/dotmac/MemberAddress.h"

#include <arpa/inet.h>

#include "platform/dotmac/WebDAVAddress.h"
#include "platform/foundation/URLs.h"

namespace clipwave {
namespace {

std::string hostOf(std::string_view url) {
  const std::string host = hostAndPortOf(url);
  // An IPv6 address holds colons of its own, in brackets.
  const std::size_t bracket = host.rfind(']');
  return host.substr(0, host.find(':', bracket == host.npos ? 0 : bracket));
}

bool isThisMachine(const std::string& host) {
  if (host == "localhost" || host == "[::1]") return true;
  in_addr address{};
  return ::inet_pton(AF_INET, host.c_str(), &address) == 1 && ntohl(address.s_addr) >> 24 == IN_LOOPBACKNET;
}

}  // namespace

std::string hostAndPortOf(std::string_view url) {
  const std::string origin = originOf(url).value_or("");
  const std::size_t slashes = origin.find("//");
  return slashes == origin.npos ? std::string() : origin.substr(slashes + 2);
}

bool isReadableOnTheWay(std::string_view url) {
  return schemeOf(url) == "http" && !isThisMachine(hostOf(url));
}

std::optional<std::string> troubleWithMemberAddress(std::string_view url) {
  const std::size_t path = url.find('/', url.find("//") + 2);
  if (isWebURL(url) && url.substr(0, path).find('@') != url.npos)
    return "An address with a user name or a password in it is not kept; say the address without them.";
  if (isWebURL(url) && url.find_first_of("?#") != url.npos) return "An address holds no \"?\" and no \"#\".";
  if (hostOf(url).empty() || !WebDAVAddress::fromText(url))
    return "An address begins with http:// or https:// and the name of a host.";
  return std::nullopt;
}

}  // namespace clipwave
