#include "platform/foundation/URLErrors.h"

#include <curl/curl.h>

#include <utility>

#include "platform/foundation/HTTPStatus.h"

namespace clipwave {
namespace {

std::string quoted(std::string_view name) {
  return "\u201c" + std::string(name) + "\u201d";
}

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
  const std::string server = "The server " + quoted(failed.host);
  if (failed.curlCode == CURLE_COULDNT_RESOLVE_PROXY) return "The proxy server could not be found.";
  if (failed.curlCode == CURLE_HTTP_RETURNED_ERROR)
    return server + " answered " + httpStatusText(failed.status) + ".";
  if (failed.curlCode == CURLE_SSL_CACERT_BADFILE)
    return "The file of trusted certificates could not be read.";
  switch (code) {
    case kURLErrorTimedOut:
      return server +
             (failed.isUpload ? " did not take everything in time." : " did not send everything in time.");
    case kURLErrorCannotFindHost:
      return server + " could not be found.";
    case kURLErrorCannotConnectToHost:
      return server + " could not be reached.";
    case kURLErrorNetworkConnectionLost:
      return server + " broke the connection off.";
    case kURLErrorHTTPTooManyRedirects:
      return server + " redirects too often.";
    case kURLErrorRedirectToUnsupportedURL:
      return server + " redirects to an address that is neither http nor https.";
    case kURLErrorBadServerResponse:
      return server + " gave an answer that cannot be understood.";
    case kURLErrorServerCertificateUntrusted:
      return server + " has a certificate that is not trusted.";
    case kURLErrorSecureConnectionFailed:
      return server + " made no secure connection.";
    default:
      return (failed.isUpload ? "Sending to " : "Loading from ") + quoted(failed.host) +
             " failed: " + curl_easy_strerror(static_cast<CURLcode>(failed.curlCode)) + ".";
  }
}

}  // namespace

Error urlError(URLErrorCode code, std::string description) {
  return Error{std::string(NSURLErrorDomain), code, std::move(description), {}};
}

Error badURLError() {
  return urlError(kURLErrorBadURL, "The address is not a valid URL.");
}

Error unsupportedURLError(std::string_view scheme) {
  return urlError(kURLErrorUnsupportedURL,
                  "Addresses that begin with " + quoted(std::string(scheme) + ":") + " cannot be loaded.");
}

Error tooLargeError(std::string_view name, std::int64_t most) {
  constexpr std::int64_t kMebibyte = std::int64_t{1} << 20;
  const std::string limit =
      most % kMebibyte == 0 ? std::to_string(most / kMebibyte) + " MiB" : std::to_string(most) + " bytes";
  return urlError(kURLErrorDataLengthExceedsMaximum,
                  "The data from " + quoted(name) + " are larger than " + limit + ".");
}

Error insecureConnectionError(std::string_view host) {
  return urlError(kURLErrorInsecureConnection, "The connection to the server " + quoted(host) +
                                                   " is not encrypted, so the password was not sent.");
}

Error cannotReadSourceError(std::string_view host) {
  return urlError(kURLErrorCannotReadSource,
                  "The file for the server " + quoted(host) + " could not be read to its end.");
}

Error transferError(const FailedTransfer& failed) {
  const URLErrorCode code = codeOf(failed);
  return code == kURLErrorBadURL ? badURLError() : urlError(code, sentence(failed, code));
}

}  // namespace clipwave
