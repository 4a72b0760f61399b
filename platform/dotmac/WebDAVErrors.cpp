#include "platform/dotmac/WebDAVErrors.h"

#include <utility>

#include "platform/foundation/HTTPStatus.h"
#include "platform/foundation/URLLoading.h"

namespace clipwave {
namespace {

// Any other status is an unknown error.
constexpr std::pair<long, DMErrorType> kTypes[] = {
    {400, kDMInvalidParameter},   {401, kDMInvalidCredentials}, {403, kDMResourceExists},
    {404, kDMResourceNotFound},   {405, kDMResourceExists},     {407, kDMNetworkError},
    {409, kDMResourceNotFound},   {410, kDMResourceNotFound},   {411, kDMInvalidParameter},
    {412, kDMResourceExists},     {413, kDMInvalidParameter},   {414, kDMInvalidParameter},
    {415, kDMInvalidParameter},   {422, kDMInvalidParameter},   {423, kDMResourceExists},
    {429, kDMServiceBusy},        {431, kDMInvalidParameter},   {501, kDMInvalidParameter},
    {502, kDMNetworkError},       {503, kDMServiceBusy},        {504, kDMNetworkError},
    {507, kDMInsufficientStorage}};

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
    case kURLErrorUnsupportedURL:
      return kDMResourceNotFound;
    case kURLErrorBadURL:  // also a name or password that cannot be sent
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
  DMErrorType type = kDMUnknownError;
  for (const auto& [known, meaning] : kTypes)
    if (known == status) type = meaning;
  return dotMacError(type, "The server answered " + httpStatusText(status) + ".");
}

Error errorForFailedRequest(const Error& failed) {
  return dotMacError(typeOfFailedRequest(failed.code), failed.localizedDescription);
}

}  // namespace clipwave
