// What becomes of uploads when something goes wrong on real servers: what is reported, and what they hold.
#include <gmock/gmock.h>
#include <signal.h>

#include <filesystem>
#include <fstream>

#include "tests/dotmac/MemberDisk.h"
#include "tests/support/DAVServer.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;
using Kind = DAVServer::Kind;
namespace fs = std::filesystem;

class DiskFaults : public Test {
 protected:
  // A server that holds an old movie.
  DAVServer& serve(Kind kind, const std::string& configuration = {}, const std::string& preload = {}) {
    member_.emplace(server_.emplace(kind, configuration, preload).url(), options_, cleanUpTimeout_);
    std::ofstream(*server_ / "movie") << "old";
    return *server_;
  }
  void makeServersFolder(const char* name, int permissions = 0777) {
    fs::create_directory(*server_ / name);
    fs::permissions(*server_ / name, fs::perms(permissions));
  }
  // A file of so many zeros.
  std::string fileOfSize(std::int64_t bytes) {
    const std::string path = folder_.write("movie.mov", "");
    fs::resize_file(path, static_cast<std::uintmax_t>(bytes));
    return path;
  }
  // An upload of 256 MiB of which a part has gone out.
  Upload beginUpload() {
    Upload upload(*member_->loop, *member_->kit, fileOfSize(256 << 20), "movie");
    upload.turnUntilSent(8 << 20);
    return upload;
  }
  std::string upload(std::string_view toPath) {
    return member_->upload(folder_.write("local", "new"), toPath);
  }
  void expectLogged(const std::string& words) { EXPECT_THAT(member_->log.lines, Contains(HasSubstr(words))); }

  TemporaryFolder folder_;
  HTTPClientOptions options_;
  Seconds cleanUpTimeout_{5};
  std::optional<DAVServer> server_;
  std::optional<MemberDisk> member_;
};

TEST_F(DiskFaults, AWrongOrMissingPasswordIsToldAndChangesNothing) {
  for (const Kind kind : {Kind::ApacheBasic, Kind::ApacheDigest, Kind::Rclone}) {
    serve(kind);
    for (const char* password : {"secret!", ""}) {
      (void)member_->secrets.setPassword({server_->url(), "ann"}, password);
      EXPECT_EQ(member_->account()->validateCredentials(), kDMInvalidCredentials);
      EXPECT_EQ(upload("movie"), "101");
    }
    expectLogged("PROPFIND of \"/\": The server answered 401 Unauthorized.");
    EXPECT_THAT(member_->log.lines, Not(Contains(HasSubstr("secret"))));
    EXPECT_THAT(server_->contents(), ElementsAre(Pair("/", _), Pair("/movie", "old")));
  }
}

TEST_F(DiskFaults, WhatAServerRefusesIsToldAndChangesNothing) {
  const EnvironmentVariable limit("CLIPWAVE_FULL_DISK_AT", "1000000");
  DAVServer& server = serve(Kind::ApacheBasic, {}, CLIPWAVE_FULL_DISK);
  makeServersFolder("kept", 0555);
  std::ofstream(server / "locked") << "old";
  HTTPRequest lock{"LOCK", server.url() + "/locked"};
  lock.credentials = HTTPCredentials{"ann", "secret"};
  lock.body = R"(<D:lockinfo xmlns:D="DAV:"><D:lockscope><D:exclusive/></D:lockscope>)"
              R"(<D:locktype><D:write/></D:locktype></D:lockinfo>)";
  ASSERT_EQ(member_->http->send(lock, Seconds(5)).value().status, 200);
  const auto before = server.contents();
  // Apache does not tell its own lack of permission from any other trouble.
  EXPECT_EQ(upload("kept/movie"), "100");
  expectLogged("500 Internal Server Error");
  EXPECT_EQ(upload("locked"), "105");
  expectLogged("423 Locked");
  EXPECT_EQ(member_->upload(fileOfSize(5 << 20), "movie"), "102");
  expectLogged("PUT of \"/clipwave-upload-");
  EXPECT_EQ(server.contents(), before);
}

// A server that is killed may leave half a file, under the temporary name; the next upload takes it along.
TEST_F(DiskFaults, AnUploadRepeatedAfterTheServerWasKilledLeavesNoTrace) {
  for (const Kind kind : {Kind::ApacheBasic, Kind::Rclone}) {
    serve(kind);
    Upload broken = beginUpload();
    server_->kill();
    EXPECT_EQ(broken.ending(), "103");
    EXPECT_EQ(readFile(*server_ / "movie"), "old");
    ASSERT_TRUE(server_->start());
    EXPECT_EQ(upload("movie"), "successful");
    auto contents = server_->contents();
    std::erase_if(contents, [](const auto& entry) { return entry.first.starts_with("/.davfs.tmp"); });
    EXPECT_THAT(contents, ElementsAre(Pair("/", _), Pair("/movie", "new")));
  }
}

TEST_F(DiskFaults, AServerThatStallsIsGivenUp) {
  options_.stallTimeout = Seconds(1);
  cleanUpTimeout_ = Seconds(0.3);
  serve(Kind::ApacheBasic);
  Upload stalled = beginUpload();
  server_->signal(SIGSTOP);
  EXPECT_EQ(stalled.ending(), "103");
  expectLogged("may be left");
  EXPECT_EQ(readFile(*server_ / "movie"), "old");
  server_->signal(SIGCONT);
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
  serve(Kind::ApacheDigest,
        "RewriteEngine On\nRewriteRule ^/away/(.*) http://other.example/$1 [R=307,L]\n"
        "RewriteRule ^/old/(.*) /moved/$1 [R=308,L]\nRewriteRule ^/round/(.*) /round/$1 [R=302,L]\n");
  makeServersFolder("moved");
  EXPECT_EQ(upload("old/mo vie"), "successful");
  EXPECT_EQ(readFile(*server_ / "moved/mo vie"), "new");
  for (const char* path : {"away/movie", "round/movie"}) EXPECT_EQ(upload(path), "104");
  expectLogged("\u201chttp://other.example\u201d");
  EXPECT_EQ(server_->contents().size(), 4U);
}

}  // namespace
}  // namespace clipwave
