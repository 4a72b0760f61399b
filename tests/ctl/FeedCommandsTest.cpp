// Feeds in and subscriptions out, from the command line: import, message, publish --subscribe.
#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "tests/ctl/CompanionProcess.h"
#include "tests/support/LoopbackServer.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

constexpr const char* kFeed =
    "<rss><channel><title>Found &amp; kept</title>"
    "<item><title>One</title><enclosure url='http://h/1.mov' length='7'/></item></channel></rss>";

TEST(FeedCommands, ImportMakesAChannelFromAFileOrAServer) {
  const Library library;
  library.folder.write("my feed#1.xml", kFeed);
  EXPECT_EQ(library.done({"import", library.folder / "my feed#1.xml"}), "Found & kept\n");
  const auto channel = library.channel();
  EXPECT_EQ(channel.at("vcTitle"), "Found & kept");
  EXPECT_EQ(channel.at("children").at(0).at("mediaFilename"), "1.mov");

  LoopbackServer server;
  server.answer("/feed.xml",
                httpResponse(200, "<rss><channel><title>\xe9t\xe9</title><item/></channel></rss>",
                             {"Content-Type: text/xml; charset=ISO-8859-1"}));
  for (const std::string& address : {server.url("/feed.xml"), "itpc" + server.url("/feed.xml").substr(4)})
    EXPECT_EQ(library.done({"import", address}), "\u00e9t\u00e9\n");
}

TEST(FeedCommands, AFailedImportSaysWhyAndLeavesNothing) {
  const Library library;
  library.folder.write("page.xml", "<html><body>No feed here</body></html>");
  EXPECT_THAT(library.run({"import", library.folder / "page.xml"}),
              Fails(1, "Error loading URL!: Invalid RSS feed."));
  EXPECT_THAT(library.run({"import", library.folder / "missing.xml"}), Fails(1, "missing.xml"));
  EXPECT_THAT(library.run("import pcast://"), Fails(1, "Error loading URL!: Invalid RSS feed."));
  EXPECT_EQ(library.done("channels"), "");
}

TEST(FeedCommands, TheMessageListsTheChannelsNamedOrAll) {
  const Library library;
  EXPECT_THAT(library.run("message"), Fails(1, "no channels"));
  for (const char* title : {"Bread", "Knives"}) {
    library.done({"new", title});
    library.done({"set", title, "vcURL=http://h/" + std::string(title), "filename=b.xml"});
  }
  EXPECT_THAT(library.done("message"), HasSubstr("\n\nitpc://h/Bread/b.xml\nitpc://h/Knives/b.xml\n\n\n"));
  EXPECT_THAT(library.done("message Knives"), HasSubstr("\n\nitpc://h/Knives/b.xml\n\n\n"));
}

TEST(FeedCommands, PublishedFeedsAreSubscribedToOnThisMachine) {
  const Library library;
  const std::string opened = library.folder / "opened";
  library.folder.write("data/applications/client.desktop",
                       "[Desktop Entry]\nType=Application\nName=iTunes\nExec=/bin/mv %f " + opened + "\n");
  const std::string title = "Bread " + std::to_string(::getpid());
  library.done({"new", title});
  library.done({"set", "1", "vcURL=http://h/b", "filename=b.xml",
                "mediaPath=" + library.folder.makeFolder("published")});
  EXPECT_EQ(library.done("publish --subscribe"), "itpc://h/b/b.xml\n");
  for (int i = 0; i < 500 && !std::filesystem::exists(opened); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_THAT(readFile(opened), HasSubstr("href=\"http://h/b/b.xml\""));
}

}  // namespace
}  // namespace clipwave
