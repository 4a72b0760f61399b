#include "platform/foundation/HTTPSetUp.h"

#include <curl/curl.h>

#include <algorithm>
#include <limits>

namespace clipwave {
namespace {

constexpr std::size_t kLongestHost = 255;  // bytes; of a name in a sentence

}  // namespace

long curlMilliseconds(Seconds time) {
  return static_cast<long>(std::clamp(time.count() * 1000, 1.0, double{std::numeric_limits<int>::max()}));
}

void setUpForWeb(void* easy, const std::string& userAgent, const std::string& certificateAuthorities) {
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_USERAGENT, userAgent.c_str());
  // A resolver that hangs is left to itself when the time is up or the transfer is ended.
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

std::string shownHost(std::string_view host) {
  return std::string(host.substr(0, kLongestHost));
}

}  // namespace clipwave
