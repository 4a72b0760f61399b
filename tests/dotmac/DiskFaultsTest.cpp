// What becomes of uploads when something goes wrong on real servers: what is reported, and what they hold.
#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

#include "tests/dotmac/MemberDisk.h"
#include "tests/support/DAVServer.h"
#include "tests/support/LoopbackServer.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;
using Kind = DAVServer::Kind;
namespace fs = std::filesystem;

class DiskFaults : public Test {
 protected:
  DAVServer& serve(Kind kind, const std::string& configuration = {}, const std::string& preload = {}) {
    member_.emplace(server_.emplace(kind, configuration, preload).url(), options_);
    return *server_;
  }
  // A file of so many zeros.
  std::string fileOfSize(std::int64_t bytes) {
    const std::string path = folder_.write("movie.mov", "");
    fs::resize_file(path, static_cast<std::uintmax_t>(bytes));
    return path;
  }
  std::string upload(std::string_view toPath, std::string_view content = "new") {
    return member_->upload(folder_.write("local", content), toPath);
  }
  // The server holds the old movie and nothing else.
  void expectOnlyOldMovie() {
    EXPECT_THAT(server_->contents(), ElementsAre(Pair("/", _), Pair("/movie", "old")));
  }
  void expectLogged(const std::string& words) { EXPECT_THAT(member_->log.lines, Contains(HasSubstr(words))); }

  TemporaryFolder folder_;
  HTTPClientOptions options_;
  std::optional<DAVServer> server_;
  std::optional<MemberDisk> member_;
};

TEST_F(DiskFaults, AWrongOrMissingPasswordIsToldAndLeavesNothing) {
  for (const Kind kind : {Kind::ApacheBasic, Kind::ApacheDigest, Kind::Rclone}) {
    serve(kind);
    ASSERT_EQ(upload("movie", "old"), "successful");
    EXPECT_EQ(member_->account()->validateCredentials(), kDMCredentialsAccepted);
    for (const char* password : {"secret!", ""}) {
      (void)member_->secrets.setPassword({server_->url(), "ann"}, password);
      EXPECT_EQ(member_->account()->validateCredentials(), kDMInvalidCredentials);
      EXPECT_EQ(upload("movie"), "101");
    }
    expectLogged("PROPFIND of \"/\": The server answered 401 (Unauthorized).");
    EXPECT_THAT(member_->log.lines, Not(Contains(HasSubstr("secret"))));
    expectOnlyOldMovie();
  }
}

TEST_F(DiskFaults, AFullDiskKeepsTheOldFile) {
  const EnvironmentVariable limit("CLIPWAVE_FULL_DISK_AT", "1000000");
  serve(Kind::ApacheBasic, "", CLIPWAVE_FULL_DISK);
  ASSERT_EQ(upload("movie", "old"), "successful");
  EXPECT_EQ(member_->upload(fileOfSize(5 << 20), "movie"), "102");
  expectLogged("PUT of \"/clipwave-upload-");
  expectOnlyOldMovie();
}

TEST_F(DiskFaults, ALockedFileKeepsItsContentAndItsLock) {
  serve(Kind::ApacheBasic);
  ASSERT_EQ(upload("movie", "old"), "successful");
  HTTPRequest lock{"LOCK", server_->url() + "/movie"};
  lock.credentials = HTTPCredentials{"ann", "secret"};
  lock.body = R"(<D:lockinfo xmlns:D="DAV:"><D:lockscope><D:exclusive/></D:lockscope>)"
              R"(<D:locktype><D:write/></D:locktype></D:lockinfo>)";
  ASSERT_EQ(member_->http->send(lock, Seconds(5)).value().status, 200);
  for (int tries = 0; tries < 2; ++tries) EXPECT_EQ(upload("movie"), "105");
  expectLogged("423 (Locked)");
  expectOnlyOldMovie();
}

TEST_F(DiskFaults, AFolderThatMayNotBeWrittenIsToldAsAnObstacle) {
  DAVServer& server =
      serve(Kind::ApacheBasic, "<Location /closed>\n<Limit PUT>\nRequire all denied\n</Limit>\n</Location>");
  for (const char* name : {"closed", "kept"}) fs::create_directory(server / name);
  fs::permissions(server / "kept", fs::perms(0555));
  fs::permissions(server / "closed", fs::perms(0777));
  const auto before = server.contents();
  for (const char* path : {"closed/movie", "kept/movie"}) EXPECT_EQ(upload(path), "105");
  EXPECT_EQ(server.contents(), before);
}

