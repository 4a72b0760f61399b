#include "platform/foundation/HTTPTransfer.h"

#include <curl/curl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <utility>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/CurlLoop.h"
#include "platform/foundation/HTTPSetUp.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/URLErrors.h"
#include "platform/foundation/URLs.h"

namespace clipwave {
namespace {

constexpr long kUploadBufferSize = 512L << 10;
constexpr std::size_t kMostUnannounced = std::size_t{64} << 10;  // bytes; of a body that waits for no word

bool isToken(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    const char lower = lowerCased(c);
    return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos;
  });
}

bool hasControls(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) < ' ' && c != '\t') || c == '\x7f';
  });
}

bool canBeSent(const std::pair<std::string, std::string>& header) {
  const auto& [name, value] = header;
  return isToken(name) && !hasControls(value) && !equalIgnoringCase(name, "Content-Length") &&
         !equalIgnoringCase(name, "Transfer-Encoding");
}

// A server may well want to be told that nothing comes.
bool hasBodyOfItsOwn(std::string_view method) {
  return method == "PUT" || method == "POST" || method == "PATCH";
}

bool isBrokenOff(int curlCode) {
  return curlCode == CURLE_SEND_ERROR || curlCode == CURLE_RECV_ERROR || curlCode == CURLE_PARTIAL_FILE;
}

}  // namespace

HTTPTransfer::HTTPTransfer(HTTPRequest request, std::shared_ptr<HTTPClientState> client,
                           std::shared_ptr<void> handle, std::optional<Seconds> timeout)
    : request_(std::move(request)), client_(std::move(client)), handle_(std::move(handle)) {
  refusal_ = findRefusal();
  if (easy() != nullptr) setUp(timeout);
}

// The handle may go on to another transfer.
HTTPTransfer::~HTTPTransfer() {
  if (easy() != nullptr) curl_easy_reset(easy());
  curl_slist_free_all(static_cast<curl_slist*>(headers_));
}

std::optional<Error> HTTPTransfer::findRefusal() {
  if (!isURL(request_.url)) return badURLError();
  const std::string scheme = schemeOf(request_.url);
  if (scheme != "http" && scheme != "https") return unsupportedURLError(scheme);
  const auto address = webAddressOf(request_.url);
  if (!address || address->hasUserInfo) return badURLError();
  address_ = *address;
  if (!isToken(request_.method) || !std::all_of(request_.headers.begin(), request_.headers.end(), &canBeSent))
    return urlError(kURLErrorBadURL,
                    localized("Network", "The request holds a method or a header that cannot be sent."));
  if (const auto& credentials = request_.credentials) {
    if (hasControls(credentials->user) || hasControls(credentials->password))
      return urlError(
          kURLErrorBadURL,
          localized("Network", "The user name or the password holds characters that cannot be sent."));
    if (address_.isReadableOnTheWay() && !credentials->mayGoUnencrypted)
      return insecureConnectionError(shownHost(address_.host));
  }
  size_ = request_.file ? request_.file->size() : static_cast<std::int64_t>(request_.body.size());
  // A file that cannot be asked calls itself empty, and so does a device, of whatever length it is.
  char first = 0;
  const auto got = request_.file ? request_.file->readDataAtOffset(0, &first, 1) : 0;
  if (!got || (size_ == 0 && *got > 0)) return cannotReadSourceError(shownHost(address_.host));
  return std::nullopt;
}

void HTTPTransfer::setUp(std::optional<Seconds> timeout) {
  const HTTPClientOptions& options = client_->options;
  CURL* const easy = handle_.get();
  curl_easy_setopt(easy, CURLOPT_URL, request_.url.c_str());
  setUpForWeb(easy, options.userAgent, options.certificateAuthorities);
  // The newer versions have no word that lets an upload begin.
  curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1});
  curl_easy_setopt(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
  if (address_.isLoopback) curl_easy_setopt(easy, CURLOPT_NOPROXY, "*");
  curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, curlMilliseconds(options.connectTimeout));
  if (timeout) {
    curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, curlMilliseconds(*timeout));
  } else {
    curl_easy_setopt(easy, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(easy, CURLOPT_LOW_SPEED_TIME,
                     static_cast<long>(std::clamp(std::ceil(options.stallTimeout.count()), 1.0, 1e6)));
  }
  curl_easy_setopt(easy, CURLOPT_PREREQFUNCTION, &HTTPTransfer::onRequest);
  curl_easy_setopt(easy, CURLOPT_PREREQDATA, this);
  curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &HTTPTransfer::onHead);
  curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &HTTPTransfer::onBody);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
  curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &HTTPTransfer::onProgress);
  curl_easy_setopt(easy, CURLOPT_XFERINFODATA, this);
  curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
  setUpMethod();
  setUpHeaders();
  setUpCredentials();
}

