#include "record/RecordHandOff.h"

#include <gmock/gmock.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class RecordHandOffTest : public Test {
 protected:
  RecordHandOffTest() {
    program_.launch();
    program_.channels().selectedObjects().front()->setValue("vcTitle", "Cooking");
  }
  RecordHandOff& handOff() { return program_.controller().recordHandOff(); }
  RecordWindowController& sheet() { return handOff().recordWindowController(); }
  std::string nameOfNext() { return lastPathComponent(sheet().recorder().filename()); }
  void tick() {
    for (int turns = 0; turns < 3; ++turns) program_.loop->runOnce(Seconds(0.1));
  }
  void type(std::string_view name) { sheet().filenameTextField().edit(name); }
  std::string shown() { return sheet().filenameTextField().stringValue(); }
  Window* attachedSheet() { return program_.interface().mainWindow.attachedSheet(); }

  TestProgram program_;
  const std::string folder_ = program_.process.home + "/Movies/Clipwave/Cooking";
};

TEST_F(RecordHandOffTest, ARecordingBecomesAnEpisodeAtTheTopWithTheFocusInItsTitle) {
  program_.addEpisodes({"older.mov"});
  handOff().recordMovie();
  EXPECT_EQ(attachedSheet(), &sheet().window());
  EXPECT_EQ(shown(), "Movie1");
  EXPECT_EQ(sheet().recorder().filename(), folder_ + "/Movie1.mov");
  EXPECT_TRUE(program_.files.fileExistsAtPath(folder_));
  EXPECT_FALSE(program_.files.fileExistsAtPath(sheet().recorder().filename())) << "only a recording makes it";
  handOff().recordMovie();
  EXPECT_EQ(program_.shell.beeps, 1) << "one sheet at a time";

  type("Interview");
  sheet().keyDown({U'r', true});
  sheet().keyDown({U'x', false});
  EXPECT_FALSE(sheet().recorder().isRecording());
  sheet().keyDown({U'r', false});
  EXPECT_TRUE(sheet().recorder().isRecording());
  EXPECT_FALSE(sheet().filenameTextField().isEnabled());
  EXPECT_EQ(shown(), "Interview");
  tick();
  EXPECT_EQ(sheet().elapsedTimeTextField().stringValue(), "1:05");
  EXPECT_EQ(sheet().soundLevelIndicator().level(), 0.5F);
  EXPECT_THAT(sheet().freeSpaceTextField().stringValue(), ContainsRegex("^[0-9.]+ [MG]B free, "));
  const Date before = program_.clock.now();
  sheet().keyDown({U'r', false});
  EXPECT_FALSE(handOff().isOpen());
  EXPECT_EQ(attachedSheet(), nullptr);
  EXPECT_THAT(TestProgram::listed(program_.episodes()), ElementsAre("Interview", "older"));
  ManagedObject& episode = *program_.episodes().arrangedObjects().front();
  EXPECT_EQ(episode.primitiveValue("vcPath"), Value(folder_ + "/Interview.mov"));
  EXPECT_EQ(episode.value("vcPublishDate").dateValue(), before);
  EXPECT_EQ(program_.interface().mainWindow.firstResponder(), &program_.interface().titleTextField);
  program_.turn();
  EXPECT_EQ(program_.captureKit.script.calls.back(), "ExitMovies");
}

TEST_F(RecordHandOffTest, TheNameIsFreeAndCheckedAsItIsTyped) {
  for (const char* taken : {"Movie1.mov", "Movie2.mov", "Movie4.mov"})
    program_.folder.write("home/Movies/Clipwave/Cooking/" + std::string(taken), "x");
  handOff().recordMovie();
  EXPECT_EQ(shown(), "Movie3");
  Button& start = sheet().startButton();
  const std::tuple<const char*, const char*, bool, const char*> kTyped[] = {
      {"Interview", "Interview", true, "Interview.mov"},
      {"Interview.", "Interview", true, "Interview.mov"},
      {"Movie4", "Movie4", false, "Interview.mov"},
      {"Movie4.", "Movie4", false, "Interview.mov"},
      {"", "", false, "Interview.mov"},
      {".", "", false, "Interview.mov"},
      {"a.b", "a.b", true, "a.b.mov"}};
  for (const auto& [typed, left, enabled, next] : kTyped) {
    type(typed);
    EXPECT_EQ(shown(), left) << typed;
    EXPECT_EQ(start.isEnabled(), enabled) << typed;
    EXPECT_EQ(nameOfNext(), next) << typed;
    EXPECT_EQ(sheet().nameHintTextField().stringValue().empty(), enabled) << typed;
  }
  EXPECT_EQ(program_.shell.beeps, 3);
  type("");
  sheet().keyDown({U'r', false});
  EXPECT_FALSE(sheet().recorder().isRecording());
  sheet().recorder().closeButton.performClick();
  EXPECT_EQ(attachedSheet(), nullptr);
  EXPECT_THAT(program_.episodes().arrangedObjects(), IsEmpty());
  EXPECT_EQ(program_.files.directoryContentsAtPath(folder_)->size(), 3U) << "no file is left behind";
}

