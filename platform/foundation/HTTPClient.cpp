#include "platform/foundation/HTTPClient.h"

#include <curl/curl.h>

#include <utility>

#include "platform/foundation/CurlLoop.h"
#include "platform/foundation/HTTPTransfer.h"

namespace clipwave {
namespace {

std::shared_ptr<void> makeHandle() {
  prepareCurl();
  return {curl_easy_init(), &curl_easy_cleanup};
}

class CurlExchange final : public HTTPExchange {
 public:
  CurlExchange(std::shared_ptr<HTTPTransfer> transfer, Observation running)
      : transfer_(std::move(transfer)), running_(std::move(running)) {}

  std::int64_t bytesSent() const override { return transfer_->bytesSent(); }

 private:
  std::shared_ptr<HTTPTransfer> transfer_;
  Observation running_;
};

class CurlHTTPClient final : public HTTPClient {
 public:
  CurlHTTPClient(RunLoop& runLoop, HTTPClientOptions options)
      : state_(std::make_shared<HTTPClientState>(HTTPClientState{std::move(options), {}})), curl_(runLoop) {}

  Result<HTTPResponse> send(const HTTPRequest& request, Seconds timeout) override;
  std::unique_ptr<HTTPExchange> sendInBackground(HTTPRequest request, Completion completion) override;

 private:
  std::shared_ptr<HTTPClientState> state_;
  // Of all requests that block: it keeps its connections open from one to the next.
  std::shared_ptr<void> blockingHandle_ = makeHandle();
  CurlLoop curl_;
};

Result<HTTPResponse> CurlHTTPClient::send(const HTTPRequest& request, Seconds timeout) {
  HTTPTransfer transfer(request, state_, blockingHandle_, timeout);
  return transfer.result(transfer.perform());
}

// A request that is refused goes the same way: without a handle there is nothing that could start.
std::unique_ptr<HTTPExchange> CurlHTTPClient::sendInBackground(HTTPRequest request, Completion completion) {
  auto transfer = std::make_shared<HTTPTransfer>(std::move(request), state_, makeHandle(), std::nullopt);
  Observation running = curl_.add(
      transfer, transfer->easy(),
      [transfer, completion = std::move(completion)](int code) { completion(transfer->result(code)); });
  return std::make_unique<CurlExchange>(std::move(transfer), std::move(running));
}

}  // namespace

std::unique_ptr<HTTPClient> makeHTTPClient(RunLoop& runLoop, HTTPClientOptions options) {
  return std::make_unique<CurlHTTPClient>(runLoop, std::move(options));
}

}  // namespace clipwave
