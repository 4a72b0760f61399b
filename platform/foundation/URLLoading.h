// Loading the resource behind a URL: in the background with a client that is called back, or blocking.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/Clock.h"
#include "platform/foundation/Error.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Observation.h"
#include "platform/foundation/RunLoop.h"

namespace clipwave {

// The domain of failed loads, and the codes within it.
inline constexpr std::string_view NSURLErrorDomain = "NSURLErrorDomain";
enum URLErrorCode : int {
  kURLErrorUnknown = -1,
  kURLErrorBadURL = -1000,
  kURLErrorTimedOut = -1001,
  kURLErrorUnsupportedURL = -1002,
  kURLErrorCannotFindHost = -1003,
  kURLErrorCannotConnectToHost = -1004,
  kURLErrorNetworkConnectionLost = -1005,
  kURLErrorHTTPTooManyRedirects = -1007,
  kURLErrorRedirectToUnsupportedURL = -1010,  // one that leads out of http and https
  // Not HTTP, a wrong length, a compression that is broken, cut short or unknown, or a status other than 200
  // to 203: an error, no content, a part of it, a redirect to nowhere.
  kURLErrorBadServerResponse = -1011,
  kURLErrorInsecureConnection = -1022,  // a password would go unencrypted
  kURLErrorFileDoesNotExist = -1100,
  kURLErrorFileIsDirectory = -1101,
  kURLErrorNoPermissionsToReadFile = -1102,
  kURLErrorDataLengthExceedsMaximum = -1103,
  kURLErrorSecureConnectionFailed = -1200,
  kURLErrorServerCertificateUntrusted = -1202,
  kURLErrorCannotReadSource = -3001,  // the file that was to be sent
};

struct LoadedData {
  std::string bytes;
  // The encoding that the server named beside the data; "" when it named none.
  std::string charset;
};

// Called on the run loop, exactly one of the two, once for each load that was not dropped before.
class URLLoadClient {
 public:
  virtual ~URLLoadClient() = default;
  virtual void URLResourceDidFinishLoading(std::string_view url) = 0;
  // `reason`: one sentence for a person.
  virtual void URLResourceDidFailLoadingWithReason(std::string_view url, std::string_view reason) = 0;
};

class URLLoading {
 public:
  virtual ~URLLoading() = default;
  // Starts loading in the background; cached data may serve. `client` is called for as long as the answer
  // lives, never inside this call: ending it drops a load that is still under way, so that a client may go
  // before its resource came.
  virtual Observation loadInBackground(std::string_view url, URLLoadClient& client) = 0;
  // The same for one who wants the data: `taken` is called once, on the run loop, as long as the answer
  // lives. The data never comes from a cache.
  using DataTaker = std::function<void(const Result<LoadedData>&)>;
  virtual Observation loadDataInBackground(std::string_view url, DataTaker taken) = 0;
  // The resource's data, never from a cache; blocks until all of it is there, from the network at the longest
  // for `timeout`. Fails with kURLErrorBadURL for text that is no URL.
  virtual Result<LoadedData> dataWithContentsOfURL(std::string_view url, Seconds timeout) = 0;
};

struct URLLoadingOptions {
  // A longer body is refused when so much of it has come, whatever length was announced; counted after
  // decompression.
  std::int64_t mostBytes = std::int64_t{64} << 20;
  // How long a load in the background may take in all.
  Seconds backgroundTimeout{60};
  // A file of certificates to trust in place of the system's; "" for the system's.
  std::string certificateAuthorities = {};
  std::string userAgent = "Clipwave";
};

// Loads file, http and https URLs: certificates are checked, bodies packed with gzip or deflate unpacked,
// redirects followed up to ten times within http and https. Of file URLs only regular files are read. A
// background load goes on in the run loop's default mode. Both must outlive what is made here; the background
// loads that are left end with it.
std::unique_ptr<URLLoading> makeURLLoading(RunLoop& runLoop, FileManager& files,
                                           URLLoadingOptions options = {});

}  // namespace clipwave
