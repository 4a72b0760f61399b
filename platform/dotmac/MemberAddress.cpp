#include "platform/dotmac/MemberAddress.h"

#include <arpa/inet.h>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/URLs.h"

namespace clipwave {
namespace {

// What stands between "//" and the path; "" where the text is no web URL.
std::string_view authorityOf(std::string_view url) {
  if (!isWebURL(url)) return {};
  const std::string_view rest = url.substr(url.find("://") + 3);
  return rest.substr(0, rest.find_first_of("/?#"));
}

std::string_view hostOf(std::string_view url) {
  const std::string_view authority = authorityOf(url);
  // An IPv6 address holds colons of its own, in brackets.
  const std::size_t colon = authority.find(':', authority.rfind(']') + 1);
  return authority.substr(0, colon);
}

bool isThisMachine(const std::string& host) {
  if (lowerCased(host) == "localhost" || host == "[::1]") return true;
  in_addr address{};
  return ::inet_pton(AF_INET, host.c_str(), &address) == 1 && ntohl(address.s_addr) >> 24 == IN_LOOPBACKNET;
}

}  // namespace

std::string hostAndPortOf(std::string_view url) {
  const std::string_view authority = authorityOf(url);
  return std::string(authority.substr(authority.rfind('@') + 1));
}

bool isReadableOnTheWay(std::string_view url) {
  return schemeOf(url) == "http" && !isThisMachine(std::string(hostOf(url)));
}

std::optional<std::string> troubleWithMemberAddress(std::string_view url) {
  const std::string_view authority = authorityOf(url);
  if (authority.find('@') != authority.npos)
    return "An address with a user name or a password in it is not kept; say the address without them.";
  if (hostOf(url).empty() || !isURL("http://" + std::string(authority)))
    return "An address begins with http:// or https:// and the name of a host.";
  if (url.find_first_of("?#") != url.npos) return "An address holds no \"?\" and no \"#\".";
  return std::nullopt;
}

}  // namespace clipwave