void HTTPTransfer::setUpMethod() {
  CURL* const easy = handle_.get();
  if (request_.method == "HEAD") {
    curl_easy_setopt(easy, CURLOPT_NOBODY, 1L);
    size_ = 0;
    return;
  }
  if (request_.file || size_ > 0 || hasBodyOfItsOwn(request_.method)) {
    curl_easy_setopt(easy, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(easy, CURLOPT_INFILESIZE_LARGE, curl_off_t{size_});
    curl_easy_setopt(easy, CURLOPT_UPLOAD_BUFFERSIZE, kUploadBufferSize);
    curl_easy_setopt(easy, CURLOPT_READFUNCTION, &HTTPTransfer::onRead);
    curl_easy_setopt(easy, CURLOPT_READDATA, this);
    curl_easy_setopt(easy, CURLOPT_SEEKFUNCTION, &HTTPTransfer::onSeek);
    curl_easy_setopt(easy, CURLOPT_SEEKDATA, this);
  }
  curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, request_.method.c_str());
}

void HTTPTransfer::setUpHeaders() {
  curl_slist* list = nullptr;
  for (const auto& [name, value] : request_.headers) {
    // With nothing behind its colon, a name would take a header of libcurl's own away.
    const std::string line = trimmed(value).empty() ? name + ";" : name + ": " + value;
    list = curl_slist_append(list, line.c_str());
  }
  // libcurl asks before every body. A server that does not know the question costs a second; so it is asked
  // only where a refusal saves more.
  if (!request_.file && request_.body.size() <= kMostUnannounced) list = curl_slist_append(list, "Expect:");
  headers_ = list;
  curl_easy_setopt(handle_.get(), CURLOPT_HTTPHEADER, list);
}

// Where it is known what the server takes, basic authentication goes along at once, and nothing weaker than
// digest is offered to who took that.
void HTTPTransfer::setUpCredentials() {
  if (!request_.credentials) return;
  CURL* const easy = handle_.get();
  const auto known = client_->authentications.find(address_.origin);
  const unsigned long offered =
      known != client_->authentications.end() ? known->second : CURLAUTH_BASIC | CURLAUTH_DIGEST;
  curl_easy_setopt(easy, CURLOPT_HTTPAUTH, offered);
  // Apart, so that the name may hold a colon.
  curl_easy_setopt(easy, CURLOPT_USERNAME, request_.credentials->user.c_str());
  curl_easy_setopt(easy, CURLOPT_PASSWORD, request_.credentials->password.c_str());
}

int HTTPTransfer::perform() {
  return easy() != nullptr ? curl_easy_perform(easy()) : CURLE_FAILED_INIT;
}

int HTTPTransfer::onRequest(void* self, char*, char*, int, int) {
  auto& transfer = *static_cast<HTTPTransfer*>(self);
  if (transfer.isAwaitingAnswer_ && transfer.head_.progress() == FailedTransfer::Answer::None)
    transfer.response_.wasRepeated = true;
  transfer.isAwaitingAnswer_ = true;
  transfer.head_.begin();
  transfer.response_.body.clear();
  return CURL_PREREQFUNC_OK;
}

std::size_t HTTPTransfer::onRead(char* buffer, std::size_t size, std::size_t count, void* self) {
  return static_cast<HTTPTransfer*>(self)->read(buffer, size * count).value_or(CURL_READFUNC_ABORT);
}

std::optional<std::size_t> HTTPTransfer::read(char* buffer, std::size_t length) {
  const std::size_t wanted =
      static_cast<std::size_t>(std::min(static_cast<std::int64_t>(length), size_ - offset_));
  if (wanted == 0) return 0;
  std::optional<std::size_t> got = wanted;
  if (request_.file) {
    got = request_.file->readDataAtOffset(offset_, buffer, wanted);
  } else {
    request_.body.copy(buffer, wanted, static_cast<std::size_t>(offset_));
  }
  // It has become shorter, too: libcurl would take no bytes for the end.
  isSourceBroken_ = got.value_or(0) == 0;
  if (isSourceBroken_) return std::nullopt;
  offset_ += static_cast<std::int64_t>(*got);
  return got;
}

