// URLs whose background loads a test ends by hand.
#pragma once

#include "platform/foundation/URLLoading.h"
#include "platform/foundation/URLs.h"

namespace clipwave::testing {

class FakeURLLoading final : public URLLoading {
 public:
  std::vector<std::string> loads;  // begun in the background, in order
  std::vector<std::string> reads;  // blocking ones
  std::vector<Seconds> timeouts;   // of these
  // What every read answers.
  std::string data;
  std::string charset;
  std::optional<Error> error;
  std::function<void()> onLoad;

  // The load that was begun last comes to its end.
  void finish() { client_->URLResourceDidFinishLoading(loads.back()); }
  void fail(std::string_view reason) { client_->URLResourceDidFailLoadingWithReason(loads.back(), reason); }

  bool isLoading() const { return client_ != nullptr; }
  Observation loadInBackground(std::string_view url, URLLoadClient& client) override {
    loads.emplace_back(url);
    client_ = &client;
    if (onLoad) onLoad();
    return Observation([this] { client_ = nullptr; });
  }
  // Ends with what every read answers, when the test says so.
  Observation loadDataInBackground(std::string_view url, DataTaker taken) override {
    loads.emplace_back(url);
    taken_ = std::move(taken);
    return Observation([this] { taken_ = nullptr; });
  }
  void finishData() {
    if (const auto taken = std::exchange(taken_, nullptr)) taken(answer());
  }
  Result<LoadedData> dataWithContentsOfURL(std::string_view url, Seconds timeout) override {
    reads.emplace_back(url);
    timeouts.push_back(timeout);
    if (!isURL(url)) return Error{std::string(NSURLErrorDomain), kURLErrorBadURL, "No URL.", {}};
    return answer();
  }

 private:
  Result<LoadedData> answer() const {
    if (error) return *error;
    return LoadedData{data, charset};
  }

  DataTaker taken_;
  URLLoadClient* client_ = nullptr;
};

}  // namespace clipwave::testing