// A server killed in the middle may leave half a file, under the temporary name; the next upload takes it
// along.
TEST_F(DiskFaults, AnUploadRepeatedAfterTheServerWasKilledLeavesNoTrace) {
  for (const Kind kind : {Kind::ApacheBasic, Kind::Rclone}) {
    serve(kind);
    ASSERT_EQ(upload("movie", "old"), "successful");
    const std::string local = fileOfSize(256 << 20);
    Upload broken(*member_->loop, *member_->kit, local, "movie");
    broken.turnUntilSent(8 << 20);
    server_->kill();
    EXPECT_EQ(broken.ending(), "103");
    EXPECT_EQ(readFile(*server_ / "movie"), "old");
    server_->startAgain();
    EXPECT_EQ(upload("movie", "newer"), "successful");
    auto contents = server_->contents();
    std::erase_if(contents, [](const auto& entry) { return entry.first.starts_with("/.davfs"); });
    EXPECT_THAT(contents, ElementsAre(Pair("/", _), Pair("/movie", "newer")));
  }
}

TEST_F(DiskFaults, AServerThatStallsIsGivenUp) {
  options_.stallTimeout = Seconds(1);
  serve(Kind::ApacheBasic);
  ASSERT_EQ(upload("movie", "old"), "successful");
  const std::string local = fileOfSize(256 << 20);
  Upload stalled(*member_->loop, *member_->kit, local, "movie");
  stalled.turnUntilSent(8 << 20);
  server_->pause();
  EXPECT_EQ(stalled.ending(Seconds(10)), "103");
  EXPECT_EQ(readFile(*server_ / "movie"), "old");
  server_->resume();
  EXPECT_EQ(upload("movie"), "successful");
}

TEST_F(DiskFaults, AMovieOfMoreThan2GiBArrivesWhole) {
  constexpr std::int64_t kSize = (std::int64_t{2} << 30) + 3;
  serve(Kind::ApacheBasic);
  Upload upload(*member_->loop, *member_->kit, fileOfSize(kSize), "movie");
  EXPECT_EQ(upload.ending(Seconds(200)), "successful");
  EXPECT_EQ(upload.transaction->bytesTransferred(), kSize);
  EXPECT_EQ(upload.transaction->contentLength(), kSize);
  EXPECT_EQ(fs::file_size(*server_ / "movie"), static_cast<std::uintmax_t>(kSize));
}

TEST_F(DiskFaults, RedirectsAreFollowedOnTheSameServerOnly) {
  DAVServer& server = serve(Kind::ApacheDigest,
                            "RewriteEngine On\nRewriteRule ^/away/(.*) http://other.example/$1 [R=307,L]\n"
                            "RewriteRule ^/old/(.*) /moved/$1 [R=308,L]\n"
                            "RewriteRule ^/round/(.*) /round/$1 [R=302,L]\n");
  fs::create_directory(server / "moved");
  fs::permissions(server / "moved", fs::perms(0777));
  EXPECT_EQ(upload("old/mo vie"), "successful");
  EXPECT_EQ(readFile(server / "moved/mo vie"), "new");
  for (const char* path : {"away/movie", "round/movie"}) EXPECT_EQ(upload(path), "104");
  expectLogged("\u201chttp://other.example\u201d");
  EXPECT_EQ(server.contents().size(), 3U);
}

TEST_F(DiskFaults, ABusyServerIsToldAsBusy) {
  serve(Kind::ApacheBasic,
        "RewriteEngine On\nRewriteCond %{REQUEST_METHOD} PUT\nRewriteRule ^/busy - [R=503,L]\n");
  EXPECT_EQ(upload("busy"), "106");
  EXPECT_EQ(server_->contents().size(), 1U);
}

TEST_F(DiskFaults, UploadsThatAreLeftEndWithTheClient) {
  serve(Kind::ApacheBasic);
  const std::string local = fileOfSize(64 << 20);
  Upload upload(*member_->loop, *member_->kit, local, "movie");
  upload.turnUntilSent(1 << 20);
  const std::weak_ptr<DMTransaction> left = std::exchange(upload.transaction, nullptr);
  member_->kit.reset();
  EXPECT_FALSE(left.expired());
  member_->http.reset();
  EXPECT_TRUE(left.expired());
}

}  // namespace
}  // namespace clipwave
