// An https server on 127.0.0.1 with a certificate that only itself has signed, run by the openssl command.
#pragma once

#include <signal.h>

#include <cstdio>
#include <cstdlib>

#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

// Serves raw responses (as httpResponse() makes them), one connection after the other. Keeps its files in
// `folder`, which must outlive it.
class TLSServer {
 public:
  explicit TLSServer(const TemporaryFolder& folder) : folder_(folder) {
    const std::string script =
        "exec 2>&1 </dev/null; cd '" + folder.makeFolder("tls") + "' && echo $$ &&" +
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
        "-subj /CN=clipwave-test -addext subjectAltName=IP:127.0.0.1 -keyout key.pem -out certificate.pem &&"
        "exec timeout 60 openssl s_server -HTTP -accept 127.0.0.1:0 -cert certificate.pem -key key.pem";
    output_ = ::popen(script.c_str(), "re");
    // The shell tells its id, which the server keeps, and that its port: "ACCEPT 127.0.0.1:PORT".
    char line[256];
    if (std::fgets(line, sizeof line, output_) != nullptr) process_ = std::atoi(line);
    while (port_.empty() && std::fgets(line, sizeof line, output_) != nullptr) {
      const std::string text = line;
      if (text.starts_with("ACCEPT "))
        port_ = text.substr(text.rfind(':') + 1, text.size() - text.rfind(':') - 2);
    }
    if (process_ <= 0 || port_.empty()) std::abort();
  }
  ~TLSServer() {
    ::kill(process_, SIGTERM);
    ::pclose(output_);
  }
  TLSServer(const TLSServer&) = delete;
  TLSServer& operator=(const TLSServer&) = delete;

  // What the path "/NAME" answers.
  void answer(const std::string& name, std::string_view response) const {
    folder_.write("tls/" + name, response);
  }
  std::string url(std::string_view path) const { return "https://127.0.0.1:" + port_ + std::string(path); }
  std::string certificate() const { return folder_ / "tls/certificate.pem"; }

 private:
  const TemporaryFolder& folder_;
  std::FILE* output_ = nullptr;
  int process_ = 0;
  std::string port_;
};

}  // namespace clipwave::testing
