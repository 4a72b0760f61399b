#include "ui/ChannelListEditing.h"

#include <gmock/gmock.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class ChannelListEditingTest : public Test {
 protected:
  TestProgram program_;
  MainInterface& window_ = program_.launch();
  ChannelListEditing& editing_ = program_.controller().channelListEditing();
};

TEST_F(ChannelListEditingTest, RemovedChannelsAreAskedForOnceAndComeBackInOneStep) {
  program_.addEpisodes({"1.mov"});
  program_.addChannel();
  program_.addEpisodes({"2.mov", "3.mov"});
  program_.addChannel();
  const std::pair<IndexSet, std::string> kQuestions[] = {
      {{2}, "Delete the channel “Channel 03”?"},
      {{0}, "Delete the channel “Channel 01” and its 1 episode?"},
      {{1, 2}, "Delete 2 channels and their 2 episodes?"}};
  for (const auto& [rows, question] : kQuestions) {
    program_.channels().setSelectionIndexes(rows);
    program_.shell.answerAlert(Alert::Answer::Alternate);
    editing_.removeSelectedChannels();
    EXPECT_EQ(program_.shell.alerts.back(), question + "|The movie files stay where they are.|Delete/Cancel");
  }
  EXPECT_EQ(program_.context().countOfEntity(kChannelEntity), 3U);

  program_.shell.answerAlert(Alert::Answer::Default);
  editing_.removeSelectedChannels();
  EXPECT_THAT(program_.listed(program_.channels()), ElementsAre("Channel 01"));
  EXPECT_EQ(program_.context().countOfEntity(kVodcastEntity), 1U);
  EXPECT_TRUE(program_.files.fileExistsAtPath(program_.folder / "2.mov"));
  EXPECT_EQ(program_.context().undoManager().undoActionName(), "Delete Channels");
  program_.context().undo();
  EXPECT_EQ(program_.context().countOfEntity(kVodcastEntity), 3U);

  program_.channels().setSelectionIndexes({});
  editing_.removeSelectedChannels();
  EXPECT_EQ(program_.shell.beeps, 1);
  EXPECT_THAT(program_.shell.alerts, SizeIs(4));
}

TEST_F(ChannelListEditingTest, ChosenMoviesComeInAsADropWould) {
  editing_.addChannel();
  program_.turn();
  const std::string path = program_.makeMovie("talk.mov");
  const std::pair<OpenPanelAnswer, int> kAnswers[] = {
      {{}, 0}, {{path, "/m/notes.txt"}, 1}, {{path, "/m/b.mp4"}, 1}};
  for (const auto& [chosen, beeps] : kAnswers) {
    editing_.addEpisodes();
    EXPECT_TRUE(program_.shell.openPanels.back().allowsMultipleSelection);
    EXPECT_THAT(program_.shell.openPanels.back().allowedTypes, ElementsAre("mov", "mp4", "'MooV'"));
    program_.shell.endOpenPanelSheet(chosen);
    EXPECT_EQ(program_.shell.beeps, beeps);
  }
  EXPECT_THAT(program_.listed(program_.episodes()), ElementsAre("b", "talk"));
  EXPECT_THAT(program_.episodes().selectionIndexes(), ElementsAre(0));
  EXPECT_EQ(window_.vcastTableView.dropRow(), -1);
}

}  // namespace
}  // namespace clipwave
