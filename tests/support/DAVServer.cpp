#include "tests/support/DAVServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace clipwave::testing {
namespace {
namespace fs = std::filesystem;

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

int freePort() {
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  const int probe = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool isBound = ::bind(probe, plain, size) == 0 && ::getsockname(probe, plain, &size) == 0;
  ::close(probe);
  return isBound ? ntohs(address.sin_port) : 0;
}

constexpr const char* kApache = R"(
ServerName 127.0.0.1
PidFile pid
ErrorLog error.log
DefaultRuntimeDir .
StartServers 1
ServerLimit 1
ThreadsPerChild 8
MaxRequestWorkers 8
LimitRequestBody 0
DavLockDB locks/locks
TypesConfig /dev/null
<Location />
  Dav On
  AuthName disk
  Require valid-user
)";
}  // namespace

DAVServer::DAVServer(Kind kind, std::string configuration, std::string preload)
    : kind_(kind), configuration_(std::move(configuration)), preload_(std::move(preload)) {
  for (const char* name : {"disk", "locks"}) folder_.makeFolder(name);
  // A superuser's Apache serves as somebody else.
  if (::geteuid() == 0) {
    fs::permissions(folder_.path(), fs::perms(0755));
    for (const char* name : {"disk", "locks"}) fs::permissions(folder_ / name, fs::perms(0777));
  }
  // The words "ann:disk:secret" and "secret", digested.
  folder_.write("digest", "ann:disk:66a9713b1c2ef7ef8d9e0bed47041d8d\n");
  folder_.write("basic", "ann:{SHA}5en6G6MezRroT3XKqkdPOmY/BfQ=\n");
  for (int tries = 0; tries < 10; ++tries) {
    port_ = freePort();
    if (start()) return;
  }
  throw std::runtime_error("no server: " + readFile(folder_ / "output"));
}

std::string DAVServer::apacheConfiguration() const {
  std::string text = "ServerRoot " + folder_.path() + "\nListen 127.0.0.1:" + std::to_string(port_) + "\n";
  for (const char* module : {"mpm_event", "authn_core", "authn_file", "authz_core", "authz_user",
                             "auth_basic", "auth_digest", "dav", "dav_fs", "dir", "mime", "alias", "rewrite"})
    text += std::string("LoadModule ") + module + "_module /usr/lib/apache2/modules/mod_" + module + ".so\n";
  if (::geteuid() == 0) text += "User www-data\nGroup www-data\n";
  text += "DocumentRoot " + (folder_ / "disk") + "\n" + kApache;
  text += kind_ == Kind::ApacheDigest ? "AuthType Digest\nAuthUserFile digest\n"
                                      : "AuthType Basic\nAuthUserFile basic\n";
  return text + "</Location>\n" + configuration_;
}

bool DAVServer::start() {
  const std::string address = "127.0.0.1:" + std::to_string(port_);
  const std::string file = folder_.write("apache.conf", apacheConfiguration());
  const std::string disk = folder_ / "disk";
  fs::remove(folder_ / "pid");
  // What the server's own processes leave behind when they are killed is then ours to wait for.
  ::prctl(PR_SET_CHILD_SUBREAPER, 1);
  process_ = ::fork();
  if (process_ == 0) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (std::freopen((folder_ / "output").c_str(), "w", stderr) == nullptr) ::_exit(1);
    if (!preload_.empty()) ::setenv("LD_PRELOAD", preload_.c_str(), 1);
    if (kind_ == Kind::Rclone)
      ::execlp("rclone", "rclone", "--config=", "serve", "webdav", disk.c_str(), "--addr", address.c_str(),
               "--user", "ann", "--pass", "secret", nullptr);
    else
      ::execl("/usr/sbin/apache2", "apache2", "-DFOREGROUND", "-f", file.c_str(), nullptr);
    ::_exit(127);
  }
  ::setpgid(process_, process_);
  for (int tries = 0; tries < 500; ++tries) {
    if (::waitpid(process_, nullptr, WNOHANG) != 0) break;
    if (isListening()) return true;
    ::usleep(20'000);
  }
  kill();
  return false;
}

bool DAVServer::isListening() const {
  const sockaddr_in address = loopback(port_);
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool isConnected =
      ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  ::close(socket);
  return isConnected;
}

void DAVServer::kill() {
  if (process_ <= 0) return;
  ::kill(-process_, SIGKILL);
  while (::waitpid(-process_, nullptr, 0) > 0) continue;
  process_ = 0;
}

void DAVServer::startAgain() {
  if (!start()) throw std::runtime_error("the server does not start again: " + readFile(folder_ / "output"));
}

void DAVServer::pause() const {
  ::kill(-process_, SIGSTOP);
}
void DAVServer::resume() const {
  ::kill(-process_, SIGCONT);
}

std::map<std::string, std::optional<std::string>> DAVServer::contents() const {
  std::map<std::string, std::optional<std::string>> found = {{"/", std::nullopt}};
  const fs::path disk = folder_ / "disk";
  for (const auto& entry : fs::recursive_directory_iterator(disk)) {
    const std::string path = "/" + entry.path().lexically_relative(disk).string();
    // Apache's own: what it knows of the properties of files.
    if (path.find("/.DAV") != path.npos) continue;
    found[path] = entry.is_directory() ? std::nullopt : std::optional(readFile(entry.path().string()));
  }
  return found;
}

}  // namespace clipwave::testing
