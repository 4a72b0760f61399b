#include "platform/foundation/URLErrors.h"

#include <curl/curl.h>

#include <utility>

#include "platform/foundation/HTTPStatus.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

URLErrorCode codeOf(const FailedTransfer& failed) {
  // Then the address that libcurl could not use is one that the server redirected to.
  const bool isLedAstray = failed.answer == FailedTransfer::Answer::HeadComplete;
  switch (failed.curlCode) {
    case CURLE_URL_MALFORMAT:
      return isLedAstray ? kURLErrorBadServerResponse : kURLErrorBadURL;
    case CURLE_UNSUPPORTED_PROTOCOL:  // also for an answer that is not HTTP
      return isLedAstray ? kURLErrorRedirectToUnsupportedURL : kURLErrorBadServerResponse;
    case CURLE_OUT_OF_MEMORY:  // also for a header that does not end
      return failed.answer == FailedTransfer::Answer::WithinHead ? kURLErrorBadServerResponse
                                                                 : kURLErrorUnknown;
    case CURLE_OPERATION_TIMEDOUT:
      return kURLErrorTimedOut;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
      return kURLErrorCannotFindHost;
    case CURLE_COULDNT_CONNECT:
    case CURLE_PROXY:
      return kURLErrorCannotConnectToHost;
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
      return kURLErrorNetworkConnectionLost;
    case CURLE_TOO_MANY_REDIRECTS:
      return kURLErrorHTTPTooManyRedirects;
    case CURLE_HTTP_RETURNED_ERROR:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
    case CURLE_WRITE_ERROR:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
      return kURLErrorBadServerResponse;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_ISSUER_ERROR:
      return kURLErrorServerCertificateUntrusted;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ENGINE_INITFAILED:
      return kURLErrorSecureConnectionFailed;
    default:
      return kURLErrorUnknown;
  }
}

std::string sentence(const FailedTransfer& failed, URLErrorCode code) {
  const auto aboutServer = [&](const std::string& text) { return filledIn(text, {failed.host}); };
  if (failed.curlCode == CURLE_COULDNT_RESOLVE_PROXY)
    return localized("Network", "The proxy server could not be found.");
  if (failed.curlCode == CURLE_HTTP_RETURNED_ERROR)
    return filledIn(localized("Network", "The server “%1” answered %2."),
                    {failed.host, httpStatusText(failed.status)});
  if (failed.curlCode == CURLE_SSL_CACERT_BADFILE)
    return localized("Network", "The file of trusted certificates could not be read.");
  switch (code) {
    case kURLErrorTimedOut:
      return aboutServer(failed.isUpload
                             ? localized("Network", "The server “%1” did not take everything in time.")
                             : localized("Network", "The server “%1” did not send everything in time."));
    case kURLErrorCannotFindHost:
      return aboutServer(localized("Network", "The server “%1” could not be found."));
    case kURLErrorCannotConnectToHost:
      return aboutServer(localized("Network", "The server “%1” could not be reached."));
    case kURLErrorNetworkConnectionLost:
      return aboutServer(localized("Network", "The server “%1” broke the connection off."));
    case kURLErrorHTTPTooManyRedirects:
      return aboutServer(localized("Network", "The server “%1” redirects too often."));
    case kURLErrorRedirectToUnsupportedURL:
      return aboutServer(
          localized("Network", "The server “%1” redirects to an address that is neither http nor https."));
    case kURLErrorBadServerResponse:
      return aboutServer(localized("Network", "The server “%1” gave an answer that cannot be understood."));
    case kURLErrorServerCertificateUntrusted:
      return aboutServer(localized("Network", "The server “%1” has a certificate that is not trusted."));
    case kURLErrorSecureConnectionFailed:
      return aboutServer(localized("Network", "The server “%1” made no secure connection."));
    default:
      return filledIn(failed.isUpload ? localized("Network", "Sending to “%1” failed: %2.")
                                      : localized("Network", "Loading from “%1” failed: %2."),
                      {failed.host, curl_easy_strerror(static_cast<CURLcode>(failed.curlCode))});
  }
}

}  // namespace

Error urlError(URLErrorCode code, std::string description) {
  return Error{std::string(NSURLErrorDomain), code, std::move(description), {}};
}

Error badURLError() {
  return urlError(kURLErrorBadURL, localized("Network", "The address is not a valid URL."));
}

Error unsupportedURLError(std::string_view scheme) {
  return urlError(
      kURLErrorUnsupportedURL,
      filledIn(localized("Network", "Addresses that begin with “%1:” cannot be loaded."), {scheme}));
}

Error tooLargeError(std::string_view name, std::int64_t most) {
  constexpr std::int64_t kMebibyte = std::int64_t{1} << 20;
  const std::string limit = most % kMebibyte == 0
                                ? std::to_string(most / kMebibyte) + " MiB"
                                : filledIn(localized("Network", "%1 bytes"), {std::to_string(most)});
  return urlError(kURLErrorDataLengthExceedsMaximum,
                  filledIn(localized("Network", "The data from “%1” are larger than %2."), {name, limit}));
}

Error insecureConnectionError(std::string_view host) {
  return urlError(
      kURLErrorInsecureConnection,
      filledIn(localized("Network",
                         "The connection to the server “%1” is not encrypted, so the password was not sent."),
               {host}));
}

Error cannotReadSourceError(std::string_view host) {
  return urlError(
      kURLErrorCannotReadSource,
      filledIn(localized("Network", "The file for the server “%1” could not be read to its end."), {host}));
}

Error transferError(const FailedTransfer& failed) {
  const URLErrorCode code = codeOf(failed);
  return code == kURLErrorBadURL ? badURLError() : urlError(code, sentence(failed, code));
}

}  // namespace clipwave
