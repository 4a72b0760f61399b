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

#include "tests/support/LoopbackServer.h"

namespace clipwave::testing {
namespace fs = std::filesystem;

DAVServer::DAVServer(Kind kind, std::string configuration, std::string preload)
    : kind_(kind), configuration_(std::move(configuration)), preload_(std::move(preload)) {
  // The superuser's Apache serves as somebody else.
  fs::permissions(folder_.path(), fs::perms(0755));
  for (const char* name : {"disk", "locks"}) fs::permissions(folder_.makeFolder(name), fs::perms(0777));
  // The words "ann:disk:secret" and "secret", digested.
  folder_.write("digest", "ann:disk:66a9713b1c2ef7ef8d9e0bed47041d8d\n");
  folder_.write("basic", "ann:{SHA}5en6G6MezRroT3XKqkdPOmY/BfQ=\n");
  for (int tries = 0; tries < 10; ++tries) {
    port_ = LoopbackServer().port();  // free now, though somebody may be faster than us
    if (start()) return;
  }
  throw std::runtime_error("no server: " + readFile(folder_ / "output"));
}

std::string DAVServer::apacheConfiguration() const {
  std::string text;
  for (const char* module : {"mpm_event", "authn_core", "authn_file", "authz_core", "authz_user",
                             "auth_basic", "auth_digest", "dav", "dav_fs", "dir", "mime", "rewrite"})
    text += std::string("LoadModule ") + module + "_module /usr/lib/apache2/modules/mod_" + module + ".so\n";
  if (::geteuid() == 0) text += "User www-data\nGroup www-data\n";
  const bool isDigest = kind_ == Kind::ApacheDigest;
  return text + "ServerRoot " + folder_.path() + "\nDocumentRoot disk\nDavLockDB locks/locks\nPidFile pid\n" +
         "Listen 127.0.0.1:" + std::to_string(port_) + "\nServerName 127.0.0.1\nErrorLog error.log\n" +
         "DefaultRuntimeDir .\nTypesConfig /dev/null\nLimitRequestBody 0\nStartServers 1\n" +
         "<Location />\nDav On\nRequire valid-user\nAuthName disk\n" +
         (isDigest ? "AuthType Digest\nAuthUserFile digest\n" : "AuthType Basic\nAuthUserFile basic\n") +
         "</Location>\n" + configuration_;
}

bool DAVServer::start() {
  const std::string address = "127.0.0.1:" + std::to_string(port_);
  const std::string file = folder_.write("apache.conf", apacheConfiguration());
  fs::remove(folder_ / "pid");  // which a killed Apache has left, and another process may bear
  // What the server's own processes leave behind when they are killed is then ours to wait for.
  ::prctl(PR_SET_CHILD_SUBREAPER, 1);
  process_ = ::fork();
  if (process_ == 0) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (std::freopen((folder_ / "output").c_str(), "w", stderr) == nullptr) ::_exit(1);
    if (!preload_.empty()) ::setenv("LD_PRELOAD", preload_.c_str(), 1);
    if (kind_ == Kind::Rclone)
      ::execlp("rclone", "rclone", "--config=", "serve", "webdav", (folder_ / "disk").c_str(), "--addr",
               address.c_str(), "--user", "ann", "--pass", "secret", nullptr);
    else
      ::execl("/usr/sbin/apache2", "apache2", "-DFOREGROUND", "-f", file.c_str(), nullptr);
    ::_exit(127);
  }
  ::setpgid(process_, process_);
  for (int tries = 0; tries < 500 && ::waitpid(process_, nullptr, WNOHANG) == 0; ++tries) {
    if (isListening()) return true;
    ::usleep(20'000);
  }
  kill();
  return false;
}

bool DAVServer::isListening() const {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port_));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int failure = ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  ::close(socket);
  return failure == 0;
}

void DAVServer::signal(int number) const {
  if (process_ > 0) ::kill(-process_, number);
}

void DAVServer::kill() {
  signal(SIGKILL);
  while (process_ > 0 && ::waitpid(-process_, nullptr, 0) > 0) continue;
  process_ = 0;
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
