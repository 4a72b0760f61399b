#include "publish/FeedImport.h"

#include <filesystem>
#include <regex>

#include "platform/coredata/UndoManager.h"
#include "tests/publish/PublishFixture.h"
#include "tests/support/FakeURLLoading.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;
namespace fs = std::filesystem;

std::string textOf(const Value& value) {
  if (value.kind() == Value::Kind::Boolean) return value.boolValue() ? "YES" : "NO";
  if (value.kind() == Value::Kind::Integer) return std::to_string(value.integerValue());
  if (const auto date = value.dateValue()) return iso8601(*date);
  return std::string(value.stringValue());
}

// What the record holds besides the values that every new record begins with, one "key: value" a line.
std::string contentOf(ManagedObject& record) {
  std::string text = record.entity().name() + "\n";
  for (const PropertyDescription& property : record.entity().properties()) {
    const bool isRelated = property.type == PropertyType::ToOne || property.type == PropertyType::ToMany;
    if (isRelated || property.storage != Storage::Stored) continue;
    const Value& value = record.primitiveValue(property.name);
    if (value != property.defaultValue) text += "  " + property.name + ": " + textOf(value) + "\n";
  }
  return text;
}

class FeedImportTest : public PublishTest {
 protected:
  FeedImportTest() {
    host.channelList = &channels;
    episodes.bindContentToSelectionOf(channels, "children");
    episodes.setManagedObjectContext(host.context.get());
    images.setManagedObjectContext(host.context.get());
  }
  ~FeedImportTest() override { host.channelList = nullptr; }

  Channel* import(const std::string& bytes, const std::string& charset = {}) {
    urls.data = bytes;
    urls.charset = charset;
    return feedImport.importRSSWithURL("http://host/feed.xml");
  }
  // What came of the last import: the records, or else the alert.
  std::string outcome(Channel* channel) {
    if (channel == nullptr) return shell.alerts.back() + "\n";
    std::string text = contentOf(*channel);
    if (ManagedObject* image = channel->relatedObject("image")) text += contentOf(*image);
    for (ManagedObject* episode : channel->relatedObjects("children")) text += contentOf(*episode);
    return text;
  }

  Bundle bundle{host.files(), CLIPWAVE_RESOURCES};
  LanguageDataSource realLanguages{bundle};
  FeedMappings channelMappings = feedMappingsFromResource(bundle, "channelmappings");
  FeedMappings vodcastMappings = feedMappingsFromResource(bundle, "vcmappings");
  FakeURLLoading urls;
  ArrayController episodes{std::string(kVodcastEntity)};
  ArrayController images{std::string(kImageEntity)};
  Window mainWindow, rssFeedWindow;
  TextField rssURLBox;
  FeedImport feedImport{
      {application, log, urls, channels, episodes, images, realLanguages, channelMappings, vodcastMappings},
      {mainWindow, rssFeedWindow, rssURLBox}};
};

// Beside each feed lies what must come of it; a first line "charset: …" is what the server says.
TEST_F(FeedImportTest, FeedsAsTheyAreFoundGiveWhatLiesBesideThem) {
  int feeds = 0;
  for (const auto& file : fs::directory_iterator(CLIPWAVE_FOUND_FEEDS)) {
    if (file.path().extension() != ".xml") continue;
    SCOPED_TRACE(file.path().filename());
    std::string expected = readFile(fs::path(file.path()).replace_extension(".txt").string());
    std::string charset;
    if (constexpr std::string_view kLabel = "charset: "; expected.starts_with(kLabel)) {
      const std::size_t end = expected.find('\n');
      charset = expected.substr(kLabel.size(), end - kLabel.size());
      expected.erase(0, end + 1);
    }
    EXPECT_EQ(outcome(import(readFile(file.path().string()), charset)), expected);
    ++feeds;
  }
  EXPECT_GE(feeds, 20);
}

