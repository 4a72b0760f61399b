#include "model/Channel.h"

#include <gmock/gmock.h>

#include "tests/support/FakeLibraryHost.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

std::string text(ManagedObject& record, std::string_view key) {
  return record.value(key).optionalString().value_or("(absent)");
}

std::vector<std::string> texts(ManagedObject& record, std::initializer_list<std::string_view> keys) {
  std::vector<std::string> all;
  for (const std::string_view key : keys) all.push_back(text(record, key));
  return all;
}

class ChannelTest : public Test {
 protected:
  std::string movieFolder(std::string_view title) const { return channelMovieFolder(host_.home(), title); }
  std::string makeMovieFolder(std::string_view title) const {
    return host_.folder.write("home/Movies/Clipwave/" + std::string(title) + "/Movie1.mov", "frames");
  }
  bool exists(std::string_view path) { return host_.fileManager.fileExistsAtPath(path); }

  FakeLibraryHost host_;
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
  EXPECT_THAT(texts(channel, {"vcTitle", "filename", "vcURL", "websiteURL", "mediaPath"}),
              ElementsAre("Channel 01", "show01.xml", "http://studio.example/~alex/clipwave/Channel 01",
                          "http://studio.example/~alex", host_.home() + "/Sites/clipwave/Channel 01"));
  EXPECT_THAT(texts(channel, {"language", "copyright"}),
              ElementsAre("English", "Copyright 2009 Alex Example"));
  EXPECT_THAT(texts(channel, {"vcAuthor", "itunesAuthor", "ownerName"}), Each("Alex Example"));
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
  host_.saveAndReopen();
  EXPECT_EQ(text(host_.newChannelWithDefaults(), "vcTitle"), "Channel 05");
}

TEST_F(ChannelTest, WhatWasSetBeforeTheDefaultsStays) {
  host_.member = DotMacMember{"ann", "http://homepage.example/"};
  Channel& channel = host_.newChannel();
  channel.setValue("vcTitle", "My Show");
  channel.setValue("websiteURL", "http://show.example");
  channel.setValue("copyright", "");
  host_.turn();
  EXPECT_THAT(texts(channel, {"vcTitle", "filename", "websiteURL", "copyright", "vcURL", "mediaPath"}),
              ElementsAre("My Show", "show01.xml", "http://show.example", "",
                          "http://homepage.example/ann/clipwave/My Show", "/Sites/clipwave/My Show"));
  EXPECT_EQ(channel.value("protocolTag"), Value(kDotMacMethod));
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
  host_.newChannel();
  host_.context->undo();
  host_.turn();
  EXPECT_EQ(host_.context->countOfEntity(kChannelEntity), 0U);
}

TEST_F(ChannelTest, DeletingAChannelDeletesItsEpisodes) {
  Channel& channel = host_.newChannel();
  host_.newEpisode(channel);
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
  EXPECT_EQ(readFile(movieFolder("Cooking") + "/Movie1.mov"), "frames");
  EXPECT_FALSE(exists(movieFolder("Channel 01")));
  EXPECT_EQ(text(channel_, "vcURL"), "http://studio.example/~alex/clipwave/Channel 01");
  EXPECT_TRUE(channel_.commitValue("vcTitle", "Cooking").valid) << "the title that it has already";
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

TEST_F(ChannelTitleTest, NoTitleLeadsOutOfTheFolderOfRecordingsOrIntoAnothersFolder) {
  makeMovieFolder("Channel 01");
  makeMovieFolder("Other");
  for (const char* title : {"", ".", "..", "../..", "a/../../..", "/etc", "a//b", "Other/Channel 01"}) {
    const Validation answer = channel_.commitValue("vcTitle", title);
    EXPECT_EQ(answer.error.value().code, kTitleNamesNoFolderError) << title;
  }
  const std::string taken = "This channel name already exists at " + movieFolder("Other") +
                            ". Please select a different channel name or delete this folder.";
  EXPECT_EQ(channel_.commitValue("vcTitle", "Other").error.value(), (Error{"vcTitle", -5, taken, {}}));
  for (const char* title : {"", "..", "../Clipwave"}) {
    channel_.setValue("vcTitle", title);
    EXPECT_TRUE(channel_.commitValue("vcTitle", "Cooking").valid) << title;
  }
  EXPECT_EQ(host_.fileManager.countOf("movePath"), 0);
  EXPECT_TRUE(exists(movieFolder("Channel 01")) && exists(movieFolder("Other")));
  EXPECT_TRUE(channel_.commitValue("vcTitle", "Bread/Butter").valid) << "with no folder to move";
}

}  // namespace
}  // namespace clipwave
