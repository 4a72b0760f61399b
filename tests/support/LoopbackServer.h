// An HTTP server of the test's own on 127.0.0.1: each path answers the very bytes that the test gave it.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/foundation/Clock.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

struct LoopbackRequest {
  std::string head;  // request line and headers
  std::string body = {};

  std::string method() const { return head.substr(0, head.find(' ')); }
  std::string path() const;                         // with its query
  std::string header(std::string_view name) const;  // "" when the request has none of that name
};

// The connection on which a request came; it ends when its answer has returned, unless that keeps it open.
class LoopbackConnection {
 public:
  explicit LoopbackConnection(int socket) : socket_(socket) {}
  const LoopbackRequest& request() const { return request_; }
  // False when the client has gone or the server ends; then the answer has to return.
  bool send(std::string_view bytes);
  bool pause(Seconds time);
  // Reads what the head says that comes; asks for it where the client waits to be asked.
  bool receiveBody();
  // The answer tells where it ends, and another request may follow.
  void keepOpen() { isKeptOpen_ = true; }

 private:
  friend class LoopbackServer;
  bool receive(std::string& bytes);
  bool receiveHead();

  int socket_;
  LoopbackRequest request_;
  std::function<void()> bodyReceived_;
  bool isKeptOpen_ = false;
};

// Serves any number of connections at once, each on a thread of its own. A path without an answer is 404. Its
// end breaks off what is under way. While it lives, the environment asks for no proxy.
class LoopbackServer {
 public:
  using Answer = std::function<void(LoopbackConnection&)>;

  LoopbackServer();
  ~LoopbackServer();
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  int port() const { return port_; }
  std::string url(std::string_view path) const;
  // What the path (with its query) answers from now on: these bytes, or what a function sends, which is
  // called on the connection's thread.
  void answer(std::string_view path, std::string response);
  void answer(std::string_view path, Answer answer);
  // The same, called when only the head has come.
  void answerHead(std::string_view path, Answer answer);
  // All that has come so far, in the order of arrival.
  std::vector<LoopbackRequest> requests() const;

 private:
  void acceptConnections();
  void serve(int socket);

  EnvironmentVariable noProxy_{"no_proxy", "*"};
  int listening_ = -1;
  int port_ = 0;
  mutable std::mutex mutex_;  // guards the answers and requests
  std::map<std::string, Answer, std::less<>> answers_;
  std::vector<LoopbackRequest> requests_;
  std::vector<std::pair<int, std::thread>> connections_;  // the acceptor's, until it has ended
  std::thread acceptor_;
};

// A whole response with its Content-Length, unless a header of that name is among `headers` ("Name: value"
// each).
std::string httpResponse(int status, std::string_view body, const std::vector<std::string>& headers = {});
std::string httpRedirect(std::string_view location);

}  // namespace clipwave::testing
