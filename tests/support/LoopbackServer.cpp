#include "tests/support/LoopbackServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

#include "platform/foundation/ASCII.h"

namespace clipwave::testing {

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

bool LoopbackConnection::send(std::string_view bytes) {
  return ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

bool LoopbackConnection::pause(Seconds time) {
  pollfd polled{socket_, POLLRDHUP, 0};
  return ::poll(&polled, 1, static_cast<int>(time.count() * 1000)) == 0;
}

bool LoopbackConnection::receive(std::string& bytes) {
  char buffer[64 * 1024];
  const ssize_t count = ::recv(socket_, buffer, sizeof buffer, 0);
  if (count > 0) bytes.append(buffer, static_cast<std::size_t>(count));
  return count > 0;
}

bool LoopbackConnection::receiveHead() {
  request_ = {};
  isKeptOpen_ = false;
  while (request_.head.find("\r\n\r\n") == request_.head.npos) {
    if (!receive(request_.head)) return false;
  }
  const std::size_t end = request_.head.find("\r\n\r\n") + 4;
  request_.body = request_.head.substr(end);
  request_.head.resize(end);
  return true;
}

bool LoopbackConnection::receiveBody() {
  const std::size_t size = std::strtoull(request_.header("Content-Length").c_str(), nullptr, 10);
  if (!request_.header("Expect").empty() && !send("HTTP/1.1 100 Continue\r\n\r\n")) return false;
  while (request_.body.size() < size) {
    if (!receive(request_.body)) return false;
  }
  bodyReceived_();
  return true;
}

LoopbackServer::LoopbackServer() : listening_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
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

// A socket that is shut down wakes the thread that waits on it.
LoopbackServer::~LoopbackServer() {
  ::shutdown(listening_, SHUT_RDWR);
  acceptor_.join();
  ::close(listening_);
  for (auto& [socket, thread] : connections_) {
    ::shutdown(socket, SHUT_RDWR);
    thread.join();
    ::close(socket);
  }
}

std::string LoopbackServer::url(std::string_view path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + std::string(path);
}

void LoopbackServer::answer(std::string_view path, std::string response) {
  answer(path,
         [response = std::move(response)](LoopbackConnection& connection) { connection.send(response); });
}

void LoopbackServer::answer(std::string_view path, Answer answer) {
  answerHead(path, [answer = std::move(answer)](LoopbackConnection& connection) {
    if (connection.receiveBody()) answer(connection);
  });
}

void LoopbackServer::answerHead(std::string_view path, Answer answer) {
  const std::lock_guard lock(mutex_);
  answers_[std::string(path)] = std::move(answer);
}

std::vector<LoopbackRequest> LoopbackServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void LoopbackServer::acceptConnections() {
  for (int socket = 0; (socket = ::accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
    connections_.emplace_back(socket, [this, socket] { serve(socket); });
  }
}

void LoopbackServer::serve(int socket) {
  LoopbackConnection connection(socket);
  do {
    if (!connection.receiveHead()) break;
    Answer answer = [](LoopbackConnection& client) { client.send(httpResponse(404, "Not here.")); };
    std::size_t index = 0;
    {
      const std::lock_guard lock(mutex_);
      index = requests_.size();
      requests_.push_back(connection.request());
      const auto found = answers_.find(connection.request().path());
      if (found != answers_.end()) answer = found->second;
    }
    connection.bodyReceived_ = [&] {
      const std::lock_guard lock(mutex_);
      requests_[index].body = connection.request().body;
    };
    answer(connection);
  } while (connection.isKeptOpen_);
  ::shutdown(socket, SHUT_RDWR);
  // Whoever still sends is to meet a closed connection, not a full one.
  for (std::string rest; connection.receive(rest); rest.clear()) {
  }
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
