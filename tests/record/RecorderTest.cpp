#include "record/Recorder.h"

#include "tests/record/RecorderFixture.h"

namespace clipwave::testing {
namespace {
using namespace ::testing;

TEST_F(RecorderTest, SettingUpBuildsTheGrabberStepByStepAndTearingDownClosesIt) {
  recorder_.setup();
  const std::vector<std::string> built = {"EnterMovies",
                                          "OpenComponent",
                                          "SGInitialize",
                                          "SGNewChannel video",
                                          "SGGetSrcVideoBounds",
                                          "SGSetChannelBounds 640x480",
                                          "SGSetChannelUsage video 7",
                                          "QTNewGWorld 32 640x480",
                                          "SGSetGWorld",
                                          "SGNewChannel sound",
                                          "SGSetChannelUsage sound 3",
                                          "QTSetComponentProperty 1635083375 1718775156 40",
                                          "QTSetComponentProperty 1635083376 1835491694 4",
                                          "AudioUnitSetProperty 2 2 0 44100.000000",
                                          "SGStartPreview",
                                          "SGSetVideoCompressorType 1836070006",
                                          "SGSetFrameRate 983040",
                                          "SGSetVideoCompressor 0 0 512 0 0",
                                          "SGChannelSetRequestedDataRate 192000",
                                          "SGPause",
                                          "SGSetChannelBounds 320x240",
                                          "SGSetGWorld none",
                                          "DisposeGWorld",
                                          "QTNewGWorld 32 320x240",
                                          "SGSetGWorld",
                                          "SGPause off"};
  EXPECT_EQ(capture().taken(), built);
  EXPECT_TRUE(recorder_.hasVideo() && recorder_.recordVideo() && recorder_.videoItem.isOn());
  EXPECT_TRUE(recorder_.hasSound() && recorder_.recordSound() && recorder_.soundItem.isOn());
  EXPECT_EQ(recorder_.videoSize(), (Size{640, 480})) << "the size of the capture does not touch it";
  EXPECT_EQ(recorder_.frameRate(), 15);
  EXPECT_EQ(recorder_.soundInputRate(), 44100);
  tick(60);
  EXPECT_NEAR(capture().idles, 60, 1);
  EXPECT_EQ(recorder_.image()->width, 320);

  recorder_.unsetup();
  EXPECT_THAT(capture().taken(), ElementsAre("CloseComponent", "DisposeGWorld", "ExitMovies"));
  tick(10);
  EXPECT_NEAR(capture().idles, 60, 1);
  EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(RecorderTest, AStepThatFailsEndsTheBuildWithItsLine) {
  const std::pair<const char*, const char*> kSteps[] = {
      {"OpenComponent", "OpenComponent() didn't work"},
      {"SGInitialize", "SGInitialize() returned -50"},
      {"SGGetSrcVideoBounds", "SGGetSrcVideoBounds() returned -50"},
      {"SGSetChannelBounds 640x480", "SGSetChannelBounds() returned -50"},
      {"SGSetChannelUsage video 7", "SGSetChannelUsage() for video returned -50"},
      {"QTNewGWorld 32 640x480", "QTNewGWorld() returned -50"},
      {"SGSetGWorld", "SGSetGWorld() returned -50"},
      {"SGSetChannelUsage sound 3", "SGSetChannelUsage() for sound returned -50"},
      {"SGStartPreview", "SGStartPreview() returned -50"}};
  for (const auto& [failure, line] : kSteps) {
    capture().failures = {{failure, paramErr}};
    log_.lines.clear();
    recorder_.setup();
    ASSERT_FALSE(log_.lines.empty()) << failure;
    EXPECT_EQ(log_.lines.front(), line);
    const auto calls = capture().taken();
    const auto end = std::ranges::find(calls, failure);
    ASSERT_NE(end, calls.end());
    // What follows is the set-up that goes on with what there is, never a further step of the build.
    for (auto call = end + 1; call != calls.end(); ++call)
      EXPECT_FALSE(call->starts_with("SGNewChannel") || call->starts_with("SGSetChannelUsage") ||
                   *call == "SGStartPreview")
          << failure << ": " << *call;
    recorder_.unsetup();
    capture().taken();
  }
}

TEST_F(RecorderTest, WithoutACameraOrASoundInputTheMenusSayWhatIsLeft) {
  const auto enabled = [this](const char* action) { return recorder_.validateMenuItem(MenuItem(action)); };
  const char* const kOfVideo[] = {"showVideoSettings:", "toggleOption:",  "goFullSize:",    "goHalfSize:",
                                  "goQuarterSize:",     "showSizePanel:", "setRecordVideo:"};
  for (const auto& [camera, microphone] :
       {std::pair(true, true), std::pair(true, false), std::pair(false, true), std::pair(false, false)}) {
    capture().devices.clear();
    if (camera) capture().devices[kVideoMediaType] = {0, 0, 48, 64};
    if (microphone) capture().devices[kAudioMediaType] = {};
    setUpRecorder();
    for (const char* action : kOfVideo) EXPECT_EQ(enabled(action), camera) << action;
    for (const char* action : {"showSoundSettings:", "setRecordSound:"})
      EXPECT_EQ(enabled(action), microphone) << action;
    EXPECT_EQ(enabled("_runPanel:"), camera || microphone);
    if (!camera) {
      recorder_.setVideoSize({10, 10});
      recorder_.goFullSize();
      recorder_.showSizePanel();
      recorder_.showVideoSettings();
      EXPECT_EQ(capture().taken(), kNothing);
    }
    if (!camera && !microphone) {
      recorder_.record();
      EXPECT_EQ(capture().taken(), kNothing);
      EXPECT_FALSE(files_.fileExistsAtPath(recorder_.filename()));
    }
    recorder_.unsetup();
  }
}

TEST_F(RecorderTest, ARecordingGoesThroughItsStepsAndEndsWithTheSheet) {
  setUpRecorder();
  recorder_.recordButton.performClick();
  const std::vector<std::string> started = {"SGStop",
                                            "SGSetDataOutput Movie1.mov 1",
                                            "SGSetChannelUsage video 7",
                                            "options video",
                                            "options sound",
                                            "SGSetChannelUsage sound 3",
                                            "SGSetChannelUsage video 7",
                                            "SGPause off",
                                            "DeleteMovieFile Movie1.mov",
                                            "CreateMovieFile Movie1.mov 1414942532 -1 1879048192",
                                            "SGStartRecord",
                                            "SGUpdate"};
  EXPECT_EQ(capture().taken(), started);
  EXPECT_TRUE(recorder_.isRecording());
  EXPECT_EQ(face(), "StopButton, no Close");
  EXPECT_THAT(events_, ElementsAre("recordingStarted Movie1.mov"));
  EXPECT_THAT(log_.lines, IsEmpty());

  recorder_.recordButton.performClick();
  EXPECT_THAT(capture().taken(),
              ElementsAre("SGStop", "SGStartPreview", "CloseComponent", "DisposeGWorld", "ExitMovies"));
  EXPECT_THAT(events_, ElementsAre(_, "movieCreated Movie1.mov", "sheet ended"));
  EXPECT_EQ(face(), "RecordButton");
  EXPECT_FALSE(recorder_.isRecording());
}

TEST_F(RecorderTest, WhatIsSwitchedOffIsNotRecordedAndNothingAtAllDoesNotStart) {
  setUpRecorder();
  recorder_.soundItem.perform();
  recorder_.record();
  EXPECT_THAT(capture().taken(), IsSupersetOf({"SGSetChannelUsage sound 0", "SGSetChannelUsage video 7"}));
  recorder_.record();
  setUpRecorder();
  recorder_.videoItem.perform();
  recorder_.record();
  const auto calls = capture().taken();
  EXPECT_THAT(calls, IsSupersetOf({"SGSetChannelUsage sound 3", "SGSetChannelUsage video 0"}));
  EXPECT_THAT(calls, Not(Contains("options sound"))) << "the options are the picture's";
  capture().failures["SGIdle"] = ioErr;
  tick();
  EXPECT_THAT(capture().taken(), ElementsAre("SGStop", "SGSetChannelUsage video 7", "SGStartPreview"));
  setUpRecorder();
  recorder_.videoItem.perform();
  recorder_.soundItem.perform();
  recorder_.record();
  EXPECT_EQ(capture().taken(), kNothing);
}

TEST_F(RecorderTest, AFailedStartLeavesTheSheetOpenForAnotherTry) {
  const auto failsAt = [this](const char* step) {
    capture().failures = {{step, dskFulErr}};
    setUpRecorder();
    recorder_.record();
    const auto calls = capture().taken();
    EXPECT_THAT(std::vector(calls.end() - 2, calls.end()), ElementsAre("SGPause off", "SGStartPreview"));
    EXPECT_EQ(face(), "RecordButton");
    EXPECT_FALSE(recorder_.isRecording());
    EXPECT_EQ(mainWindow_.attachedSheet(), &window_);
    EXPECT_THAT(events_, IsEmpty());
  };
  for (const char* step : {"SGSetDataOutput", "CreateMovieFile", "SGStartRecord"}) {
    failsAt(step);
    EXPECT_THAT(shell_.alerts, ElementsAre("Recording Error|An error has occurred while recording.|OK"));
    shell_.alerts.clear();
  }
  EXPECT_THAT(log_.lines, ElementsAre("file exists!", "file exists!")) << "the first try had made it";
  recorder_.setFilename(folder_ / "missing/Movie1.mov");
  failsAt("");
  EXPECT_THAT(shell_.alerts, IsEmpty()) << "no file, no alert";
  EXPECT_EQ(recorder_.trouble(), "“Movie1.mov” cannot be made.");
  recorder_.setFilename(folder_ / "Movie2.mov");
  EXPECT_EQ(recorder_.trouble(), "");
}

TEST_F(RecorderTest, ACameraThatIsUnpluggedEndsTheRecordingWithWhatThereIs) {
  setUpRecorder();
  recorder_.record();
  capture().failures["SGIdle"] = ioErr;
  capture().movie = std::make_shared<FakeMovie>("/x", 3);
  capture().trouble = "The camera was disconnected.";
  capture().taken();
  tick();
  EXPECT_THAT(capture().taken(), ElementsAre("SGStop", "SGStartPreview"));
  EXPECT_THAT(events_, ElementsAre(_, "movieCreated Movie1.mov", "recordingBrokenOff Movie1.mov"));
  EXPECT_THAT(shell_.alerts, ElementsAre("Recording Error|An error has occurred while recording.|OK"));
  EXPECT_THAT(log_.lines, ElementsAre("SGIdle() returned -36", "The camera was disconnected."));
  EXPECT_EQ(face(), "RecordButton");
  EXPECT_EQ(mainWindow_.attachedSheet(), &window_);

  // Nothing was recorded, or the movie cannot be finished: no movie is told of.
  events_.clear();
  capture().movie = nullptr;
  recorder_.record();
  capture().failures["SGIdle"] = ioErr;
  tick();
  recorder_.record();
  capture().failures["SGStop"] = ioErr;
  recorder_.record();
  EXPECT_THAT(events_, Each("recordingStarted Movie1.mov"));
  EXPECT_EQ(face(), "RecordButton");
  EXPECT_EQ(shell_.alerts.size(), 3U);
  // The disk is full at the very end: there is a movie, and the next recording must not overwrite it.
  events_.clear();
  capture().movie = std::make_shared<FakeMovie>("/x", 3);
  capture().failures.clear();
  recorder_.record();
  capture().failures["SGStop"] = dskFulErr;
  recorder_.record();
  EXPECT_THAT(events_, ElementsAre(_, "movieCreated Movie1.mov", "recordingBrokenOff Movie1.mov"));
  EXPECT_EQ(std::exchange(shell_.alerts, {}).size(), 4U);
  // While nothing is recorded, only the sheet says so.
  capture().failures = {{"SGIdle", ioErr}};
  tick(5);
  EXPECT_EQ(recorder_.trouble(), "The camera was disconnected.");
  EXPECT_THAT(shell_.alerts, IsEmpty());
}

}  // namespace
}  // namespace clipwave::testing
