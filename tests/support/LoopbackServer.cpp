#include "tests/support/LoopbackServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <sstream>

#include "platform/foundation/ASCII.h"

namespace clipwave::testing {
namespace {

constexpr std::string_view kHeadEnd = "\r\n\r\n";

}  // namespace

std::string LoopbackRequest::path() const {
  const std::size_t start = head.find(' ') + 1;
  return head.substr(start, head.find(' ', start) - start);
}

std::string LoopbackRequest::header(std::string_view name) const {
  std::istringstream lines(head);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t colon = line.find(':');
    if (colon != line.npos && equalIgnoringCase(line.substr(0, colon), name))
      return std::string(trimmed(std::string_view(line).substr(colon + 1)));
  }
  return {};
}

class LoopbackServer::Connection final : public LoopbackConnection {
 public:
  Connection(int socket, int ending) : socket_(socket), ending_(ending) {}
  ~Connection() override { ::close(socket_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  const LoopbackRequest& request() const { return request_; }
  bool pause(Seconds time) override {
    pollfd polled{ending_, POLLIN, 0};
    return ::poll(&polled, 1, static_cast<int>(time.count() * 1000)) == 0;
  }
  bool send(std::string_view bytes) override {
    while (!bytes.empty()) {
      if (!waitFor(POLLOUT)) return false;
      const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
      if (sent < 0 && errno != EAGAIN && errno != EINTR) return false;
      bytes.remove_prefix(sent < 0 ? 0 : static_cast<std::size_t>(sent));
    }
    return true;
  }
  // False when the client sends no whole request.
  bool readRequest() {
    while (request_.head.find(kHeadEnd) == request_.head.npos) {
      if (!readSome(request_.head)) return false;
    }
    return true;
  }

 private:
  bool waitFor(short events) const {
    pollfd polled[] = {{socket_, events, 0}, {ending_, POLLIN, 0}};
    while (::poll(polled, 2, -1) < 0) {
      if (errno != EINTR) return false;
    }
    return polled[1].revents == 0;
  }
  bool readSome(std::string& got) const {
    char buffer[16 * 1024];
    if (!waitFor(POLLIN)) return false;
    const ssize_t count = ::recv(socket_, buffer, sizeof buffer, MSG_DONTWAIT);
    if (count > 0) got.append(buffer, static_cast<std::size_t>(count));
    return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
  }

  int socket_;
  int ending_;
  LoopbackRequest request_;
};

LoopbackServer::LoopbackServer()
    : listening_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), ending_(::eventfd(0, EFD_CLOEXEC)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listening_, plain, size) != 0 || ::listen(listening_, 64) != 0 ||
      ::getsockname(listening_, plain, &size) != 0)
    std::abort();
  port_ = ntohs(address.sin_port);
  acceptor_ = std::thread([this] { acceptConnections(); });
}

LoopbackServer::~LoopbackServer() {
  ::eventfd_write(ending_, 1);
  acceptor_.join();
  for (std::thread& connection : connections_) connection.join();
  ::close(listening_);
  ::close(ending_);
}

std::string LoopbackServer::url(std::string_view path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + std::string(path);
}

void LoopbackServer::answer(std::string_view path, std::string response) {
  answer(path,
         [response = std::move(response)](LoopbackConnection& connection) { connection.send(response); });
}

void LoopbackServer::answer(std::string_view path, Answer answer) {
  const std::lock_guard lock(mutex_);
  answers_[std::string(path)] = std::move(answer);
}

std::vector<LoopbackRequest> LoopbackServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void LoopbackServer::acceptConnections() {
  while (true) {
    pollfd polled[] = {{listening_, POLLIN, 0}, {ending_, POLLIN, 0}};
    if (::poll(polled, 2, -1) < 0 && errno != EINTR) return;
    if (polled[1].revents != 0) return;
    const int socket = ::accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) continue;
    connections_.emplace_back([this, socket] {
      Connection connection(socket, ending_);
      serve(connection);
    });
  }
}

void LoopbackServer::serve(Connection& connection) {
  if (!connection.readRequest()) return;
  Answer answer = [](LoopbackConnection& client) { client.send(httpResponse(404, "Not here.")); };
  {
    const std::lock_guard lock(mutex_);
    requests_.push_back(connection.request());
    const auto found = answers_.find(connection.request().path());
    if (found != answers_.end()) answer = found->second;
  }
  answer(connection);
}

std::string httpResponse(int status, std::string_view body, const std::vector<std::string>& headers) {
  std::string response = "HTTP/1.1 " + std::to_string(status) + " Status\r\nConnection: close\r\n";
  for (const std::string& header : headers) response += header + "\r\n";
  if (response.find("\r\nContent-Length:") == response.npos)
    response += "Content-Length: " + std::to_string(body.size()) + "\r\n";
  return response.append("\r\n").append(body);
}

std::string httpRedirect(std::string_view location) {
  return httpResponse(302, "", {"Location: " + std::string(location)});
}

}  // namespace clipwave::testing