int HTTPTransfer::onSeek(void* self, std::int64_t offset, int origin) {
  auto& transfer = *static_cast<HTTPTransfer*>(self);
  if (origin != SEEK_SET || offset < 0 || offset > transfer.size_) return CURL_SEEKFUNC_FAIL;
  transfer.offset_ = offset;
  return CURL_SEEKFUNC_OK;
}

// Too little memory ends the transfer as a refusal to take more does: nothing may be thrown through libcurl.
std::size_t HTTPTransfer::onHead(char* bytes, std::size_t size, std::size_t count, void* self) try {
  return static_cast<HTTPTransfer*>(self)->takeHead({bytes, size * count}) ? size * count : 0;
} catch (const std::exception&) {
  return 0;
}

bool HTTPTransfer::takeHead(std::string_view line) {
  if (!head_.take(line)) return false;
  if (head_.progress() != FailedTransfer::Answer::WithinHead) return true;  // or behind a body
  const std::size_t colon = line.find(':');
  if (line.starts_with("HTTP/")) {
    response_.headers.clear();
  } else if (colon != line.npos) {
    response_.headers[lowerCased(trimmed(line.substr(0, colon)))] = trimmed(line.substr(colon + 1));
  }
  return true;
}

std::size_t HTTPTransfer::onBody(char* bytes, std::size_t size, std::size_t count, void* self) try {
  return static_cast<HTTPTransfer*>(self)->takeBody({bytes, size * count}) ? size * count : 0;
} catch (const std::exception&) {
  return 0;
}

bool HTTPTransfer::takeBody(std::string_view bytes) {
  isTooLong_ = static_cast<std::int64_t>(response_.body.size() + bytes.size()) > client_->options.mostBytes;
  if (!isTooLong_) response_.body += bytes;
  return !isTooLong_;
}

// Also of the body that comes with a question for the password, which libcurl reads to its end and hands to
// nobody.
int HTTPTransfer::onProgress(void* self, std::int64_t, std::int64_t received, std::int64_t, std::int64_t) {
  auto& transfer = *static_cast<HTTPTransfer*>(self);
  if (received > transfer.client_->options.mostBytes) transfer.isTooLong_ = true;
  return transfer.isTooLong_ ? 1 : 0;
}

// Whether the answer that is there holds. A server that has had enough may close the connection while we
// still send, and its word is what counts then. But a word of success before everything was sent is not true,
// even if libcurl believes it.
bool HTTPTransfer::isAnswer(int curlCode, long status) const {
  if (!head_.isComplete(status)) return false;
  if (status >= 300) return curlCode == CURLE_OK || (size_ > 0 && isBrokenOff(curlCode));
  curl_off_t sent = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_SIZE_UPLOAD_T, &sent);
  return curlCode == CURLE_OK && sent >= size_;
}

// What was asked for is known from the question. Who was not asked has taken what was sent along.
void HTTPTransfer::learnAuthentication(long status) {
  if (!request_.credentials || !head_.isComplete(status)) return;
  long asked = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_HTTPAUTH_AVAIL, &asked);
  if (status == 401) {
    client_->authentications.erase(address_.origin);
  } else if ((asked & CURLAUTH_DIGEST) != 0) {
    client_->authentications[address_.origin] = CURLAUTH_DIGEST;
  } else if ((asked & CURLAUTH_BASIC) != 0) {
    client_->authentications[address_.origin] = CURLAUTH_BASIC;
  }
}

Result<HTTPResponse> HTTPTransfer::result(int curlCode) {
  if (refusal_) return *refusal_;
  const std::string host = shownHost(address_.host);
  const long status = handle_ ? statusOf(handle_.get()) : 0;
  learnAuthentication(status);
  if (isSourceBroken_) return cannotReadSourceError(host);
  if (isTooLong_) return tooLargeError(host, client_->options.mostBytes);
  if (isAnswer(curlCode, status)) {
    response_.status = status;
    return std::move(response_);
  }
  FailedTransfer failed{curlCode, status, host, head_.progress(), request_.file != nullptr};
  if (curlCode == CURLE_OK) failed.curlCode = CURLE_PARTIAL_FILE;
  return transferError(failed);
}

}  // namespace clipwave
