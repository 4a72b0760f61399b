// What the options menu sets: options, sizes, devices.
#include "record/CaptureSettings.h"
#include "tests/record/RecorderFixture.h"

namespace clipwave::testing {
namespace {
using namespace ::testing;

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
}  // namespace clipwave::testing
