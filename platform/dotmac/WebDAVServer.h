// A member's iDisk on a WebDAV server: what is asked of it by path, and what its answers mean. Internal to
// this room.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/dotmac/WebDAVAddress.h"
#include "platform/foundation/HTTPClient.h"
#include "platform/foundation/RunLoop.h"

namespace clipwave {

// Paths are within the iDisk, in UTF-8 and not escaped.
struct WebDAVRequest {
  std::string method;
  std::string path;
  bool isFolder = false;  // whether the path is known to be a folder's, which servers want to end in "/"
  std::string destination = {};                // of a MOVE, which replaces what is there
  std::shared_ptr<FileHandle> file = nullptr;  // of a PUT

  // Asks whether something is at the path, and whether that is a folder.
  static WebDAVRequest question(std::string path, bool isFolder = false) {
    return {"PROPFIND", std::move(path), isFolder};
  }
};

struct WebDAVAnswer {
  // What the server says of the resource; 0 when no answer came, or none that counts.
  long status = 0;
  // Nothing when what was asked was done; else an error of DMErrorDomain.
  std::optional<Error> failure = {};
  bool isFolder = false;  // answers a question

  bool isMissing() const { return status == 404 || status == 410; }
};

// One request in the background with the redirects that it meets. Ending it stops it; its completion is not
// called then.
class WebDAVExchange {
 public:
  // Of the file, by the attempt in progress.
  std::int64_t bytesSent() const { return http_ ? http_->bytesSent() : 0; }

 private:
  friend class WebDAVServer;
  std::unique_ptr<HTTPExchange> http_;
};

class WebDAVServer {
 public:
  using Completion = std::function<void(WebDAVAnswer)>;

  // Loop and client must outlive the server. `address` is as a person entered it.
  WebDAVServer(RunLoop& runLoop, HTTPClient& http, std::string_view address, HTTPCredentials credentials);

  // Blocks, for `timeout` at the longest.
  WebDAVAnswer send(const WebDAVRequest& request, Seconds timeout);
  // `completion` is called from the loop, once, never inside this call. What it holds is let go of when the
  // exchange, or the HTTP client, ends.
  std::shared_ptr<WebDAVExchange> sendInBackground(const WebDAVRequest& request, Completion completion);

 private:
  struct Attempts;

  Result<HTTPRequest> httpRequest(const WebDAVRequest& request) const;
  static void proceed(const std::shared_ptr<Attempts>& attempts);

  RunLoop& runLoop_;
  HTTPClient& http_;
  Result<WebDAVAddress> address_;
  HTTPCredentials credentials_;
};

// What failed, and why, in one line for the log.
std::string failureLine(const WebDAVRequest& request, const Error& failure);

}  // namespace clipwave
