// HTTP requests of any method, with a file for a body where one is to be sent: blocking, or in the
// background.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/Clock.h"
#include "platform/foundation/Error.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/RunLoop.h"

namespace clipwave {

// Offered when the server asks for them, as basic or digest authentication.
struct HTTPCredentials {
  std::string user;
  std::string password;
  // Unless set, a request over plain http to anything but the loopback interface is refused before anybody is
  // asked (kURLErrorInsecureConnection).
  bool mayGoUnencrypted = false;
};

struct HTTPRequest {
  std::string method = "GET";
  std::string url;  // http or https, escaped; a user name and password in it are refused (kURLErrorBadURL)
  // With a control character in a method, a header or the credentials, or with Content-Length or
  // Transfer-Encoding among the headers, a request is refused before anybody is asked (kURLErrorBadURL).
  std::vector<std::pair<std::string, std::string>> headers = {};
  // What is sent: `file`, as long as it is when the request begins, or else `body`. Before a file the server
  // is asked whether it takes it, so that a refused password costs no byte. HEAD sends nothing.
  std::string body = {};
  std::shared_ptr<FileHandle> file = nullptr;
  std::optional<HTTPCredentials> credentials = {};
};

struct HTTPResponse {
  long status = 0;
  std::map<std::string, std::string> headers;  // by name in lower case; of several the last
  std::string body;
  // A connection that was kept open broke before any word came, and the request went out once more. The
  // server may have heard it twice.
  bool wasRepeated = false;
};

// A request under way in the background. Ending it stops the request; its completion is not called then.
class HTTPExchange {
 public:
  virtual ~HTTPExchange() = default;
  // Of the file or body, by the attempt in progress: where a server asks for a password late, counting starts
  // anew.
  virtual std::int64_t bytesSent() const = 0;
};

// Every status is an answer, redirects included, which are never followed. What brings no whole answer is an
// error of NSURLErrorDomain with a sentence for a person that names the host and holds no password; where the
// file to send could not be read as far as it was long, the code is kURLErrorCannotReadSource. A status of
// 300 and above that comes before everything was sent is the answer, with as much of its body as came; a
// status below is an error then. How a server wanted the password is remembered as long as the client lives:
// a basic one then goes along at once, and a server that took digest is offered nothing less until it answers
// 401.
class HTTPClient {
 public:
  using Completion = std::function<void(Result<HTTPResponse>)>;

  virtual ~HTTPClient() = default;
  // Blocks, for `timeout` at the longest.
  virtual Result<HTTPResponse> send(const HTTPRequest& request, Seconds timeout) = 0;
  // Goes on in the run loop's default mode, without a limit in all. `completion` is called from the loop,
  // once, never inside this call; the exchange may be destroyed inside it.
  virtual std::unique_ptr<HTTPExchange> sendInBackground(HTTPRequest request, Completion completion) = 0;
};

struct HTTPClientOptions {
  // How long making a connection may take, and how long a request in the background may see no byte move in
  // either direction; whole seconds. That nothing moves any more is noticed up to five seconds late.
  Seconds connectTimeout{15};
  Seconds stallTimeout{60};
  // Of an answer's body; a longer one is an error.
  std::int64_t mostBytes = std::int64_t{8} << 20;
  // A file of certificates to trust in place of the system's; "" for the system's.
  std::string certificateAuthorities = {};
  std::string userAgent = "Clipwave";
};

// The run loop must outlive the client. Requests in the background that are left end with the client, without
// another word. Requests to the loopback interface go past any proxy.
std::unique_ptr<HTTPClient> makeHTTPClient(RunLoop& runLoop, HTTPClientOptions options = {});

}  // namespace clipwave
