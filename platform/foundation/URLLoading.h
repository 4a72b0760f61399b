// Loading the resource behind a URL: in the background with a client that is called back, or blocking.
#pragma once

#include <string>
#include <string_view>

#include "platform/foundation/Clock.h"
#include "platform/foundation/Error.h"
#include "platform/foundation/Observation.h"

namespace clipwave {

// Called on the run loop, exactly one of the two, once for each load that was not dropped before.
class URLLoadClient {
 public:
  virtual ~URLLoadClient() = default;
  virtual void URLResourceDidFinishLoading(std::string_view url) = 0;
  virtual void URLResourceDidFailLoadingWithReason(std::string_view url, std::string_view reason) = 0;
};

class URLLoading {
 public:
  virtual ~URLLoading() = default;
  // Starts loading in the background; cached data may serve. `client` is called for as long as the answer
  // lives: ending it drops a load that is still under way, so that a client may go before its resource came.
  virtual Observation loadInBackground(std::string_view url, URLLoadClient& client) = 0;
  // The resource's data, never from a cache; blocks until it is there, at the longest for `timeout`.
  virtual Result<std::string> dataWithContentsOfURL(std::string_view url, Seconds timeout) = 0;
};

}  // namespace clipwave
