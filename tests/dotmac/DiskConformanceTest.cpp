// What every iDisk does, that of the tests in memory and those on real servers alike.
#include <gmock/gmock.h>
#include <unistd.h>

#include <optional>

#include "tests/dotmac/MemberDisk.h"
#include "tests/support/DAVServer.h"
#include "tests/support/FakeDotMac.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;
using Contents = std::map<std::string, std::optional<std::string>>;

class DiskConformance : public TestWithParam<std::optional<DAVServer::Kind>> {
 protected:
  DiskConformance() {
    if (!GetParam()) return;
    server_.emplace(*GetParam());
    member_.emplace(server_->url());
    kit_ = member_->kit.get();
    loop_ = member_->loop.get();
  }
  std::unique_ptr<DMiDiskSession> session() {
    return kit_->iDiskSessionWithCredentials(kit_->accountFromPreferencesWithApplicationID("????"));
  }
  std::string upload(const std::string& content, std::string_view toPath) {
    return uploadFile(folder_.write("local file", content), toPath);
  }
  std::string uploadFile(const std::string& localPath, std::string_view toPath) {
    return Upload(*loop_, *kit_, localPath, toPath).ending();
  }
  // "folder", "file", "nothing"; both questions agree about that.
  std::string kindAt(std::string_view path) {
    bool isDirectory = false;
    const bool exists = session()->fileExistsAtPath(path, isDirectory);
    EXPECT_EQ(session()->fileExistsAtPath(path), exists) << path;
    return !exists ? "nothing" : isDirectory ? "folder" : "file";
  }
  // Apache notices in its own time that nobody sends any more.
  Contents contents() const {
    Contents found = server_ ? server_->contents() : fake_.disk;
    const auto isApaches = [](const auto& entry) {
      return entry.first.find("/.davfs.tmp") != std::string::npos;
    };
    for (int tries = 0; tries < 200 && std::ranges::any_of(found, isApaches); ++tries) {
      ::usleep(20'000);
      found = server_->contents();
    }
    return found;
  }

  TemporaryFolder folder_;
  SystemClock clock_;
  std::unique_ptr<RunLoop> ownLoop_ = makeRunLoop(clock_);
  FakeDotMac fake_{*ownLoop_};
  std::optional<DAVServer> server_;
  std::optional<MemberDisk> member_;
  DotMacKit* kit_ = &fake_;
  RunLoop* loop_ = ownLoop_.get();
};

TEST_P(DiskConformance, FoldersAreMadeOneAtATimeAndToldFromFiles) {
  EXPECT_EQ(kit_->accountFromPreferencesWithApplicationID("????")->validateCredentials(), 1);
  EXPECT_FALSE(session()->createDirectoryAtPath("Web & Ton/Pod"));
  EXPECT_TRUE(session()->createDirectoryAtPath("Web & Ton"));
  EXPECT_TRUE(session()->createDirectoryAtPath("/Web & Ton/Pod"));
  EXPECT_EQ(upload("x", "/Web & Ton/file"), "successful");
  EXPECT_FALSE(session()->createDirectoryAtPath("Web & Ton/file"));
  const std::pair<const char*, const char*> kPlaces[] = {{"/", "folder"},
                                                         {"", "folder"},
                                                         {"Web & Ton/Pod", "folder"},
                                                         {"/Web & Ton/Pod/", "folder"},
                                                         {"Web & Ton/", "folder"},
                                                         {"Web & Ton/file", "file"},
                                                         {"/Web", "nothing"},
                                                         {"no/where", "nothing"}};
  for (const auto& [path, kind] : kPlaces) EXPECT_EQ(kindAt(path), kind) << path;
}

TEST_P(DiskConformance, AFileOfAnyNameIsUploadedAndThenReplaced) {
  Contents expected = {{"/", std::nullopt}, {"/a b", std::nullopt}};
  ASSERT_TRUE(session()->createDirectoryAtPath("a b"));
  const std::string kNames[] = {"100% fun?.mov",      "a#b&c+d;e=f.mov", "Müller 日本.mov",
                                "it's \"so\".mov",    "%41.mov",         "...",
                                std::string(250, 'n')};
  for (const std::string& name : kNames) {
    for (const std::string& content : {"first " + name, std::string(), name + std::string(200'000, 'x')}) {
      EXPECT_EQ(upload(content, "a b/" + name), "successful") << name;
      expected["/a b/" + name] = content;
      EXPECT_EQ(contents(), expected);
    }
    EXPECT_EQ(kindAt("/a b/" + name), "file");
  }
}

TEST_P(DiskConformance, AnUploadThatFailsLeavesTheDiskAsItWas) {
  ASSERT_TRUE(session()->createDirectoryAtPath("folder"));
  ASSERT_EQ(upload("old", "folder/movie"), "successful");
  const Contents before = contents();
  EXPECT_EQ(upload("new", "nowhere/movie"), "104");
  EXPECT_EQ(upload("new", "folder"), "105");
  EXPECT_EQ(upload("new", "/"), "105");
  EXPECT_EQ(upload("new", "folder/../movie"), "107");
  EXPECT_EQ(uploadFile(folder_ / "missing", "folder/movie"), "107");
  EXPECT_EQ(uploadFile(folder_.path(), "folder/movie"), "107");
  EXPECT_EQ(contents(), before);
}

TEST_P(DiskConformance, AnAbortedUploadLeavesTheDiskAsItWas) {
  ASSERT_EQ(upload("old", "movie"), "successful");
  const Contents before = contents();
  const std::string local = folder_.write("large", std::string(48 << 20, 'x'));
  fake_.uploadsWait = true;
  for (const std::int64_t sent : {1, 16 << 20, 48 << 20}) {
    Upload upload(*loop_, *kit_, local, "movie");
    fake_.setProgress(sent, 48 << 20);
    upload.turnUntilSent(sent);
    upload.transaction->abort();
    EXPECT_EQ(upload.ending(), "aborted");
    EXPECT_TRUE(contents() == before) << "after " << sent << " bytes";
  }
}

// Wherever an upload has come to, be it that it succeeds or fails by itself.
TEST_P(DiskConformance, AnUploadCanBeAbortedAtAnyTime) {
  const std::string local = folder_.write("local", "new");
  for (const auto& [path, end] : {std::pair("movie", "successful"), std::pair("nowhere/movie", "104")}) {
    std::string ending;
    for (int turns = 0; ending != end; ++turns) {
      ASSERT_EQ(upload("old", "movie"), "successful");
      Upload upload(*loop_, *kit_, local, path);
      for (int turn = 0; turn < turns; ++turn) loop_->runOnce(Seconds(0.01));
      for (int times = 0; times < 2; ++times) upload.transaction->abort();
      ending = upload.ending();
      upload.transaction->abort();
      EXPECT_EQ(upload.ending(), ending);
      EXPECT_THAT(ending, AnyOf("aborted", end)) << turns << " turns";
      EXPECT_THAT(contents(),
                  ElementsAre(Pair("/", _), Pair("/movie", ending == "successful" ? "new" : "old")));
    }
  }
}

std::string nameOf(const TestParamInfo<std::optional<DAVServer::Kind>>& disk) {
  constexpr const char* kNames[] = {"ApacheBasic", "ApacheDigest", "Rclone"};
  return disk.param ? kNames[static_cast<int>(*disk.param)] : "InMemory";
}
INSTANTIATE_TEST_SUITE_P(, DiskConformance,
                         Values(std::nullopt, DAVServer::Kind::ApacheBasic, DAVServer::Kind::ApacheDigest,
                                DAVServer::Kind::Rclone),
                         nameOf);

}  // namespace
}  // namespace clipwave
