// The program itself as a process, in a window of its own on a display of the test's own.
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <QTest>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <gmock/gmock.h>

#include "tests/support/RealMovies.h"

namespace clipwave::testing {
namespace {
using namespace ::testing;

constexpr int kLongest = 20000;  // milliseconds for any one thing

class Process {
 public:
  explicit Process(const std::string& command) {
    std::string script = "exec " + command;
    char shell[] = "/bin/sh", option[] = "-c";
    char* const arguments[] = {shell, option, script.data(), nullptr};
    if (::posix_spawn(&id_, shell, nullptr, nullptr, arguments, environ) != 0)
      throw std::runtime_error("could not start " + command);
  }
  ~Process() {
    send(SIGKILL);
    (void)wait();
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  void send(int signal) const {
    if (id_ > 0) ::kill(id_, signal);
  }
  // The exit status, 128 and the signal that ended it, or -1 where it goes on.
  int wait() {
    int status = 0;
    const bool ended =
        id_ > 0 && QTest::qWaitFor([&] { return ::waitpid(id_, &status, WNOHANG) == id_; }, kLongest);
    if (!ended) return -1;
    id_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

 private:
  pid_t id_ = 0;
};

class RealWindow : public Test {
 protected:
  // The display is the first free one, whose number the server tells.
  void SetUp() override {
    ASSERT_TRUE(QTest::qWaitFor([&] { return !readFile(home / "display").empty(); }, kLongest));
    display_.emplace(
        "DISPLAY",
        (":" + readFile(home / "display").substr(0, readFile(home / "display").find('\n'))).c_str());
    manager_.emplace("openbox 2>/dev/null");
    program_.emplace(CLIPWAVE);
  }
  // Runs a line of xdotool; nobody knows how soon a window answers, so it is tried for a while.
  void act(const std::string& line) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Process("xdotool " + line + " >/dev/null 2>&1").wait() == 0; },
                                kLongest))
        << line;
  }
  bool untilSaved(const std::string& text) {
    return QTest::qWaitFor([&] { return stored().find(text) != std::string::npos; }, kLongest);
  }
  std::string stored() { return readFile(home / "data/Clipwave/Clipwave.xml"); }

  const TemporaryFolder home;
  const EnvironmentVariable home_{"HOME", home.path().c_str()};
  const EnvironmentVariable data_{"XDG_DATA_HOME", (home / "data").c_str()};
  const EnvironmentVariable config_{"XDG_CONFIG_HOME", (home / "config").c_str()};
  const EnvironmentVariable runtime_{"XDG_RUNTIME_DIR", home.path().c_str()};
  const EnvironmentVariable platform_{"QT_QPA_PLATFORM", "xcb"};
  const EnvironmentVariable driver_{"SDL_AUDIODRIVER", "dummy"};
  const std::string settings_ =
      home.write("config/Clipwave/defaults.plist",
                 "<plist version='1.0'><dict><key>shouldCheckForUpdate</key><false/></dict></plist>");
  std::optional<EnvironmentVariable> display_;
  Process server_{"Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>'" + home / "display" +
                  "' 2>/dev/null"};
  std::optional<Process> manager_;
  std::optional<Process> program_;
};

TEST_F(RealWindow, TakesKeysFilesOfASecondStartAndASignalToEnd) {
  act("search --sync --onlyvisible --name Clipwave windowactivate --sync");
  // The cursor stands in the title of the first channel, which is selected.
  act("type --delay 20 'Window show'");
  act("key Return ctrl+s");
  EXPECT_TRUE(untilSaved("<vcTitle>Window show</vcTitle>")) << stored();

  const std::string movie = makeMovie(home, "second start.mov");
  EXPECT_EQ(Process(std::string(CLIPWAVE) + " '" + movie + "'").wait(), 0)
      << "it hands its file over and ends";
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        act("key ctrl+s");
        return stored().find("second start.mov") != std::string::npos;
      },
      kLongest));

  act("key ctrl+n");
  QTest::qWait(500);
  program_->send(SIGTERM);
  EXPECT_EQ(program_->wait(), 0);
  EXPECT_THAT(stored(), HasSubstr("Channel 03")) << "what was not saved yet";
}

}  // namespace
}  // namespace clipwave::testing
