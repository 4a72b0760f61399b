#include "platform/appkit/Workspace.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/appkit/DesktopEntry.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class WorkspaceTest : public Test {
 protected:
  // A program that writes its arguments, one a line, and "fd" for each open file beyond the standard ones.
  std::string program(const std::string& name) {
    const std::string output = folder_ / (name + ".out");
    const std::string path =
        folder_.write("bin/" + name, "#!/bin/sh\nfor a; do echo \"$a\"; done > '" + output + ".part'\n" +
                                         "test -e /proc/$$/fd/77 && echo fd >> '" + output + ".part'\n" +
                                         "echo noise\nmv '" + output + ".part' '" + output + "'\n");
    ::chmod(path.c_str(), 0755);
    return path;
  }
  std::string outputOf(const std::string& name) {
    const std::string output = folder_ / (name + ".out");
    for (int i = 0; i < 500 && ::access(output.c_str(), F_OK) != 0; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    const std::string text = readFile(output);
    ::unlink(output.c_str());
    return text;
  }
  void application(const std::string& file, const std::string& name, const std::string& rest) {
    folder_.write(file, "# comment\n[Desktop Entry]\nType=Application\nName=" + name + "\nName[de]=Anders\n" +
                            rest + "\n[Desktop Action x]\nExec=false\n");
  }

  TemporaryFolder folder_;
  EnvironmentVariable home_{"XDG_DATA_HOME", (folder_ / "home").c_str()};
  EnvironmentVariable data_{"XDG_DATA_DIRS", ("relative:" + folder_ / "data").c_str()};
  EnvironmentVariable path_{"PATH", (folder_ / "bin:/usr/bin:/bin").c_str()};
  std::unique_ptr<FileManager> files_ = makeFileManager();
  std::unique_ptr<Workspace> workspace_ = makeWorkspace(*files_);
  const std::string movie_ = folder_.write("my 100% movie?.mov", "x");
};

TEST_F(WorkspaceTest, FilesAndAddressesGoToTheDesktopsOpener) {
  EnvironmentVariable noPath("PATH", (folder_ / "bin").c_str());
  EXPECT_FALSE(workspace_->openFile(movie_));
  program("xdg-open");
  EnvironmentVariable path("PATH", (folder_ / "bin:/usr/bin:/bin").c_str());
  EXPECT_TRUE(workspace_->openFile(movie_));
  EXPECT_EQ(outputOf("xdg-open"), movie_ + "\n");
  EXPECT_TRUE(workspace_->openURL("itpc://host/a b;$(x)"));
  EXPECT_EQ(outputOf("xdg-open"), "itpc://host/a b;$(x)\n");
  EXPECT_FALSE(workspace_->openURL("--help"));
  EXPECT_FALSE(workspace_->openURL(""));
  EXPECT_FALSE(workspace_->openFile(folder_ / "missing.mov"));
}

TEST_F(WorkspaceTest, AnApplicationIsFoundByItsNameAndStartedDetached) {
  program("xdg-open");
  const std::string player = program("player");
  application("data/applications/vendor/player.desktop", "Movie Player",
              "Exec=\"" + player + "\" --play %U %d");
  const int lock = ::open("/dev/null", O_RDONLY);
  ASSERT_EQ(::dup2(lock, 77), 77);
  EXPECT_TRUE(workspace_->openFileWithApplication(movie_, "movie player"));
  ::close(77);
  ::close(lock);
  EXPECT_EQ(outputOf("player"), "--play\nfile://" + folder_.path() + "/my%20100%25%20movie%3F.mov\n");
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);

  // What the user's own folder says of the same entry goes first; what cannot be started opens as by default.
  application("home/applications/vendor-player.desktop", "Movie Player", "Exec=" + player + "\nHidden=true");
  EXPECT_TRUE(workspace_->openFileWithApplication(movie_, "Movie Player"));
  EXPECT_EQ(outputOf("xdg-open"), movie_ + "\n");
  application("data/applications/gone.desktop", "Gone", "Exec=/nowhere/gone %f");
  EXPECT_TRUE(workspace_->openFileWithApplication(movie_, "Gone"));
  EXPECT_EQ(outputOf("xdg-open"), movie_ + "\n");
}

