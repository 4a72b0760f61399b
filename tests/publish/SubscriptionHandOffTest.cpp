#include "publish/SubscriptionHandOff.h"

#include <filesystem>

#include "publish/SubscriptionLinks.h"
#include "tests/publish/PublishFixture.h"
#include "tests/support/FakeWorkspace.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class SubscriptionHandOffTest : public PublishTest {
 protected:
  // What the last publish run has reached.
  void publish(std::map<std::string, std::string> urls) { preparation.setUrlsToLaunch(std::move(urls)); }
  std::string path(const std::string& name) { return handOffFolder + "/" + name; }
  std::string message() {
    handOff.sendEmail();
    return std::string(pasteboard.propertyListForType(NSStringPboardType).stringValue());
  }

  std::string handOffFolder = folder.makeFolder("tmp");
  FakeWorkspace workspace;
  Pasteboard pasteboard;
  SubscriptionHandOff handOff{
      {application, host.files(), log, workspace, channels, pasteboard, preparation, handOffFolder}};
};

TEST_F(SubscriptionHandOffTest, EachPublishedFeedIsAFileOpenedWithThePodcastClient) {
  handOff.openInItunes();
  EXPECT_TRUE(workspace.calls.empty()) << "nothing was published yet";

  publish({{"Show A", "http://h/a%20b.xml"}, {"B & <C>/D", "https://h/c.xml"}});
  folder.write("elsewhere", "untouched");
  std::filesystem::create_symlink(folder / "elsewhere", path("Show A.pcast"));
  handOff.openInItunes();
  EXPECT_THAT(workspace.calls, ElementsAre("file " + path("B & <C>\u2215D.pcast") + " with iTunes",
                                           "file " + path("Show A.pcast") + " with iTunes"));
  EXPECT_EQ(readFile(path("Show A.pcast")),
            R"(<?xml version="1.0" encoding="UTF-8"?>
<pcast xmlns:itunes="http://www.itunes.com/DTDs/Podcast-1.0.dtd" version="2.0">
  <channel>
    <link rel="feed" type="application/rss+xml" href="http://h/a%20b.xml"/>
    <title>Show A</title>
  </channel>
</pcast>
)");
  EXPECT_THAT(readFile(path("B & <C>\u2215D.pcast")), HasSubstr("<title>B &amp; &lt;C&gt;/D</title>"));
  EXPECT_EQ(readFile(folder / "elsewhere"), "untouched");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(handOffFolder), {}), 2) << "no side files";
  EXPECT_TRUE(handOff.troubles().empty() && log.lines.empty() && shell.beeps == 0);
}

TEST_F(SubscriptionHandOffTest, AFolderInTheWayStaysAndATitleThatIsTooLongIsCut) {
  publish({{std::string(248, 'x') + "\u00fcy", "http://h/a"}});
  handOff.openInItunes();
  EXPECT_THAT(workspace.calls,
              ElementsAre("file " + path(std::string(248, 'x') + ".pcast") + " with iTunes"));
  publish({{"Folder", "http://h/a"}});
  const std::string inside = folder.write("tmp/Folder.pcast/kept", "k");
  handOff.openInItunes();
  EXPECT_EQ(readFile(inside), "k");
  EXPECT_THAT(log.lines, ElementsAre("couldn't delete temp file"));
  EXPECT_EQ(workspace.calls.size(), 1U);
}

TEST_F(SubscriptionHandOffTest, TheMessageInvitesToTheSelectedChannelsOrToAll) {
  const std::string start =
      "Click on the links below to subscribe to my video podcast.  If you don't have iTunes installed, you "
      "can get it from https://www.apple.com/itunes/download/\n\n";
  Channel& secure = addChannel("secure");
  secure.setValue("vcURL", "https://h/a?b=c&d");
  addChannel("strange").setValue("vcURL", "http://h/1 %20#\"\u00e9");
  addChannel("nowhere").setValue("vcURL", Value());
  const std::string end = "\n\nThis podcast was published with Clipwave.\n";

  channels.setSelectedObjects({});
  EXPECT_EQ(message(),
            start + "https://h/a?b=c&d/secure.xml\nitpc://h/1%20%2520%23%22%C3%A9/strange.xml\n" + end);
  channels.setSelectedObjects({&secure});
  EXPECT_EQ(message(), start + "https://h/a?b=c&d/secure.xml\n" + end);
}

TEST(SubscriptionLinks, AnAddressThatCanBeSubscribedToIsThatOfItsFeed) {
  const std::pair<const char*, const char*> kAddresses[] = {{"itpc://h/f.xml", "http://h/f.xml"},
                                                            {"PCAST://h:81/f?a#b", "http://h:81/f?a#b"},
                                                            {"feed://h/f", "http://h/f"},
                                                            {"feed:https://h/f", "https://h/f"},
                                                            {"https://h/f", "https://h/f"},
                                                            {"itpc:", "http:"},
                                                            {"/itpc:x", nullptr},
                                                            {"file:///f", nullptr},
                                                            {"f.xml", nullptr}};
  for (const auto& [address, url] : kAddresses)
    EXPECT_EQ(feedURLForAddress(address), url == nullptr ? std::nullopt : std::optional<std::string>(url))
        << address;
}

}  // namespace
}  // namespace clipwave