TEST_F(RecordHandOffTest, WhatKeepsTheSheetFromOpeningIsToldAndCanBeTriedAgain) {
  program_.captureKit.script.devices.clear();
  handOff().recordMovie();
  EXPECT_FALSE(handOff().isOpen());
  EXPECT_THAT(
      program_.shell.alerts,
      ElementsAre("No Camera Connected!|There doesn't appear to be a camera connected. Please connect a "
                  "camera, or try unplugging and plugging in your camera|OK"));
  EXPECT_EQ(program_.captureKit.script.calls.back(), "ExitMovies");
  program_.captureKit.script.devices[kVideoMediaType] = {0, 0, 48, 64};
  program_.folder.write("home/Movies", "in the way");
  handOff().recordMovie();
  EXPECT_FALSE(handOff().isOpen());
  EXPECT_EQ(program_.shell.alerts.back(),
            "File Creation Error!|The folder " + folder_ +
                " could not be created.  Please check to make sure that Clipwave has permissions to write to "
                "these folders|OK");
  EXPECT_EQ(program_.shell.alertDetails.back().style, Alert::Style::Critical);
  ASSERT_TRUE(program_.files.removeFileAtPath(program_.process.home + "/Movies").ok());
  handOff().recordMovie();
  EXPECT_TRUE(handOff().isOpen());
  EXPECT_EQ(program_.shell.beeps, 0);
  sheet().closeRecordSheet();
  program_.channels().setSelectionIndexes({});
  handOff().recordMovie();
  EXPECT_FALSE(handOff().isOpen());
  EXPECT_EQ(program_.shell.beeps, 1);
}

TEST_F(RecordHandOffTest, ABrokenOffRecordingBecomesAnEpisodeAndTheNextOneGetsANameOfItsOwn) {
  handOff().recordMovie();
  sheet().recorder().record();
  program_.captureKit.script.failures["SGIdle"] = ioErr;
  program_.captureKit.script.movie = std::make_shared<FakeMovie>(folder_ + "/Movie1.mov", 3);
  tick();
  EXPECT_THAT(TestProgram::listed(program_.episodes()), ElementsAre("Movie1"));
  EXPECT_TRUE(handOff().isOpen());
  EXPECT_EQ(shown(), "Movie2");
  EXPECT_FALSE(sheet().filenameTextField().isEnabled()) << "until the sheet closes";
  sheet().recorder().record();
  handOff().endRecording();
  EXPECT_THAT(TestProgram::listed(program_.episodes()), ElementsAre("Movie2", "Movie1"));
  EXPECT_FALSE(handOff().isOpen());
  handOff().recordMovie();
  program_.stop();
  EXPECT_EQ(program_.captureKit.script.calls.back(), "ExitMovies") << "the sheet goes with the program";
}

TEST_F(RecordHandOffTest, AMovieFindsAChannelWhateverIsSelectedAndItsTitleGetsThePrefix) {
  const auto post = [this](const std::string& path) {
    program_.notifications.post(kMovieCreated, {}, {{std::string(kRecordingPath), path}});
    program_.turn();
  };
  ASSERT_TRUE(program_.defaults.setValue("defaultPodcastPrefix", "Show: ").ok());
  program_.channels().setSelectionIndexes({});
  post("/x/One.mov");
  EXPECT_THAT(TestProgram::listed(program_.channels()), ElementsAre("Channel 02", "Cooking"));
  EXPECT_THAT(TestProgram::listed(program_.episodes()), ElementsAre("Show: One"));
  program_.channels().setSelectionIndexes({0, 1});
  post("/x/Two.mov");
  EXPECT_THAT(TestProgram::listed(program_.episodes()), ElementsAre("Show: Two", "Show: One"));
}

}  // namespace
}  // namespace clipwave
