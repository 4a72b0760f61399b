#include "platform/foundation/ProcessInfo.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

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
  const EnvironmentVariable file("XDG_DATA_HOME", folder.write("file", "x").c_str());
  EXPECT_EQ(process->applicationSupportFolder().error().code, kFileWriteFileExistsError);
}

}  // namespace
}  // namespace clipwave
