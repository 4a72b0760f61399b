// The real companion, run as a process with a library of its own.
#pragma once

#include <gmock/gmock.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

// A command line: its words, or a line that is split at blanks.
struct Arguments : std::vector<std::string> {
  Arguments(std::initializer_list<std::string> words) : vector(words) {}
  Arguments(const char* line) {  // NOLINT(google-explicit-constructor)
    std::istringstream words(line);
    for (std::string word; words >> word;) push_back(word);
  }
};

struct Outcome {
  int status = -1;  // the exit status, or 128 and the signal that ended the process
  std::string out;
  std::string err;
};

// The command ended with `status`; and, where it failed, with `message` on standard error.
MATCHER_P(Exits, status, "") {
  *result_listener << "status " << arg.status << ", out \"" << arg.out << "\", err \"" << arg.err << '"';
  return arg.status == status;
}
MATCHER_P2(Fails, status, message, "") {
  *result_listener << "status " << arg.status << ", err \"" << arg.err << '"';
  return arg.status == status && arg.err.find(message) != std::string::npos;
}

// One process, whose standard input is the file "input" in the folder, or nothing; killed when it still runs
// at the end.
class CompanionProcess {
 public:
  // No file grows beyond `fileBlocks` blocks of 512 bytes; the writing of more fails.
  CompanionProcess(const TemporaryFolder& folder, Arguments arguments, int fileBlocks,
                   const std::string& output)
      : output_(output) {
    const std::string script =
        "export HOME=\"$0\" XDG_DATA_HOME=\"$0/data\" XDG_CONFIG_HOME=\"$0/config\";"
        "export TZ=America/New_York DBUS_SESSION_BUS_ADDRESS=disabled:;"
        "output=$1; input=\"$0/input\"; shift; trap '' XFSZ; [ -e \"$input\" ] || input=/dev/null;" +
        (fileBlocks < 0 ? "" : "ulimit -f " + std::to_string(fileBlocks) + ";") +
        "exec \"$@\" <\"$input\" >\"$output\" 2>\"$output.err\"";
    arguments.insert(arguments.begin(), {"/bin/sh", "-c", script, folder.path(), output, CLIPWAVECTL});
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    if (::posix_spawn(&process_, "/bin/sh", nullptr, nullptr, argv.data(), environ) != 0)
      throw std::runtime_error("the companion could not be started");
  }
  ~CompanionProcess() {
    if (process_ == 0) return;
    ::kill(process_, SIGKILL);
    (void)wait();
  }
  CompanionProcess(const CompanionProcess&) = delete;
  CompanionProcess& operator=(const CompanionProcess&) = delete;

  void interrupt(int signal = SIGINT) const { ::kill(process_, signal); }
  Outcome wait() {
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) continue;
    process_ = 0;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), readFile(output_),
            readFile(output_ + ".err")};
  }

 private:
  std::string output_;
  pid_t process_ = 0;
};

// A library in a folder of its own, and the companion that works on it.
class Library {
 public:
  const TemporaryFolder folder;

  std::string store() const { return folder / "data/Clipwave/Clipwave.xml"; }
  std::string storedBytes() const { return readFile(store()); }

  Outcome run(Arguments arguments, int fileBlocks = -1) const {
    return CompanionProcess(folder, std::move(arguments), fileBlocks, folder / "output").wait();
  }
  // What a command has printed that must succeed; throws where it failed.
  std::string done(Arguments arguments) const {
    const Outcome outcome = run(std::move(arguments));
    if (outcome.status != 0) throw std::runtime_error(outcome.err);
    return outcome.out;
  }
  // The first channel, as show --json describes it.
  nlohmann::json channel() const { return nlohmann::json::parse(done("show --json")).at("channels").at(0); }
};

}  // namespace clipwave::testing
