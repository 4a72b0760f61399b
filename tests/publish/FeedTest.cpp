#include <filesystem>

#include "tests/publish/PublishFixture.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class FeedTest : public PublishTest {
 protected:
  static void setValues(ManagedObject& record, const Value& values) {
    for (const auto& [key, value] : values.dictionaryValue()) EXPECT_TRUE(record.setValue(key, value)) << key;
  }
  std::string feedOf(const Dictionary& description) {
    auto& channel = static_cast<Channel&>(*channels.add());
    setValues(channel, description.at("channel"));
    ManagedObject* image = host.context->insertNewObject(kImageEntity);
    setValues(*image, description.at("image"));
    channel.setValue("image", image);
    for (const Value& values : description.at("episodes").arrayValue())
      setValues(addEpisode(channel), values);
    return makeFeedDocument(channel, sortedEpisodes(channel), tables).prettyPrinted();
  }
};

TEST_F(FeedTest, ChannelsGiveTheFeedsThatLieBesideThem) {
  int pairs = 0;
  for (const auto& file : std::filesystem::directory_iterator(CLIPWAVE_GOLDEN_FEEDS)) {
    if (file.path().extension() != ".plist") continue;
    SCOPED_TRACE(file.path().filename());
    const Result<Value> description = propertyListFromData(readFile(file.path().string()));
    ASSERT_TRUE(description.ok()) << description.error().localizedDescription;
    const std::string feed = feedOf(description->dictionaryValue());
    EXPECT_EQ(feed, readFile(std::filesystem::path(file.path()).replace_extension(".xml").string()));
    ++pairs;
  }
  EXPECT_GE(pairs, 2);
}

TEST_F(FeedTest, MoviesAreListedNewestFirstAndTheFeedLast) {
  Channel& channel = addChannel("My Show");
  Vodcast& older = addEpisode(channel, "/movies/a.mov");
  Vodcast& newer = addEpisode(channel, "/movies/b.mov");
  addEpisode(channel, "/movies/c.mov");  // undated
  addEpisode(channel, "/movies/copied.mov").setValue("vcCopy", false);
  addEpisode(channel, "/movies/unpublished.mov").setValue("vcPublish", false);
  addEpisode(channel);  // no movie was ever attached
  addEpisode(channel, folder.write("lost.mov", ""));
  std::filesystem::remove(folder / "lost.mov");
  older.setValue("vcPublishDate", Date::fromSeconds(-1));
  newer.setValue("vcPublishDate", Date::fromSeconds(1));
  newer.setValue("mediaFilename", "renamed.mov");

  const std::vector<CopyEntry>& entries = preparation.prepareFilesForIndex(0);
  const std::string feed = entries.back().path;
  std::string listed;
  for (const CopyEntry& entry : entries) listed += entry.filename + " < " + entry.path + "\n";
  EXPECT_EQ(listed, "b.mov < /movies/b.mov\na.mov < /movies/a.mov\nc.mov < /movies/c.mov\nMy Show.xml < " +
                        feed + "\n");
  EXPECT_THAT(readFile(feed), HasSubstr("<guid>http://host/My%20Show/lost.mov</guid>"));
}

TEST_F(FeedTest, AFeedWithoutAFileNameNeverReplacesTheFolder) {
  for (const Value& name : {Value(), Value(""), Value("."), Value("..")}) {
    Channel& channel = addChannel("Show");
    channel.setValue("filename", name);
    const auto index = static_cast<std::int32_t>(channels.content().size()) - 1;
    const CopyEntry entry = preparation.prepareFilesForIndex(index).back();
    EXPECT_EQ(entry.filename, lastPathComponent(entry.path));
  }
  EXPECT_EQ(preparation.pubURLs().size(), 3U);  // none for the channel whose file name is absent
}

}  // namespace
}  // namespace clipwave
