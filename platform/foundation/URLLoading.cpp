#include "platform/foundation/URLLoading.h"

#include <utility>

#include "platform/foundation/CurlLoop.h"
#include "platform/foundation/FileLoad.h"
#include "platform/foundation/HTTPLoad.h"
#include "platform/foundation/URLErrors.h"
#include "platform/foundation/URLs.h"

namespace clipwave {
namespace {

void tell(URLLoadClient& client, const std::string& url, const Result<LoadedData>& result) {
  if (result) {
    client.URLResourceDidFinishLoading(url);
  } else {
    client.URLResourceDidFailLoadingWithReason(url, result.error().localizedDescription);
  }
}

class CurlURLLoading final : public URLLoading {
 public:
  CurlURLLoading(RunLoop& runLoop, FileManager& files, URLLoadingOptions options)
      : runLoop_(runLoop), files_(files), options_(std::move(options)), curl_(runLoop) {}

  Observation loadInBackground(std::string_view url, URLLoadClient& client) override;
  Observation loadDataInBackground(std::string_view url, DataTaker taken) override;
  Result<LoadedData> dataWithContentsOfURL(std::string_view url, Seconds timeout) override;

 private:
  Observation load(std::string_view url, HTTPLoad::Purpose purpose, DataTaker taken);
  Result<LoadedData> withoutNetwork(std::string_view url);
  Observation callLater(std::function<void()> function);

  RunLoop& runLoop_;
  FileManager& files_;
  URLLoadingOptions options_;
  CurlLoop curl_;
  std::shared_ptr<char> alive_ = std::make_shared<char>();  // what is called later looks whether it still is
};

Observation CurlURLLoading::loadInBackground(std::string_view url, URLLoadClient& client) {
  return load(
      url, HTTPLoad::Purpose::Arrival,
      [url = std::string(url), &client](const Result<LoadedData>& result) { tell(client, url, result); });
}

Observation CurlURLLoading::loadDataInBackground(std::string_view url, DataTaker taken) {
  return load(url, HTTPLoad::Purpose::Data, std::move(taken));
}

Observation CurlURLLoading::load(std::string_view url, HTTPLoad::Purpose purpose, DataTaker taken) {
  if (!isURL(url) || !isWebURL(url)) {
    return callLater(
        [this, url = std::string(url), taken = std::move(taken)] { taken(withoutNetwork(url)); });
  }
  auto load = std::make_shared<HTTPLoad>(url, purpose, options_.backgroundTimeout, options_);
  return curl_.add(load, load->easy(),
                   [load, taken = std::move(taken)](int code) { taken(load->result(code)); });
}

Result<LoadedData> CurlURLLoading::dataWithContentsOfURL(std::string_view url, Seconds timeout) {
  if (!isURL(url) || !isWebURL(url)) return withoutNetwork(url);
  HTTPLoad load(url, HTTPLoad::Purpose::Data, timeout, options_);
  return load.result(load.perform());
}

// Every text but the URLs of the web.
Result<LoadedData> CurlURLLoading::withoutNetwork(std::string_view url) {
  if (!isURL(url)) return badURLError();
  const std::string scheme = schemeOf(url);
  if (scheme == "file") return contentsOfFileURL(url, files_, options_.mostBytes);
  // One of the web that got here lacks its host.
  if (scheme == "http" || scheme == "https") return badURLError();
  return unsupportedURLError(scheme);
}

Observation CurlURLLoading::callLater(std::function<void()> function) {
  auto call = std::make_shared<std::function<void()>>(std::move(function));
  runLoop_.performLater([call, alive = std::weak_ptr(alive_)] {
    if (alive.expired()) return;
    if (const auto called = std::exchange(*call, nullptr)) called();
  });
  return Observation([call] { *call = nullptr; });
}

}  // namespace

std::unique_ptr<URLLoading> makeURLLoading(RunLoop& runLoop, FileManager& files, URLLoadingOptions options) {
  return std::make_unique<CurlURLLoading>(runLoop, files, std::move(options));
}

}  // namespace clipwave
