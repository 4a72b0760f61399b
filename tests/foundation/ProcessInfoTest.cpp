#include "platform/foundation/ProcessInfo.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {

using testing::EnvironmentVariable;
using testing::TemporaryFolder;

TEST(ProcessInfo, FoldersFollowTheEnvironmentAndAreMadePrivate) {
  const TemporaryFolder folder;
  const auto process = makeProcessInfo();
  const EnvironmentVariable home("HOME", folder.path().c_str());
  const EnvironmentVariable config("XDG_CONFIG_HOME", "relative/paths/do/not/count");
  {
    const EnvironmentVariable data("XDG_DATA_HOME", nullptr);
    EXPECT_EQ(*process->applicationSupportFolder(), folder / ".local/share");
    struct stat status {};
    ASSERT_EQ(::stat((folder / ".local/share").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700u);
  }
  EXPECT_EQ(*process->configurationFolder(), folder / ".config");
  EXPECT_NE(::access((folder / ".config").c_str(), F_OK), 0);
  const EnvironmentVariable data("XDG_DATA_HOME", (folder / "data").c_str());
  EXPECT_EQ(*process->applicationSupportFolder(), folder / "data");
}

TEST(ProcessInfo, APathThatCannotBeAFolderIsAnError) {
  const TemporaryFolder folder;
  const EnvironmentVariable data("XDG_DATA_HOME", folder.write("file", "x").c_str());
  const auto answer = makeProcessInfo()->applicationSupportFolder();
  ASSERT_FALSE(answer.ok());
  EXPECT_EQ(
      answer.error().localizedDescription,
      "\u201c" + (folder / "file") + "\u201d could not be created: something with that name exists already.");
}

}  // namespace
}  // namespace clipwave
