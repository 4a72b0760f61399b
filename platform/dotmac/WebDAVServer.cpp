#include "platform/dotmac/WebDAVServer.h"

#include "platform/dotmac/MultiStatus.h"
#include "platform/dotmac/WebDAVErrors.h"
#include "platform/dotmac/WebDAVRedirect.h"

namespace clipwave {
namespace {

constexpr const char* kQuestion =
    R"(<?xml version="1.0" encoding="utf-8"?><D:propfind xmlns:D="DAV:"><D:prop><D:resourcetype/></D:prop></D:propfind>)";

// Of a 207, which alone tells nothing. A question is about one resource; what else was asked may have failed
// for some of those that it touched, of which a failed dependency is never the reason.
WebDAVAnswer answerOfResources(const std::vector<ResourceStatus>& resources, bool isQuestion) {
  WebDAVAnswer answer{200};
  if (resources.empty() && isQuestion)
    return {207, dotMacError(kDMUnknownError, "The server's answer tells of nothing.")};
  if (isQuestion) answer = {resources.front().status, {}, resources.front().isFolder};
  for (const ResourceStatus& resource : resources) {
    const bool isReason = answer.status < 300 || answer.status == 424;
    if (!isQuestion && resource.status >= 300 && isReason) answer.status = resource.status;
  }
  if (answer.status < 200 || answer.status >= 300) answer.failure = errorForStatus(answer.status);
  return answer;
}

WebDAVAnswer answerOf(bool isQuestion, const HTTPResponse& response) {
  const long status = response.status;
  if (status < 200 || status >= 300) return {status, errorForStatus(status)};
  if (status == 207) {
    if (const auto resources = resourcesOfMultiStatus(response.body))
      return answerOfResources(*resources, isQuestion);
    return {status, dotMacError(kDMUnknownError, "The server's answer cannot be understood.")};
  }
  if (!isQuestion) return {status};
  // A web server that takes the question for some request of its own.
  return {status, dotMacError(kDMResourceNotFound, "What answers there is no WebDAV server.")};
}

// The second of two is answered as to what the first has made of things: 404, say, where that was done.
// Nobody knows then whether it was, or still goes on.
WebDAVAnswer lostMove(const WebDAVAnswer& answer) {
  return {0, dotMacError(kDMNetworkError, "The server broke the connection off. Asked again: " +
                                              answer.failure->localizedDescription)};
}

}  // namespace

WebDAVServer::WebDAVServer(RunLoop& runLoop, HTTPClient& http, std::string_view address,
                           HTTPCredentials credentials)
    : runLoop_(runLoop),
      http_(http),
      address_(WebDAVAddress::fromText(address)),
      credentials_(std::move(credentials)) {}

Result<HTTPRequest> WebDAVServer::httpRequest(const WebDAVRequest& request) const {
  // The address is not told: somebody may have put a password into it.
  if (!address_)
    return dotMacError(kDMResourceNotFound, "The iDisk's address in the settings is no web address.");
  const auto url = address_->urlOf(request.path, request.isFolder);
  const auto destination = address_->urlOf(request.destination, false);
  if (!url || !destination) return dotMacError(kDMInvalidParameter, "The path leads out of the iDisk.");
  HTTPRequest http{request.method, *url};
  http.file = request.file;
  http.credentials = credentials_;
  if (request.method == "PROPFIND") {
    http.headers = {{"Depth", "0"}, {"Content-Type", "application/xml; charset=utf-8"}};
    http.body = kQuestion;
  }
  // Not every server overwrites without being told to.
  if (request.method == "MOVE") http.headers = {{"Destination", *destination}, {"Overwrite", "T"}};
  return http;
}

// A request on its way through redirects. The HTTP client holds it, in the completion that it was given.
struct WebDAVServer::Attempts {
  HTTPClient& http;
  HTTPRequest request;
  Completion completion;
  std::weak_ptr<WebDAVExchange> exchange;
  int redirects = 0;

  // Nothing where the request has to be sent again.
  std::optional<WebDAVAnswer> take(const Result<HTTPResponse>& response) {
    if (!response) return WebDAVAnswer{0, errorForFailedRequest(response.error())};
    if (!isRedirect(*response)) {
      const WebDAVAnswer answer = answerOf(request.method == "PROPFIND", *response);
      return answer.failure && response->wasRepeated && request.method == "MOVE" ? lostMove(answer) : answer;
    }
    if (++redirects > kMostRedirects)
      return WebDAVAnswer{response->status,
                          dotMacError(kDMResourceNotFound, "The server redirects again and again.")};
    if (const auto followed = followRedirect(request, *response); !followed)
      return WebDAVAnswer{response->status, followed.error()};
    return std::nullopt;
  }
};

WebDAVAnswer WebDAVServer::send(const WebDAVRequest& request, Seconds timeout) {
  auto http = httpRequest(request);
  if (!http) return {0, http.error()};
  Attempts attempts{http_, std::move(*http), nullptr, {}};
  const Seconds end = runLoop_.clock().uptime() + timeout;
  for (Seconds left = timeout; left > Seconds(0); left = end - runLoop_.clock().uptime()) {
    if (auto answer = attempts.take(http_.send(attempts.request, left))) return *answer;
  }
  return {0, dotMacError(kDMNetworkError, "The server redirects too slowly.")};
}

std::shared_ptr<WebDAVExchange> WebDAVServer::sendInBackground(const WebDAVRequest& request,
                                                               Completion completion) {
  auto exchange = std::make_shared<WebDAVExchange>();
  auto http = httpRequest(request);
  if (http) {
    proceed(std::make_shared<Attempts>(Attempts{http_, std::move(*http), std::move(completion), exchange}));
  } else {
    runLoop_.performLater(
        [weak = std::weak_ptr(exchange), completion = std::move(completion), failure = http.error()] {
          if (!weak.expired()) completion({0, failure});
        });
  }
  return exchange;
}

void WebDAVServer::proceed(const std::shared_ptr<Attempts>& attempts) {
  const auto exchange = attempts->exchange.lock();
  if (!exchange) return;
  exchange->http_ = attempts->http.sendInBackground(attempts->request, [attempts](auto response) {
    // Both the next attempt and the completion may end the request that holds this function.
    const auto kept = attempts;  // NOLINT(performance-unnecessary-copy-initialization)
    const auto answer = kept->take(response);
    if (!answer) return proceed(kept);
    kept->completion(*answer);
  });
}

std::string failureLine(const WebDAVRequest& request, const Error& failure) {
  return request.method + " of \"" + diskPath(request.path) + "\": " + failure.localizedDescription;
}

}  // namespace clipwave
