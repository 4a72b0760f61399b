#include "record/Recorder.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include "record/CaptureSettings.h"
#include "tests/support/FakeApplicationShell.h"
#include "tests/support/FakeCaptureKit.h"
#include "tests/support/FakeFileManager.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class RecorderTest : public Test {
 protected:
  RecorderTest() {
    for (const auto name : {kRecordingStarted, kMovieCreated, kRecordingBrokenOff})
      observations_.push_back(notifications_.observe(name, [this](const Notification& posted) {
        EXPECT_EQ(posted.object.handleValue().get(), &recorder_);
        const Value& path = posted.userInfo.at("path");
        events_.push_back(posted.name + " " +
                          (path.isNull() ? "nowhere" : lastPathComponent(path.stringValue())));
      }));
    recorder_.setFilename(folder_ / "Movie1.mov");
  }
  // The recorder as it is with the sheet open.
  void setUpRecorder() {
    recorder_.setup();
    application_.beginSheet(window_, mainWindow_, [this](int) { events_.emplace_back("sheet ended"); });
    capture().taken();
  }
  CaptureScript& capture() { return kit_.script; }
  void tick(int times = 1) {
    for (int i = 0; i < times; ++i) loop_->runOnce(Seconds(1.0 / 60));
  }
  // Calls the function from within the next modal run, which lets no timer through.
  void duringModalRun(std::function<void()> function) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::close(ends[1]);
    modalWatch_ = loop_->watch(
        ends[0], RunLoop::Readiness::Readable,
        [this, end = ends[0], function = std::move(function)] {
          const auto called = function;
          modalWatch_.reset();
          ::close(end);
          called();
        },
        RunLoop::Delivery::DefaultAndModal);
  }
  std::string face() const {
    return recorder_.recordButton.image() + (recorder_.closeButton.isEnabled() ? "" : ", no Close");
  }

  TemporaryFolder folder_;
  TestClock clock_;
  std::unique_ptr<RunLoop> loop_ = makeRunLoop(clock_);
  FakeApplicationShell shell_;
  Application application_{*loop_, shell_};
  FakeFileManager files_;
  NotificationCenter notifications_;
  FakeWorkspace workspace_;
  RecordingLog log_;
  FakeCaptureKit kit_{files_};
  Window mainWindow_;
  Window window_;
  Recorder recorder_{{application_, *loop_, files_, notifications_, workspace_, log_, kit_}, window_};
  std::vector<std::string> events_;
  std::vector<Observation> observations_;
  std::unique_ptr<DescriptorWatch> modalWatch_;
};

const std::vector<std::string> kNothing;

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

TEST_F(RecorderTest, OptionsAndTheSoundClockActOnTheNextRecording) {
  const auto masterClock = [this] {
    TimeBase* base = nullptr;
    recorder_.sequenceGrabber()->timeBase(base);
    return base->masterClock();
  };
  setUpRecorder();
  for (MenuItem* item : {&recorder_.lowLatencyItem, &recorder_.timeBaseItem, &recorder_.soundClockItem})
    item->perform();
  MenuItem other("toggleOption:", 7);
  recorder_.toggleOption(other);
  EXPECT_TRUE(other.isOn() && recorder_.lowLatencyCapture() && recorder_.useTimeBase() &&
              recorder_.useSoundClock());
  // Stopping would close the sheet: the recordings that follow one another are ones that broke off.
  const auto recordAndBreakOff = [this] {
    capture().taken();
    recorder_.record();
    capture().failures["SGIdle"] = ioErr;
    tick();
  };
  recordAndBreakOff();
  EXPECT_THAT(capture().taken(), IsSupersetOf({"SGSetChannelUsage video 31", "options video latency stamps",
                                               "options sound latency stamps"}));
  EXPECT_EQ(masterClock(), &kit_.soundClock);
  recordAndBreakOff();
  recorder_.soundClockItem.perform();
  recordAndBreakOff();
  EXPECT_EQ(masterClock(), &kit_.systemClock);
}

TEST_F(RecorderTest, SizesResizeTheCaptureAndTheSheetAroundItsMiddle) {
  setUpRecorder();
  window_.setDecorations({10, 30});
  window_.contentView().setFrame({{0, 0}, {400, 340.5}});
  recorder_.setFrame({{0, 0}, {400, 240}});
  window_.setFrame({{100, 50}, {411.5, 371}});
  recorder_.goQuarterSize();
  EXPECT_THAT(capture().taken(), Contains("SGSetChannelBounds 160x120"));
  EXPECT_EQ(recorder_.image(), nullptr);
  EXPECT_EQ(window_.frame(), (Rect{{220, 110}, {170, 250}}));
  window_.setContentMinSize({380, 300});
  recorder_.goHalfSize();
  EXPECT_EQ(window_.frame().size, (Size{390, 330})) << "both measures, though one is large enough";
  tick();
  EXPECT_EQ(recorder_.image()->width, 320);

  duringModalRun([this] {
    EXPECT_EQ(recorder_.wSizeField.stringValue() + "x" + recorder_.hSizeField.stringValue(), "640x480");
    EXPECT_TRUE(recorder_.sizePanel.isVisible() && recorder_.sizePanel.centerCount() == 1);
    recorder_.wSizeField.edit("321");
    recorder_.hSizeField.edit("181 pixels");
    recorder_.sizePanelOKButtonPressed();
  });
  capture().taken();
  recorder_.showSizePanel();
  EXPECT_THAT(capture().taken(), Contains("SGSetChannelBounds 321x181"));
  EXPECT_FALSE(recorder_.sizePanel.isVisible());
  duringModalRun([this] { recorder_.sizePanelCancelButtonPressed(); });
  recorder_.showSizePanel();
  EXPECT_EQ(capture().taken(), kNothing);
}

