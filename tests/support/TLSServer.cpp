#include "tests/support/TLSServer.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {
namespace {

// The server tells its port on a line "ACCEPT 127.0.0.1:PORT".
int readPort(int descriptor) {
  std::string line;
  for (char byte = 0; ::read(descriptor, &byte, 1) == 1;) {
    line += byte;
    if (byte != '\n') continue;
    if (line.starts_with("ACCEPT ")) return std::atoi(line.c_str() + line.rfind(':') + 1);
    line.clear();
  }
  return 0;
}

}  // namespace

TLSServer::TLSServer(const TemporaryFolder& folder) : folder_(folder) {
  const std::string place = folder.makeFolder("tls");
  const std::string make =
      "cd '" + place +
      "' && openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
      "-subj /CN=clipwave-test -addext subjectAltName=IP:127.0.0.1 "
      "-keyout key.pem -out certificate.pem >log 2>&1";
  int ends[2];
  if (std::system(make.c_str()) != 0 || ::pipe2(ends, O_CLOEXEC) != 0) std::abort();
  process_ = ::fork();
  if (process_ == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::signal(SIGPIPE, SIG_IGN);  // nobody reads on once the port is known
    ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
    ::dup2(ends[1], STDOUT_FILENO);
    if (::chdir(place.c_str()) != 0) ::_exit(1);
    ::dup2(::open("log", O_WRONLY | O_APPEND), STDERR_FILENO);
    ::execlp("openssl", "openssl", "s_server", "-HTTP", "-accept", "127.0.0.1:0", "-cert", "certificate.pem",
             "-key", "key.pem", nullptr);
    ::_exit(1);
  }
  ::close(ends[1]);
  port_ = readPort(ends[0]);
  ::close(ends[0]);
  if (port_ == 0) std::abort();
}

TLSServer::~TLSServer() {
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
}

void TLSServer::answer(std::string_view name, std::string_view response) const {
  folder_.write("tls/" + std::string(name), response);
}

std::string TLSServer::url(std::string_view path) const {
  return "https://127.0.0.1:" + std::to_string(port_) + std::string(path);
}

std::string TLSServer::certificate() const {
  return folder_ / "tls/certificate.pem";
}

}  // namespace clipwave::testing