// Everything that a feed of ours can say, and what is left of it on the way in. From then on nothing changes
// but the new channel's own address, and "%" in the artwork's, which each writing escapes once more.
TEST_F(FeedImportTest, OurOwnFeedsComeBack) {
  const auto rest = [](const std::string& feed) {
    return std::regex_replace(feed, std::regex(" *<(source|itunes:image) .*\n"), "");
  };
  const std::string golden = std::string(CLIPWAVE_GOLDEN_FEEDS) + "/";
  for (const char* name : {"everything", "bare"}) {
    SCOPED_TRACE(name);
    std::vector<std::string> feeds = {readFile(golden + name + ".xml")};
    for (int round = 0; round < 2; ++round) {
      Channel* channel = import(feeds.back());
      ASSERT_NE(channel, nullptr);
      host.turn();  // what the feed did not say is filled in
      feeds.push_back(
          makeFeedDocument(*channel, sortedEpisodes(*channel), {realLanguages, types}).prettyPrinted());
    }
    EXPECT_EQ(feeds[1], readFile(golden + name + ".imported.xml"));
    EXPECT_EQ(rest(feeds[2]), rest(feeds[1]));
  }
}

TEST_F(FeedImportTest, WhatCannotBeLoadedOrIsTooMuchIsToldAndNothingIsMade) {
  std::string crowd;
  for (int i = 0; i <= 100'000; ++i) crowd += "<item/>";
  import("<rss><channel>" + crowd + "</channel></rss>");
  EXPECT_EQ(shell.alerts.back(), "Error loading URL!|The feed has more than 100,000 items.|OK");

  urls.error = Error{std::string(NSURLErrorDomain), kURLErrorTimedOut, "It took too long.", {}};
  import("");
  EXPECT_EQ(shell.alerts.back(), "Error loading URL!|It took too long.|OK");
  EXPECT_EQ(shell.alertDetails.back().style, Alert::Style::Critical);
  EXPECT_EQ(urls.timeouts.back(), Seconds(5));
  EXPECT_TRUE(channels.content().empty());
  EXPECT_FALSE(host.context->hasChanges());
}

constexpr const char* kSmallFeed =
    "<rss><channel><title>Found</title><itunes:image href='http://h/art/a%20b.jpg'/>"
    "<item><title>One</title></item><item><title>Two</title></item></channel></rss>";

TEST_F(FeedImportTest, TheNewChannelIsSelectedKeepsWhatItGotAndGoesWithOneUndo) {
  Channel& other = addChannel("Other");
  host.userDefaults.setInitialValues({{"defaultImageProperty", "http://h/own.png"}});
  host.newImage("http://h/own.png");
  host.turn();
  Channel* channel = import(kSmallFeed);
  ASSERT_NE(channel, nullptr);
  EXPECT_THAT(channels.selectedObjects(), ElementsAre(channel));
  EXPECT_EQ(episodes.arrangedObjects().size(), 2U);
  host.turn();  // its defaults arrive
  EXPECT_EQ(channel->value("vcTitle"), Value("Found"));
  EXPECT_EQ(channel->relatedObject("image")->value("title"), Value("a%20b.jpg"));
  EXPECT_EQ(channel->relatedObject("image")->value("url"), Value("http://h/art/a%20b.jpg"));
  host.context->undoManager().undo();
  EXPECT_THAT(channels.content(), ElementsAre(&other));
  EXPECT_TRUE(images.content().empty());
}

TEST_F(FeedImportTest, AFileIsAskedForInAPanelAndAURLInASheet) {
  urls.data = kSmallFeed;
  feedImport.importRSSFromFile();
  const OpenPanel& panel = shell.openPanels.back();
  EXPECT_EQ(panel.title + "|" + panel.message + "|" + panel.prompt,
            "Select a feed file|Please select a feed file to import.|Choose");
  shell.endOpenPanelSheet({"/feeds/100% fun.xml"});

  feedImport.importRSSFromURL();
  EXPECT_EQ(mainWindow.attachedSheet(), &rssFeedWindow);
  feedImport.cancelRSSFeedSheet();
  EXPECT_FALSE(rssFeedWindow.isVisible());
  rssURLBox.setStringValue(" http://host/feed.xml\n");
  feedImport.importRSSFromURL();
  feedImport.closeRSSFeedSheet();
  EXPECT_EQ(mainWindow.attachedSheet(), nullptr);
  EXPECT_THAT(urls.reads, ElementsAre("file:///feeds/100%25%20fun.xml", "http://host/feed.xml"));
  EXPECT_EQ(channels.content().size(), 2U);
}

}  // namespace
}  // namespace clipwave
