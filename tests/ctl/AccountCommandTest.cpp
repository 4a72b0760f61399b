// The member account and the publish method from the command line, and the bar that shows an upload.
#include <gmock/gmock.h>

#include <filesystem>

#include "ctl/ProgressBar.h"
#include "tests/ctl/CompanionProcess.h"
#include "tests/support/LoopbackServer.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

constexpr const char* kPassword = "open sesame";
constexpr const char* kFound =
    "<multistatus xmlns='DAV:'><response><href>/ann/</href><propstat><prop/>"
    "<status>HTTP/1.1 200 OK</status></propstat></response></multistatus>";

class Account : public Test {
 protected:
  Account() {
    server.answer("/ann/", [](LoopbackConnection& connection) {
      const bool isAnn = connection.request().header("Authorization") == "Basic YW5uOm9wZW4gc2VzYW1l";
      connection.send(isAnn ? httpResponse(207, kFound)
                            : httpResponse(401, "", {"WWW-Authenticate: Basic realm=\"iDisk\""}));
    });
  }
  // Runs `account` where that password is typed; nothing of the password shows.
  Outcome account(Arguments arguments, const std::string& typed = "") {
    library.folder.write("input", typed);
    arguments.insert(arguments.begin(), "account");
    Outcome outcome = library.run(arguments);
    EXPECT_THAT(outcome.out + outcome.err + settings(), Not(HasSubstr("sesame")));
    return outcome;
  }
  std::string settings() const { return library.done("defaults"); }

  const Library library;
  LoopbackServer server;
  const std::string host = "127.0.0.1:" + std::to_string(server.port());
};

TEST_F(Account, IsSetShownAndTriedAndItsPasswordIsNeverShown) {
  EXPECT_THAT(account("--check"), Fails(1, "No .Mac account is set up."));
  EXPECT_THAT(account({"--server", server.url("/ann"), "--member", "ann"}, "wrong\n"),
              AllOf(Fails(1, ".Mac Error!: "), Fails(1, "PROPFIND of \"/\": The server answered 401"),
                    Fails(1, "No home page is set")));
  EXPECT_THAT(account("--password", "a\001b\n"), Fails(1, "holds characters that cannot be sent"));
  EXPECT_EQ(account("--password --home-page http://pages", kPassword + std::string("\r\nmore")).out,
            host + " accepts ann.\n");
  EXPECT_THAT(account("--password", "\n"), Fails(0, "one that is kept stays"));
  EXPECT_EQ(account("--check").out, host + " accepts ann.\n");
  EXPECT_EQ(account("").out, "server: " + server.url("/ann") +
                                 "\nmember: ann\nhome page: http://pages\nplain http: not allowed\n"
                                 "expires: never\npassword: kept\n");
  EXPECT_EQ(nlohmann::json::parse(account("--json").out).at("hasPassword"), true);
  EXPECT_THAT(account({"--member", ""}), Exits(0));
  EXPECT_THAT(account({"--member", "ann"}), AllOf(Exits(0), Fails(0, "No password was given")));
  EXPECT_THAT(account("").out, HasSubstr("password: none"));
}

TEST_F(Account, RefusesAddressesThatWouldGiveThePasswordAwayAndKeepsNothingOfThem) {
  const std::string before = settings();
  for (const char* line :
       {"--server http://ann:sesame@h/", "--server https://ann:sesame@h", "--server http://h/",
        "--server http://127.0.0.1.h/", "--server ftp://h/", "--server https://:80/", "--server https://h/?a",
        "--server h", "--home-page ftp://h", "--password", "--server", "--json --check", "sesame"})
    EXPECT_THAT(account(line, "x\n"), Exits(2)) << line;
  for (const char* blanks : {"http://h/a b", " https://h/"})
    EXPECT_THAT(account({"--server", blanks}), Exits(2)) << blanks;
  EXPECT_EQ(settings(), before);
  EXPECT_THAT(account("--allow-plain-http --server http://h.invalid/"), Exits(0));
  EXPECT_THAT(account("--member ann --forbid-plain-http --check"), Fails(1, "Over plain http anyone"));
}

TEST_F(Account, DecidesWhereAChannelMayGo) {
  library.done("new Cooking");
  account({"--server", server.url("/ann"), "--member", "ann", "--home-page", "http://pages"}, "wrong\n");
  library.done("set Cooking protocolTag=2 vcTitle=Bread");
  EXPECT_EQ(library.channel().at("mediaPath"), "/Sites/clipwave/Bread");
  EXPECT_EQ(library.channel().at("vcURL"), "http://pages/ann/clipwave/Bread");
  EXPECT_THAT(library.run("set Bread protocolTag=1"), Fails(2, "say mediaPath=FOLDER in the same command"));
  EXPECT_THAT(library.run("set Bread protocolTag=7"), Fails(2, "protocolTag takes 1 (a folder) or 2 (.Mac)"));
  EXPECT_THAT(library.run("publish"),
              AllOf(Fails(1, ".Mac Error!: Username"), Fails(1, "stopped at \"Bread\"")));
  account({"--server", ""});
  EXPECT_THAT(library.run("publish"), Fails(1, "No .Mac Account!: You have not"));
  library.done("set Bread protocolTag=1 mediaPath=/pub vcURL=http://h/b");
  EXPECT_THAT(library.run("set Bread protocolTag=2 vcTitle=Cake"),
              Fails(1, "No .Mac Account!: You have not"));
  EXPECT_EQ(library.channel().at("vcURL"), "http://h/b");
}

TEST(ProgressBar, FitsTheTerminalAndCannotSteerIt) {
  const std::string bar = " [##########----------]  50%";
  EXPECT_EQ(progressText("a completed 1.mov completed 50", 60), "a completed 1.mov" + bar);
  EXPECT_EQ(progressText(std::string(40, 'a') + " completed 50", 60), std::string(29, 'a') + "..." + bar);
  EXPECT_EQ(progressText("a\x1b[2J\xc2\x9b\xff\n\u00e9 completed 100", 16), "a?[2J???\u00e9 100%");
  for (const std::size_t columns : {0, 1, 3, 5, 6, 9, 24})
    EXPECT_LE(progressText("abcdefghijkl completed 3", columns).size(), columns);
}

}  // namespace
}  // namespace clipwave
