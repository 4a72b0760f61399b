#include "platform/foundation/HTTPSetUp.h"

#include <arpa/inet.h>
#include <curl/curl.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

#include "platform/foundation/ASCII.h"

namespace clipwave {
namespace {

constexpr std::size_t kMostHeadBytes = std::size_t{256} << 10;  // of all answers of a transfer together
constexpr std::size_t kLongestHost = 255;                       // bytes; of a name in a sentence

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

long curlMilliseconds(Seconds time) {
  return static_cast<long>(std::clamp(time.count() * 1000, 1.0, double{std::numeric_limits<int>::max()}));
}

void setUpForWeb(void* easy, const std::string& userAgent, const std::string& certificateAuthorities) {
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_USERAGENT, userAgent.c_str());
  // A resolver that hangs is left to itself when the time is up.
  curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
  if (!certificateAuthorities.empty()) {
    curl_easy_setopt(easy, CURLOPT_CAINFO, certificateAuthorities.c_str());
    curl_easy_setopt(easy, CURLOPT_CAPATH, nullptr);
  }
}

long statusOf(void* easy) {
  long status = 0;
  curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
  return status;
}

std::optional<WebAddress> webAddressOf(const char* url) {
  const Parts parts(curl_url(), &curl_url_cleanup);
  if (curl_url_set(parts.get(), CURLUPART_URL, url, 0) != CURLUE_OK) return std::nullopt;
  WebAddress address;
  address.host = partOf(parts, CURLUPART_HOST).value_or("");
  if (address.host.empty()) return std::nullopt;
  const std::string scheme = lowerCased(partOf(parts, CURLUPART_SCHEME).value_or(""));
  const std::string host = lowerCased(address.host);
  address.origin =
      scheme + "://" + host + ":" + partOf(parts, CURLUPART_PORT, CURLU_DEFAULT_PORT).value_or("");
  address.isEncrypted = scheme == "https";
  address.isLoopback = isLoopbackHost(host);
  address.hasUserInfo = partOf(parts, CURLUPART_USER) || partOf(parts, CURLUPART_PASSWORD);
  return address;
}

std::string shownHost(std::string_view host) {
  return std::string(host.substr(0, kLongestHost));
}

bool HTTPHead::take(std::string_view line) {
  if (line.starts_with("HTTP/")) {
    progress_ = FailedTransfer::Answer::WithinHead;
    const std::size_t blank = line.find(' ');
    isInterim_ = blank != line.npos && line.substr(blank + 1).starts_with('1');
  }
  if (line == "\r\n" || line == "\n")
    progress_ = isInterim_ ? FailedTransfer::Answer::None : FailedTransfer::Answer::HeadComplete;
  size_ += line.size();
  return size_ <= kMostHeadBytes;
}

}  // namespace clipwave
