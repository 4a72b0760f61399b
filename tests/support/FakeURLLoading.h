// URLs whose loads a test ends by hand.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/foundation/URLLoading.h"

namespace clipwave::testing {

class FakeURLLoading final : public URLLoading {
 public:
  std::vector<std::string> loads;  // begun in the background, in order
  std::vector<std::string> reads;  // blocking ones
  Result<std::string> data = cocoaError(kFileReadUnknownError, "The test has no data.");  // of every read
  std::function<void()> onLoad;

  // The load that was begun first comes to its end.
  void finish() {
    const auto [url, client] = next();
    client->URLResourceDidFinishLoading(url);
  }
  void fail(std::string_view reason) {
    const auto [url, client] = next();
    client->URLResourceDidFailLoadingWithReason(url, reason);
  }

  void loadInBackground(std::string_view url, URLLoadClient& client) override {
    loads.emplace_back(url);
    pending_.emplace_back(url, &client);
    if (onLoad) onLoad();
  }
  Result<std::string> dataWithContentsOfURL(std::string_view url, Seconds) override {
    reads.emplace_back(url);
    return data;
  }

 private:
  std::pair<std::string, URLLoadClient*> next() {
    auto load = std::move(pending_.at(0));
    pending_.erase(pending_.begin());
    return load;
  }
  std::vector<std::pair<std::string, URLLoadClient*>> pending_;
};

}  // namespace clipwave::testing
