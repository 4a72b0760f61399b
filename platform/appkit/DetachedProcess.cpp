#include "platform/appkit/DetachedProcess.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string_view>

namespace clipwave {
namespace {

// The program's file, or "" when there is none that may be run. Looked up before forking: between fork and
// exec nothing may allocate.
std::string executablePath(const std::string& program) {
  if (program.find('/') != std::string::npos) return ::access(program.c_str(), X_OK) == 0 ? program : "";
  const char* const variable = std::getenv("PATH");
  std::string_view folders = variable == nullptr ? "/usr/local/bin:/usr/bin:/bin" : variable;
  while (!folders.empty()) {
    const std::string_view folder = folders.substr(0, folders.find(':'));
    folders.remove_prefix(folder.size() == folders.size() ? folder.size() : folder.size() + 1);
    if (!folder.starts_with('/')) continue;
    std::string candidate = std::string(folder) + "/" + program;
    if (::access(candidate.c_str(), X_OK) == 0) return candidate;
  }
  return {};
}

// In the grandchild: becomes the program, or writes why not to `report`.
[[noreturn]] void becomeProgram(const char* path, char* const* arguments, int report) {
  // The program must not hold the library's lock, nor any connection, beyond this process's end.
  ::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
  const int nothing = ::open("/dev/null", O_RDWR);
  if (nothing >= 0) {
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(nothing, STDOUT_FILENO);
    if (nothing > STDERR_FILENO) ::close(nothing);
  }
  ::signal(SIGPIPE, SIG_DFL);
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::execv(path, arguments);
  const char failed = 1;
  [[maybe_unused]] const ssize_t written = ::write(report, &failed, 1);
  ::_exit(127);
}

}  // namespace

bool startDetachedProcess(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return false;
  const std::string path = executablePath(arguments.front());
  if (path.empty()) return false;
  std::vector<char*> pointers;
  for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);

  // The pipe closes when the program begins; a byte in it says that it did not.
  int report[2];
  if (::pipe2(report, O_CLOEXEC) != 0) return false;
  const pid_t child = ::fork();
  if (child == 0) {
    // The child ends at once, so that the grandchild is adopted by the system, which reaps it.
    ::setsid();
    const pid_t grandchild = ::fork();
    if (grandchild == 0) becomeProgram(path.c_str(), pointers.data(), report[1]);
    ::_exit(grandchild < 0 ? 1 : 0);
  }
  ::close(report[1]);
  int status = 1;
  if (child > 0) {
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
  }
  bool failed = child < 0 || status != 0;
  char byte = 0;
  ssize_t count = 0;
  do {
    count = ::read(report[0], &byte, 1);
  } while (count < 0 && errno == EINTR);
  ::close(report[0]);
  failed = failed || count != 0;
  return !failed;
}

}  // namespace clipwave
