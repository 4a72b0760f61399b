#include "model/Vodcast.h"

#include <gmock/gmock.h>

#include "tests/support/FakeLibraryHost.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class VodcastTest : public Test {
 protected:
  FakeLibraryHost host_;
  Channel& channel_ = host_.newChannelWithDefaults();
  Vodcast& episode_ = host_.newEpisode(channel_);
};

// Every value of the movie, as a list or a field would read it.
std::vector<Value> movieValues(Vodcast& episode) {
  std::vector<Value> values;
  for (const char* key :
       {"vcPath", "mediaSizeString", "mediaSizeUnit", "mediaTimeString", "size", "vcDuration", "movieInfo"})
    values.push_back(episode.value(key));
  return values;
}

TEST_F(VodcastTest, ANewEpisodeIsOfNowAndByTheSelectedChannelsAuthor) {
  EXPECT_EQ(episode_.value("vcPublishDate"), Value(host_.testClock.now()));
  EXPECT_TRUE(episode_.value("vcAuthor").isNull());
  host_.selected = &channel_;
  EXPECT_EQ(host_.newEpisode(channel_).value("vcAuthor"), Value("Alex Example"));
}

TEST_F(VodcastTest, AnEpisodeFindsItsMovieAfterAMove) {
  const std::string path = host_.folder / "clip.mov";
  episode_.setValue("vcPath", path);
  host_.makeFile("clip.mov", 10);
  EXPECT_EQ(episode_.value("vcPath"), Value(path)) << "and the file, late as it is, gets its alias";
  const std::string moved = host_.folder.makeFolder("elsewhere") + "/renamed.mov";
  ASSERT_TRUE(host_.fileManager.movePath(path, moved));
  EXPECT_EQ(episode_.value("vcPath"), Value(moved));
  EXPECT_EQ(episode_.primitiveValue("vcPath"), Value(path));
  episode_.setValue("vcPath", "/nowhere/other.mov");
  EXPECT_EQ(episode_.mediaFilename(), "renamed.mov") << "the alias held wins over a path that names no file";

  host_.saveAndReopen();
  const FetchRequest all{.entityName = std::string(kVodcastEntity)};
  EXPECT_EQ(host_.context->executeFetchRequest(all)->front()->value("vcPath"), Value(moved));
}

TEST_F(VodcastTest, AGoneMovieReadsAsEmpty) {
  const std::string path = host_.makeFile("clip.mov", 10, 5);
  episode_.setValue("vcPath", path);
  ASSERT_TRUE(host_.fileManager.removeFileAtPath(path));
  EXPECT_THAT(movieValues(episode_),
              ElementsAre(Value(""), Value(""), Value(), Value(), Value(0), Value(""), Value("")));
}

TEST_F(VodcastTest, WhatIsReadFromTheMovieIsKeptAndIsNoUndoStep) {
  episode_.setValue("vcPath", host_.makeFile("clip.mov", 3 * 1'048'576, 3725.9));
  host_.turn();
  ASSERT_TRUE(host_.context->save());
  host_.context->undoManager().removeAllActions();
  EXPECT_EQ(episode_.vcDuration(), "") << "the duration alone opens no movie";
  EXPECT_EQ(episode_.value("mediaTimeString"), Value("01:02:05"));
  EXPECT_THAT(movieValues(episode_),
              ElementsAre(episode_.value("vcPath"), Value("3.00"), Value("MB"), Value("01:02:05"),
                          Value(3'145'728), Value("01:02:05"), Value("Time:01:02:05 Size:3.00 MB")));
  EXPECT_EQ(host_.movieOpener.openings, 1);
  EXPECT_TRUE(host_.context->hasChanges());
  EXPECT_FALSE(host_.context->undoManager().canUndo());
}

TEST_F(VodcastTest, AMovieOfFiveGibibytesShowsItsTrueSizeAndKeepsThirtyTwoBits) {
  constexpr std::int64_t kFiveGibibytes = 5 * (std::int64_t{1} << 30);
  episode_.setValue("vcPath", host_.makeFile("long.mov", kFiveGibibytes, 60));
  EXPECT_EQ(episode_.value("size"), Value(1'073'741'824));
  EXPECT_EQ(episode_.value("mediaSizeString"), Value("5.00"));
  EXPECT_EQ(episode_.value("mediaSizeUnit"), Value("GB"));
  EXPECT_EQ(episode_.trueFileSize(), kFiveGibibytes);
}

}  // namespace
}  // namespace clipwave
