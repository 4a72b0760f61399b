// Which server a web URL leads to, as it is taken when a connection is made.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace clipwave {

struct WebAddress {
  std::string host;         // in lower case, an IPv6 address in its brackets
  std::string hostAndPort;  // without the scheme's own port
  // "https://host:port" in the one form in which two that lead to the same server are equal and that a
  // request's Host header has: in lower case, without a user name, without the scheme's own port.
  std::string origin;
  bool isEncrypted = false;
  bool isLoopback = false;  // the host is this machine itself
  bool hasUserInfo = false;

  // Whether whoever reads the network between here and there can read along.
  bool isReadableOnTheWay() const { return !isEncrypted && !isLoopback; }
};

// Nothing for what is no URL of the web.
std::optional<WebAddress> webAddressOf(std::string_view url);
// The URL that a reference, such as a redirect's, means as seen from `base`; without a fragment. "" where it
// means none.
std::string resolvedURL(std::string_view reference, std::string_view base);

}  // namespace clipwave
