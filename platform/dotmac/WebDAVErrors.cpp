#include "platform/dotmac/WebDAVErrors.h"

#include <algorithm>
#include <iterator>

#include "platform/foundation/URLLoading.h"

namespace clipwave {
namespace {

struct StatusMeaning {
  long status;
  DMErrorType type;
  const char* reason;
};
constexpr StatusMeaning kStatusMeanings[] = {
    {400, kDMInvalidParameter, "Bad Request"},
    {401, kDMInvalidCredentials, "Unauthorized"},
    {403, kDMResourceExists, "Forbidden"},
    {404, kDMResourceNotFound, "Not Found"},
    {405, kDMResourceExists, "Method Not Allowed"},
    {407, kDMNetworkError, "Proxy Authentication Required"},
    {409, kDMResourceNotFound, "Conflict"},
    {410, kDMResourceNotFound, "Gone"},
    {411, kDMInvalidParameter, "Length Required"},
    {412, kDMResourceExists, "Precondition Failed"},
    {413, kDMInvalidParameter, "Content Too Large"},
    {414, kDMInvalidParameter, "URI Too Long"},
    {415, kDMInvalidParameter, "Unsupported Media Type"},
    {422, kDMInvalidParameter, "Unprocessable Content"},
    {423, kDMResourceExists, "Locked"},
    {424, kDMUnknownError, "Failed Dependency"},
    {429, kDMServiceBusy, "Too Many Requests"},
    {431, kDMInvalidParameter, "Request Header Fields Too Large"},
    {500, kDMUnknownError, "Internal Server Error"},
    {501, kDMInvalidParameter, "Not Implemented"},
    {502, kDMNetworkError, "Bad Gateway"},
    {503, kDMServiceBusy, "Service Unavailable"},
    {504, kDMNetworkError, "Gateway Timeout"},
    {507, kDMInsufficientStorage, "Insufficient Storage"},
};

DMErrorType typeOfFailedRequest(int code) {
  switch (code) {
    case kURLErrorTimedOut:
    case kURLErrorCannotFindHost:
    case kURLErrorCannotConnectToHost:
    case kURLErrorNetworkConnectionLost:
    case kURLErrorSecureConnectionFailed:
    case kURLErrorServerCertificateUntrusted:
      return kDMNetworkError;
    case kURLErrorInsecureConnection:
      return kDMInvalidCredentials;
    case kURLErrorBadURL:
    case kURLErrorUnsupportedURL:
      return kDMResourceNotFound;
    case kURLErrorCannotReadSource:
      return kDMInvalidParameter;
    default:
      return kDMUnknownError;
  }
}

}  // namespace

Error dotMacError(DMErrorType type, std::string description) {
  return Error{std::string(DMErrorDomain), type, std::move(description), {}};
}

Error errorForStatus(long status) {
  const auto* const meaning = std::ranges::find(kStatusMeanings, status, &StatusMeaning::status);
  const bool isKnown = meaning != std::end(kStatusMeanings);
  const std::string reason = isKnown ? std::string(" (") + meaning->reason + ")" : "";
  return dotMacError(isKnown ? meaning->type : kDMUnknownError,
                     "The server answered " + std::to_string(status) + reason + ".");
}

Error errorForFailedRequest(const Error& failed) {
  return dotMacError(typeOfFailedRequest(failed.code), failed.localizedDescription);
}

}  // namespace clipwave
