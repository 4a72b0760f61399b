#include "platform/foundation/HTTPLoad.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/CurlLoop.h"
#include "platform/foundation/HTTPSetUp.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/URLErrors.h"
#include "platform/foundation/URLs.h"
#include "platform/foundation/WebAddress.h"

namespace clipwave {
namespace {

constexpr long kMostRedirects = 10;
constexpr std::size_t kMostValues = 16;  // of a header that comes several times; libcurl walks to each anew

// Where the parameter that begins at `start` ends: at the next ";" that no quotes enclose.
std::size_t parameterEnd(std::string_view text, std::size_t start) {
  bool isQuoted = false;
  for (std::size_t i = start; i < text.size(); ++i) {
    if (text[i] == '"') isQuoted = !isQuoted;
    if (text[i] == ';' && !isQuoted) return i;
  }
  return text.size();
}

std::string charsetOfContentType(std::string_view type) {
  for (std::size_t end = parameterEnd(type, 0); end < type.size();) {
    const std::size_t start = end + 1;
    end = parameterEnd(type, start);
    const std::string_view parameter = type.substr(start, end - start);
    const std::size_t equals = parameter.find('=');
    if (equals == parameter.npos || !equalIgnoringCase(trimmed(parameter.substr(0, equals)), "charset"))
      continue;
    return std::string(trimmed(parameter.substr(equals + 1), " \t\"'"));
  }
  return {};
}

// Whether an answer of that status brings the resource itself: not nothing, a part of it, or a word on where
// it is. libcurl lets all below 400 pass that it cannot follow.
bool isResource(long status) {
  return status >= 200 && status <= 203;
}

std::string hostOf(const char* url) {
  const std::optional<WebAddress> address = webAddressOf(url);
  return address ? shownHost(address->host) : std::string();
}

}  // namespace

HTTPLoad::HTTPLoad(std::string_view url, Purpose purpose, Seconds timeout, const URLLoadingOptions& options)
    : url_(url), keepsBody_(purpose == Purpose::Data), mostBytes_(options.mostBytes) {
  prepareCurl();
  easy_ = curl_easy_init();
  if (easy_ == nullptr) return;
  curl_easy_setopt(easy_, CURLOPT_URL, url_.c_str());
  setUpForWeb(easy_, options.userAgent, options.certificateAuthorities);
  curl_easy_setopt(easy_, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(easy_, CURLOPT_MAXREDIRS, kMostRedirects);
  curl_easy_setopt(easy_, CURLOPT_FAILONERROR, 1L);
  // libcurl says nothing of a packed body that has no end.
  curl_easy_setopt(easy_, CURLOPT_HTTP_CONTENT_DECODING, 0L);
  curl_easy_setopt(easy_, CURLOPT_TIMEOUT_MS, curlMilliseconds(timeout));
  curl_easy_setopt(easy_, CURLOPT_PREREQFUNCTION, &HTTPLoad::onRequest);
  curl_easy_setopt(easy_, CURLOPT_PREREQDATA, this);
  curl_easy_setopt(easy_, CURLOPT_HEADERFUNCTION, &HTTPLoad::onHead);
  curl_easy_setopt(easy_, CURLOPT_HEADERDATA, this);
  curl_easy_setopt(easy_, CURLOPT_WRITEFUNCTION, &HTTPLoad::onBody);
  curl_easy_setopt(easy_, CURLOPT_WRITEDATA, this);
  curl_slist* const first = curl_slist_append(nullptr, "Accept-Encoding: gzip, deflate");
  if (purpose == Purpose::Data) {
    curl_slist_append(first, "Cache-Control: no-cache");
    curl_slist_append(first, "Pragma: no-cache");
  }
  headers_ = first;
  curl_easy_setopt(easy_, CURLOPT_HTTPHEADER, first);
}

HTTPLoad::~HTTPLoad() {
  curl_easy_cleanup(easy_);
  curl_slist_free_all(static_cast<curl_slist*>(headers_));
}

int HTTPLoad::perform() {
  return easy_ != nullptr ? curl_easy_perform(easy_) : CURLE_FAILED_INIT;
}

int HTTPLoad::onRequest(void* self, char*, char*, int, int) {
  static_cast<HTTPLoad*>(self)->head_.begin();
  return CURL_PREREQFUNC_OK;
}

std::size_t HTTPLoad::onHead(char* bytes, std::size_t size, std::size_t count, void* self) {
  return static_cast<HTTPLoad*>(self)->head_.take({bytes, size * count}) ? size * count : 0;
}

std::size_t HTTPLoad::onBody(char* bytes, std::size_t size, std::size_t count, void* self) {
  return static_cast<HTTPLoad*>(self)->takeBody({bytes, size * count}) ? size * count : 0;
}

bool HTTPLoad::takeBody(std::string_view bytes) try {
  if (!isResource(status())) return false;
  if (!std::exchange(hasBody_, true) && !beginBody()) return false;
  return inflater_ ? inflater_->unpack(bytes, [this](std::string_view unpacked) { return keep(unpacked); })
                   : keep(bytes);
} catch (const std::bad_alloc&) {
  hasNoRoom_ = true;
  return false;
}

// Finds out how the body is packed; false when it cannot be unpacked.
bool HTTPLoad::beginBody() {
  const std::vector<std::string> codings = this->codings();
  if (codings.empty()) return true;
  if (codings.size() > 1) return false;
  if (codings[0] == "gzip" || codings[0] == "x-gzip") {
    inflater_ = std::make_unique<Inflater>(Inflater::Format::Gzip);
  } else if (codings[0] == "deflate") {
    inflater_ = std::make_unique<Inflater>(Inflater::Format::Deflate);
  }
  return inflater_ != nullptr;
}

bool HTTPLoad::keep(std::string_view bytes) {
  bodySize_ += static_cast<std::int64_t>(bytes.size());
  if (bodySize_ > mostBytes_) return false;
  if (keepsBody_) body_ += bytes;
  return true;
}

Result<LoadedData> HTTPLoad::result(int curlCode) {
  FailedTransfer failed{curlCode, status(), host(), head_.progress()};
  const bool isWhole = head_.isComplete(failed.status);
  if (curlCode == CURLE_OK && !isWhole) failed.curlCode = CURLE_PARTIAL_FILE;
  if (failed.curlCode == CURLE_OK && inflater_ && !inflater_->hasEnded())
    failed.curlCode = CURLE_BAD_CONTENT_ENCODING;
  const bool isJudgedHere = failed.curlCode == CURLE_OK || failed.curlCode == CURLE_WRITE_ERROR;
  if (isJudgedHere && isWhole && !isResource(failed.status)) failed.curlCode = CURLE_HTTP_RETURNED_ERROR;
  if (failed.curlCode == CURLE_OK) return LoadedData{std::move(body_), charset()};
  if (hasNoRoom_)
    return urlError(kURLErrorUnknown, localized("Network", "There is not enough memory for the data."));
  if (bodySize_ > mostBytes_) return tooLargeError(failed.host, mostBytes_);
  return transferError(failed);
}

long HTTPLoad::status() const {
  return statusOf(easy_);
}

std::string HTTPLoad::host() const {
  const char* last = nullptr;
  curl_easy_getinfo(easy_, CURLINFO_EFFECTIVE_URL, &last);
  // A redirect may have led to where there are no hosts.
  const std::string name = last != nullptr && isWebURL(last) ? hostOf(last) : std::string();
  return name.empty() ? hostOf(url_.c_str()) : name;
}

// What the last response says under that name, once or several times: one that redirects may have said
// something else.
std::vector<std::string> HTTPLoad::values(const char* name) const {
  std::vector<std::string> values;
  curl_header* header = nullptr;
  while (values.size() < kMostValues &&
         curl_easy_header(easy_, name, values.size(), CURLH_HEADER, -1, &header) == CURLHE_OK)
    values.emplace_back(header->value);
  return values;
}

std::string HTTPLoad::charset() const {
  const std::vector<std::string> types = values("Content-Type");
  return types.empty() ? std::string() : charsetOfContentType(types[0]);
}

// In what the body is packed, in lower case. What was packed for the way only is no different to us; libcurl
// has taken the chunks apart.
std::vector<std::string> HTTPLoad::codings() const {
  std::vector<std::string> codings;
  for (const char* name : {"Content-Encoding", "Transfer-Encoding"}) {
    for (const std::string& value : values(name)) {
      for (std::size_t start = 0, end = 0; start <= value.size(); start = end + 1) {
        end = std::min(value.find(',', start), value.size());
        std::string coding = lowerCased(trimmed(std::string_view(value).substr(start, end - start)));
        if (!coding.empty() && coding != "identity" && coding != "chunked")
          codings.push_back(std::move(coding));
      }
    }
  }
  return codings;
}

}  // namespace clipwave
