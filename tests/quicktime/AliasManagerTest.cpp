#include "platform/quicktime/AliasManager.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/quicktime/AliasRecord.h"
#include "platform/quicktime/VolumeScan.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using namespace testing;

namespace fs = std::filesystem;

class RealDisk {
 public:
  AliasManager& aliases() { return *aliases_; }
  TestClock& clock() { return clock_; }
  std::string operator/(const std::string& name) const { return folder_ / name; }
  // The new file lies beside the old one first, so that it never gets the old one's inode.
  void makeFile(const std::string& path) { fs::rename(folder_.write("new", "movie"), path); }
  std::string makeFolder(const std::string& name) { return folder_.makeFolder(name); }
  std::string pathOf(const std::string& alias) {
    const auto resolved = aliases_->resolveAlias(alias);
    return resolved ? resolved->path : "";
  }

 private:
  TemporaryFolder folder_;
  TestClock clock_;
  std::unique_ptr<AliasManager> aliases_ = makeAliasManager(clock_);
};

TEST(AliasManager, AFileIsFoundWhereverItWasMovedNearby) {
  RealDisk disk;
  const std::string folder = disk.makeFolder("movies/one");
  for (const char* deeper : {"movies/two/three", "elsewhere/a/b"}) disk.makeFolder(deeper);
  const std::string locked = disk.makeFolder("movies/a-locked");
  ::chmod(locked.c_str(), 0);
  disk.makeFile(folder + "/clip.mov");
  const std::string alias = *disk.aliases().newAlias(folder + "/clip.mov");
  std::string at = folder + "/clip.mov";
  for (const char* place :
       {"movies/one/renamed.mov", "movies/clip.mov", "movies/two/three/clip.mov", "elsewhere/a/b/clip.mov"}) {
    fs::rename(at, disk / place);
    at = disk / place;
    disk.clock().tick(Seconds(31));
    EXPECT_EQ(disk.pathOf(alias), at);
  }
  fs::rename(disk / "elsewhere", disk / "renamed");  // with the file in it, and its old folder gone too
  ::chmod(locked.c_str(), 0700);
  fs::remove_all(disk / "movies");
  disk.clock().tick(Seconds(31));
  EXPECT_EQ(disk.pathOf(alias), disk / "renamed/a/b/clip.mov");
  for (const char* noAlias : {"", "alias", "\1/movies/a.mov"}) EXPECT_EQ(disk.pathOf(noAlias), "");
}

TEST(AliasManager, AnotherFileWithTheSameInodeIsNotTakenForTheLostOne) {
  RealDisk disk;
  disk.makeFile(disk / "here.mov");
  const FileIdentity here = *identityAtPath(disk / "here.mov", true);
  const auto isFoundAs = [&](FileIdentity identity) {
    return !disk.pathOf(AliasRecord{identity, disk / "lost.mov"}.encoded()).empty();
  };
  FileIdentity identity = here;
  identity.device += 1;  // numbered anew at the last start
  EXPECT_TRUE(isFoundAs(identity));
  EXPECT_EQ(disk.aliases().resolveAlias(AliasRecord{identity, disk / "here.mov"}.encoded())->updatedAlias,
            *disk.aliases().newAlias(disk / "here.mov"));
  identity.birth = 0;  // not told by every volume
  EXPECT_TRUE(isFoundAs(identity));
  identity.size += 1;
  EXPECT_FALSE(isFoundAs(identity));
}

TEST(VolumeScan, TheSearchEndsWithItsBudget) {
  const TemporaryFolder folder;
  const FileIdentity wanted = *identityAtPath(folder.write("a/b/c/clip.mov", ""), true);
  for (int number = 0; number < 20; ++number) folder.makeFolder(std::to_string(number));
  const SystemClock clock;
  const auto finds = [&](AliasSearchBudget budget) {
    return VolumeScan(wanted.device, clock, budget).find(wanted.inode, folder.path()).has_value();
  };
  EXPECT_FALSE(finds({.directoryEntries = 20, .time = Seconds(1e6)}));
  EXPECT_FALSE(finds({.time = Seconds(0)}));
  EXPECT_TRUE(finds({.time = Seconds(1e6)}));
}

}  // namespace
}  // namespace clipwave
