#include "model/Channel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "tests/support/FakeLibraryHost.h"

namespace clipwave {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string text(ManagedObject& record, std::string_view key) {
  return record.value(key).optionalString().value_or("(absent)");
}

class ChannelTest : public ::testing::Test {
 protected:
  std::string movieFolder(std::string_view title) const { return channelMovieFolder(host_.home(), title); }
  std::string makeMovieFolder(std::string_view title) const {
    return host_.folder.write("home/Movies/Clipwave/" + std::string(title) + "/Movie1.mov", "frames");
  }
  bool exists(std::string_view path) { return host_.fileManager.fileExistsAtPath(path); }

  testing::FakeLibraryHost host_;
};

TEST_F(ChannelTest, ANewChannelGetsItsDefaultsInTheNextPass) {
  Image& artwork = host_.newImage("http://host/art.png");
  ASSERT_TRUE(host_.userDefaults.setValue("defaultImageProperty", "http://host/art.png"));
  Value posted;
  const Observation observation = host_.center.observe(
      kProtocolDidChange, [&posted](const Notification& notification) { posted = notification.object; });
  Channel& channel = host_.newChannel();
  EXPECT_TRUE(channel.value("vcTitle").isNull());
  host_.turn();
  EXPECT_EQ(posted, Value(&channel));
  EXPECT_EQ(channel.value("image"), Value(&artwork));
  EXPECT_EQ(channel.value("protocolTag"), Value(kFolderMethod));
  const std::string title = "Channel 01";
  for (const auto& [key, expected] :
       std::map<std::string, std::string>{{"vcTitle", title},
                                          {"filename", "show01.xml"},
                                          {"vcURL", "http://studio.example/~alex/clipwave/" + title},
                                          {"websiteURL", "http://studio.example/~alex"},
                                          {"mediaPath", host_.home() + "/Sites/clipwave/" + title},
                                          {"language", "English"},
                                          {"copyright", "Copyright 2009 Alex Example"},
                                          {"vcAuthor", "Alex Example"},
                                          {"itunesAuthor", "Alex Example"},
                                          {"ownerName", "Alex Example"}}) {
    EXPECT_EQ(text(channel, key), expected) << key;
  }
}

TEST_F(ChannelTest, TheNumberIsTheSmallestAtWhichTitleAndFileNameAreFree) {
  host_.newChannelWithDefaults();
  Channel& second = host_.newChannelWithDefaults();
  EXPECT_EQ(text(host_.newChannelWithDefaults(), "vcTitle"), "Channel 03");

  second.setValue("vcTitle", "Renamed");
  EXPECT_EQ(text(host_.newChannelWithDefaults(), "filename"), "show04.xml") << "show02.xml is still taken";
  second.setValue("filename", "other.xml");
  EXPECT_EQ(text(host_.newChannelWithDefaults(), "filename"), "show02.xml")
      << "a number given up is free again";

  ASSERT_TRUE(host_.userDefaults.setValue("defaultFilename", "cast"));
  EXPECT_EQ(text(host_.newChannelWithDefaults(), "filename"), "cast05.xml")
      << "titles count for every prefix";

  Channel& imported = host_.newChannel();
  imported.setValue("vcTitle", "Channel 06");
  host_.turn();
  EXPECT_EQ(text(imported, "filename"), "cast07.xml") << "a channel's own title is walked past as well";
  host_.saveAndReopen();
  EXPECT_EQ(text(host_.newChannelWithDefaults(), "vcTitle"), "Channel 08");
}

TEST_F(ChannelTest, WhatWasSetBeforeTheDefaultsStays) {
  host_.member = DotMacMember{"ann", "http://homepage.example/"};
  Channel& channel = host_.newChannel();
  channel.setValue("vcTitle", "My Show");
  channel.setValue("websiteURL", "http://show.example");
  channel.setValue("copyright", "");
  host_.turn();
  EXPECT_EQ(text(channel, "vcTitle"), "My Show");
  EXPECT_EQ(text(channel, "filename"), "show01.xml");
  EXPECT_EQ(text(channel, "websiteURL"), "http://show.example");
  EXPECT_EQ(text(channel, "copyright"), "");
  EXPECT_EQ(channel.value("protocolTag"), Value(kDotMacMethod));
  EXPECT_EQ(text(channel, "vcURL"), "http://homepage.example/ann/clipwave/My Show");
  EXPECT_EQ(text(channel, "mediaPath"), "/Sites/clipwave/My Show");
}

TEST_F(ChannelTest, ANewChannelAndItsDefaultsAreOneUndoStepWhateverComesBetween) {
  Channel& first = host_.newChannelWithDefaults();
  host_.newChannel();
  host_.context->undoManager().beginUndoGrouping();
  first.setValue("vcSubtitle", "in a group of its own");
  host_.context->undoManager().endUndoGrouping();
  host_.turn();
  host_.context->undo();
  EXPECT_EQ(text(first, "vcSubtitle"), "(absent)");
  EXPECT_EQ(host_.context->countOfEntity(kChannelEntity), 2U);
  host_.context->undo();
  host_.context->undo();
  EXPECT_EQ(host_.context->countOfEntity(kChannelEntity), 0U);
  host_.context->undoManager().redo();
  EXPECT_EQ(text(first, "vcTitle"), "Channel 01");

  host_.newChannel();
  host_.context->undo();
  host_.turn();
  EXPECT_EQ(host_.context->countOfEntity(kChannelEntity), 1U);
}

TEST_F(ChannelTest, DerivedValuesFollowTheMethodAndTheAuthor) {
  Channel& channel = host_.newChannelWithDefaults();
  EXPECT_EQ(channel.value("pathIcon"), Value("folder"));
  Value canEdit;
  const Observation observation =
      channel.observe("canEditURLs", [&] { canEdit = channel.value("canEditURLs"); });
  channel.setValue("protocolTag", kDotMacMethod);
  EXPECT_EQ(canEdit, Value(false));
  EXPECT_EQ(channel.value("pathIcon"), Value("dotmaclogo"));
  channel.setValue("itunesAuthor", Value());
  EXPECT_EQ(text(channel, "itunesAuthor"), "Alex Example");
}

TEST_F(ChannelTest, DeletingAChannelDeletesItsEpisodesAndDeletingItsImageLeavesIt) {
  Channel& channel = host_.newChannelWithDefaults();
  host_.newEpisode(channel);
  Image& image = host_.newImage("http://host/art.png");
  channel.setValue("image", &image);
  host_.context->deleteObject(image);
  EXPECT_TRUE(channel.value("image").isNull());
  host_.context->deleteObject(channel);
  EXPECT_EQ(host_.context->countOfEntity(kVodcastEntity), 0U);
}

class ChannelTitleTest : public ChannelTest {
 protected:
  Channel& channel_ = host_.newChannelWithDefaults();
};

TEST_F(ChannelTitleTest, ARenameTakesTheMovieFolderAlong) {
  makeMovieFolder("Channel 01");
  EXPECT_TRUE(channel_.commitValue("vcTitle", "Cooking").valid);
  EXPECT_EQ(testing::readFile(movieFolder("Cooking") + "/Movie1.mov"), "frames");
  EXPECT_FALSE(exists(movieFolder("Channel 01")));
  EXPECT_EQ(text(channel_, "vcURL"), "http://studio.example/~alex/clipwave/Channel 01");
  EXPECT_TRUE(channel_.commitValue("vcTitle", "Cooking").valid) << "the title that it has already";
}

TEST_F(ChannelTitleTest, ATitleWhoseFolderExistsIsRefused) {
  makeMovieFolder("Channel 01");
  makeMovieFolder("Cooking");
  const Validation answer = channel_.commitValue("vcTitle", "Cooking");
  EXPECT_FALSE(answer.valid);
  ASSERT_TRUE(answer.error);
  EXPECT_EQ(*answer.error, (Error{"vcTitle",
                                  -5,
                                  "This channel name already exists at " + movieFolder("Cooking") +
                                      ". Please select a different channel name or delete this folder.",
                                  {}}));
  EXPECT_THAT(host_.lines.lines, ElementsAre("file exists!"));
  EXPECT_EQ(text(channel_, "vcTitle"), "Channel 01");
}

TEST_F(ChannelTitleTest, AFolderThatCannotBeMovedKeepsTheTitleAndSaysSo) {
  makeMovieFolder("Channel 01");
  host_.fileManager.fail("movePath", "");
  const Validation answer = channel_.commitValue("vcTitle", "50%@ off");
  EXPECT_FALSE(answer.valid);
  EXPECT_FALSE(answer.error) << "the alert has told already";
  EXPECT_THAT(host_.criticalAlerts, ElementsAre("Error moving channel!|There was an error moving " +
                                                movieFolder("Channel 01") + " to " + movieFolder("50%@ off") +
                                                ".  Please check permissions on these folders."));
  EXPECT_EQ(text(channel_, "vcTitle"), "Channel 01");
}

TEST_F(ChannelTitleTest, WithoutAFolderOrATitleNothingMoves) {
  EXPECT_TRUE(channel_.commitValue("vcTitle", "Cooking").valid);
  EXPECT_FALSE(channel_.commitValue("vcTitle", Value()).valid);
  channel_.setValue("vcTitle", Value());
  EXPECT_TRUE(channel_.commitValue("vcTitle", "Named").valid);
  EXPECT_EQ(host_.fileManager.countOf("movePath"), 0);
  EXPECT_TRUE(host_.context->save()) << "saving validates once more and finds the title in place";
}

TEST_F(ChannelTitleTest, NoTitleLeadsOutOfTheFolderOfRecordings) {
  makeMovieFolder("Channel 01");
  makeMovieFolder("Other");
  for (const char* title : {"", ".", "..", "../..", "a/../../..", "/etc", "a//b", "Other/Channel 01"}) {
    const Validation answer = channel_.commitValue("vcTitle", title);
    EXPECT_FALSE(answer.valid) << title;
    ASSERT_TRUE(answer.error) << title;
    EXPECT_EQ(answer.error->code, kTitleNamesNoFolderError);
    EXPECT_THAT(answer.error->localizedDescription, HasSubstr("\"" + std::string(title) + "\""));
  }
  for (const char* title : {"", "..", "../Clipwave"}) {
    channel_.setValue("vcTitle", title);
    EXPECT_TRUE(channel_.commitValue("vcTitle", "Cooking").valid) << title;
  }
  EXPECT_EQ(host_.fileManager.countOf("movePath"), 0);
  EXPECT_TRUE(exists(movieFolder("Channel 01")) && exists(movieFolder("Other")));
  EXPECT_TRUE(channel_.commitValue("vcTitle", "Bread/Butter").valid) << "with no folder to move";
}

TEST_F(ChannelTitleTest, AMembersChannelIsPublishedUnderItsNewTitle) {
  host_.member = DotMacMember{"ann", "http://homepage.example/"};
  channel_.setValue("protocolTag", kDotMacMethod);
  EXPECT_TRUE(channel_.commitValue("vcTitle", "Cooking").valid);
  EXPECT_EQ(text(channel_, "mediaPath"), "/Sites/clipwave/Cooking");
  EXPECT_EQ(text(channel_, "vcURL"), "http://homepage.example/ann/clipwave/Cooking");
}

}  // namespace
}  // namespace clipwave