TEST_F(RecorderTest, ASizeThatCannotBeHadFreezesThePreviewUntilOneThatCan) {
  setUpRecorder();
  const std::pair<const char*, const char*> kSteps[] = {
      {"SGSetChannelBounds", "SGSetChannelBounds() returned -50"},
      {"QTNewGWorld", "QTNewGWorld() returned -50"},
      {"SGSetGWorld", "SGSetGWorld() returned -50"}};
  for (const auto& [step, line] : kSteps) {
    capture().failures = {{step, paramErr}};
    recorder_.setVideoSize({1e9, 48});
    EXPECT_EQ(log_.lines.back(), line);
    EXPECT_THAT(capture().taken(), Not(Contains("SGPause off")));
    EXPECT_NE(recorder_.trouble(), "") << "nothing else would say why the picture stands still";
    tick();
  }
  capture().failures.clear();
  capture().pixelsCanBeLocked = false;
  recorder_.setVideoSize({64.9, 48.9});
  EXPECT_EQ(log_.lines.back(), "Could not lock pixels.");
  capture().pixelsCanBeLocked = true;
  capture().taken();
  recorder_.setVideoSize({64.9, 48.9});
  EXPECT_EQ(capture().taken().back(), "SGPause off");
  EXPECT_EQ(recorder_.trouble(), "");
  EXPECT_EQ(recorder_.gWorld()->portBounds(), (QDRect{0, 0, 48, 64}));
}

TEST_F(RecorderTest, TheSettingsDialogueChoosesDeviceAndVolume) {
  // Chooses the second device and half the volume, then presses a button.
  struct Chooser final : InterfaceLoader {
    std::function<void(CaptureSettings::WindowParts&)> made;
    void loadWindow(WindowController& controller) override {
      auto& parts = static_cast<CaptureSettings::WindowParts&>(controller);
      parts.devicePopUp.chooseItemWithTag(1);
      parts.volumeSlider.setValue(128);
      made(parts);
    }
  } chooser;
  bool accepts = true;
  chooser.made = [&](CaptureSettings::WindowParts& parts) {
    duringModalRun([&] { (accepts ? parts.okButton : parts.cancelButton).performClick(); });
  };
  CaptureSettings settings(application_, chooser);
  kit_.setSettingsDialog(&settings);
  setUpRecorder();
  recorder_.showSoundSettings();
  EXPECT_THAT(capture().taken(),
              ElementsAre("SGPause", "SGSettingsDialog sound", HasSubstr(" 2"), "device two", "SGPause off"));
  EXPECT_EQ(recorder_.volume(), 128);
  recorder_.setVolume(1e6F);
  EXPECT_EQ(recorder_.volume(), 256);
  capture().failures["device two"] = ioErr;
  capture().devices[kVideoMediaType] = {0, 0, 72, 96};
  recorder_.showVideoSettings();
  EXPECT_THAT(shell_.alerts, ElementsAre("“Second” cannot be used.|It is busy.|OK"));
  EXPECT_EQ(recorder_.videoSize(), (Size{96, 72})) << "another camera has another size";
  accepts = false;
  capture().taken();
  recorder_.showVideoSettings();
  EXPECT_THAT(capture().taken(), Not(Contains("device two")));
  // A signal that ends the program does so in the middle of the dialogue, too.
  chooser.made = [&](CaptureSettings::WindowParts&) {
    duringModalRun([&] {
      recorder_.unsetup();
      application_.terminate();
    });
  };
  recorder_.showVideoSettings();
  EXPECT_EQ(capture().taken().back(), "ExitMovies");
}

TEST_F(RecorderTest, TheCreditOpensItsPage) {
  shell_.answerAlert(Alert::Answer::Default);
  recorder_._runPanel();
  EXPECT_THAT(workspace_.calls, IsEmpty());
  shell_.answerAlert(Alert::Answer::Alternate);
  recorder_._runPanel();
  EXPECT_THAT(workspace_.calls, SizeIs(1));
}

}  // namespace
}  // namespace clipwave
