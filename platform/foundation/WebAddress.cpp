#include "platform/foundation/WebAddress.h"

#include <arpa/inet.h>
#include <curl/curl.h>

#include <memory>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/URLs.h"

namespace clipwave {
namespace {

using Parts = std::unique_ptr<CURLU, void (*)(CURLU*)>;

// Nothing where the URL has no such part.
std::optional<std::string> partOf(const Parts& parts, CURLUPart part, unsigned flags = 0) {
  char* text = nullptr;
  if (curl_url_get(parts.get(), part, &text, flags) != CURLUE_OK) return std::nullopt;
  std::string copy = text;
  curl_free(text);
  return copy;
}

// libcurl asks nobody for the address of "localhost".
bool isLoopbackHost(std::string_view host) {
  if (host == "localhost") return true;
  const std::string bare(trimmed(host, "[]"));
  in_addr v4{};
  if (::inet_pton(AF_INET, bare.c_str(), &v4) == 1) return ntohl(v4.s_addr) >> 24 == IN_LOOPBACKNET;
  in6_addr v6{};
  return ::inet_pton(AF_INET6, bare.c_str(), &v6) == 1 && IN6_IS_ADDR_LOOPBACK(&v6);
}

}  // namespace

std::optional<WebAddress> webAddressOf(std::string_view url) {
  if (!isWebURL(url)) return std::nullopt;
  const Parts parts(curl_url(), &curl_url_cleanup);
  if (curl_url_set(parts.get(), CURLUPART_URL, std::string(url).c_str(), 0) != CURLUE_OK) return std::nullopt;
  WebAddress address;
  address.host = lowerCased(partOf(parts, CURLUPART_HOST).value_or(""));
  if (address.host.empty()) return std::nullopt;
  const auto port = partOf(parts, CURLUPART_PORT, CURLU_NO_DEFAULT_PORT);
  address.hostAndPort = address.host + (port ? ":" + *port : "");
  const std::string scheme = schemeOf(url);
  address.origin = scheme + "://" + address.hostAndPort;
  address.isEncrypted = scheme == "https";
  address.isLoopback = isLoopbackHost(address.host);
  address.hasUserInfo = partOf(parts, CURLUPART_USER) || partOf(parts, CURLUPART_PASSWORD);
  return address;
}

std::string resolvedURL(std::string_view reference, std::string_view base) {
  const Parts parts(curl_url(), &curl_url_cleanup);
  for (const std::string_view url : {base, reference}) {
    // What leads out of the web is told from what is no URL at all by whoever asks.
    const auto code =
        curl_url_set(parts.get(), CURLUPART_URL, std::string(url).c_str(), CURLU_NON_SUPPORT_SCHEME);
    if (code != CURLUE_OK) return {};
  }
  curl_url_set(parts.get(), CURLUPART_FRAGMENT, nullptr, 0);
  return partOf(parts, CURLUPART_URL).value_or("");
}

}  // namespace clipwave