TEST_F(WorkspaceTest, ChoosingAnApplicationForASchemeChangesNothingElseAndCanBeTakenBack) {
  const EnvironmentVariable config("XDG_CONFIG_HOME", (folder_ / "config").c_str());
  const EnvironmentVariable systems("XDG_CONFIG_DIRS", (folder_ / "etc").c_str());
  const EnvironmentVariable desktop("XDG_CURRENT_DESKTOP", "Tidy:GNOME");
  const std::string list = folder_ / "config/mimeapps.list";
  const auto choice = [this] { return workspace_->defaultApplicationForURLScheme("itpc"); };
  EXPECT_EQ(choice(), "");
  const auto refused = workspace_->setDefaultApplicationForURLScheme("own.desktop", "itpc");
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error().code, kFileNoSuchFileError);
  EXPECT_FALSE(files_->fileExistsAtPath(list));
  for (const char* name : {"own", "vendor/other"})
    application(std::string("data/applications/") + name + ".desktop", name, "Exec=x %u");

  const std::string before =
      "# mine\n[Added Associations]\ntext/plain=e.desktop;\n\n[Default "
      "Applications]\nx-scheme-handler/pcast=own.desktop\n"
      "x-scheme-handler/itpc = gone.desktop; vendor-other.desktop\nx=y\n";
  for (const std::string& text : {before, std::string()}) {
    text.empty() ? ::unlink(list.c_str()) : folder_.write("config/mimeapps.list", text).size();
    const std::string choiceBefore = choice();
    EXPECT_EQ(choiceBefore, text.empty() ? "" : "vendor-other.desktop");
    for (int i = 0; i < 2; ++i)
      EXPECT_TRUE(workspace_->setDefaultApplicationForURLScheme("own.desktop", "itpc"));
    EXPECT_EQ(choice(), "own.desktop");
    EXPECT_THAT(readFile(list), HasSubstr("[Added Associations]\nx-scheme-handler/itpc=own.desktop;\n"));
    EXPECT_TRUE(workspace_->removeDefaultApplicationForURLScheme("own.desktop", "itpc"));
    EXPECT_EQ(choice(), choiceBefore);
  }
  folder_.write("config/mimeapps.list", before);
  ASSERT_TRUE(workspace_->setDefaultApplicationForURLScheme("own.desktop", "itpc"));
  ASSERT_TRUE(workspace_->removeDefaultApplicationForURLScheme("own.desktop", "itpc"));
  std::string after = before;
  after.replace(after.find("itpc = gone.desktop; vendor-other.desktop"), 41,
                "itpc=gone.desktop;vendor-other.desktop;");
  EXPECT_EQ(readFile(list), after);

  // A list of the desktop in use goes before the others, the user's before the system's.
  folder_.write("etc/mimeapps.list", "[Default Applications]\nx-scheme-handler/itpc=own.desktop\n");
  EXPECT_EQ(choice(), "vendor-other.desktop");
  folder_.write("config/gnome-mimeapps.list",
                "[Default Applications]\nx-scheme-handler/itpc=vendor-other.desktop\n");
  ASSERT_TRUE(workspace_->setDefaultApplicationForURLScheme("own.desktop", "itpc"));
  EXPECT_EQ(choice(), "own.desktop");
  // Associations belong into the list for every desktop; of two lines for one type the last one counts.
  EXPECT_THAT(readFile(folder_ / "config/gnome-mimeapps.list"), Not(HasSubstr("Associations")));
  EXPECT_THAT(readFile(list), HasSubstr("[Added Associations]\nx-scheme-handler/itpc=own.desktop;\n"));
  folder_.write("config/gnome-mimeapps.list",
                "[Default Applications]\nx-scheme-handler/itpc=own.desktop\n"
                "x-scheme-handler/itpc=vendor-other.desktop\n");
  EXPECT_EQ(choice(), "vendor-other.desktop");
  ASSERT_TRUE(workspace_->setDefaultApplicationForURLScheme("own.desktop", "itpc"));
  EXPECT_EQ(choice(), "own.desktop");
}

TEST(DesktopEntryTest, CommandLinesAreQuotedEscapedAndFilledInAsDescribed) {
  const auto line = [](const std::string& exec) {
    const std::string text = "[Desktop Entry]\nType=Application\nName=N\nIcon=i\nExec=" + exec + "\n";
    const auto entry = DesktopEntry::parse(text, "/e.desktop");
    return entry ? entry->commandLineForFile("/a b%f") : std::vector<std::string>{"none"};
  };
  EXPECT_THAT(line("p %f"), ElementsAre("p", "/a b%f"));
  EXPECT_THAT(line("p --in=%F %i %c %k 100%%"),
              ElementsAre("p", "--in=/a b%f", "--icon", "i", "N", "/e.desktop", "100%"));
  EXPECT_THAT(line("p"), ElementsAre("p", "/a b%f"));
  EXPECT_THAT(line(R"("my p" "a \\"b\\" \\\\c" %m %f)"), ElementsAre("my p", R"(a "b" \c)", "/a b%f"));
  EXPECT_THAT(line("\"p"), IsEmpty());
  EXPECT_THAT(line("p %f\nTerminal=true"), ElementsAre("none"));
  EXPECT_FALSE(DesktopEntry::parse("[Desktop Entry]\nType=Link\nName=N\nExec=p", "/e.desktop"));
}

TEST(HFSTypeTest, AQuickTimeMovieIsToldByItsFirstAtom) {
  using namespace std::string_literals;
  const TemporaryFolder folder;
  const auto files = makeFileManager();
  const auto typeOf = [&](const std::string& content) {
    return HFSTypeOfFile(*files, folder.write("file", content));
  };
  const std::string rest(100, 'x');
  for (const std::string& movie :
       {"\0\0\0\x08moov"s, "\0\0\0\0mdat"s, "\0\0\0\x14"s + "ftypqt  \0\0\0\0mp42"s,
        "\0\0\0\x18"s + "ftypmp42\0\0\0\0isomqt  "s, "\0\0\0\x01mdat\0\0\0\0\0\0\0\x74"s})
    EXPECT_EQ(typeOf(movie + rest), "'MooV'") << movie;
  for (const std::string& other :
       {"\0\0\0\x14"s + "ftypmp42qt  mp42"s + rest, "\0\0\0\x14"s + "ftypmp42\0\0\0\0mp42qt  "s,
        "\0\0\0\x01mdat\0\0\0\0\0\0\0\x75"s + rest, "Timemoov" + rest, "\0\0\0\x08moo"s})
    EXPECT_EQ(typeOf(other), "") << other;
  EXPECT_EQ(HFSTypeOfFile(*files, folder.path()), "");
  const std::string pipe = folder / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(HFSTypeOfFile(*files, pipe), "");
}

}  // namespace
}  // namespace clipwave
