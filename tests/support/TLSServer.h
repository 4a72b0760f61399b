// An https server on 127.0.0.1 with a certificate that only itself has signed, run by the openssl command.
#pragma once

#include <string>
#include <string_view>

namespace clipwave::testing {

class TemporaryFolder;

// Serves raw responses (as httpResponse() makes them), one connection after the other. Keeps its files in
// `folder`, which must outlive it.
class TLSServer {
 public:
  explicit TLSServer(const TemporaryFolder& folder);
  ~TLSServer();
  TLSServer(const TLSServer&) = delete;
  TLSServer& operator=(const TLSServer&) = delete;

  // What the path "/NAME" answers.
  void answer(std::string_view name, std::string_view response) const;
  std::string url(std::string_view path) const;
  std::string certificate() const;

 private:
  const TemporaryFolder& folder_;
  int process_ = -1;
  int port_ = 0;
};

}  // namespace clipwave::testing
