#include "platform/quicktime/SequenceGrabber.h"

#include <sys/resource.h>

#include <csignal>
#include <cstring>

#include "platform/quicktime/Recording.h"
#include "tests/quicktime/TestCapture.h"

extern "C" {
#include <libavutil/frame.h>
}

namespace clipwave {
namespace {
using namespace testing;
using ::testing::ElementsAre;
using ::testing::StartsWith;

void expectInStep(const Played& played, std::size_t atLeast) {
  EXPECT_GE(played.flashes.size(), atLeast);
  EXPECT_GE(played.beeps.size(), atLeast);
  ASSERT_NEAR(static_cast<double>(played.flashes.size()), static_cast<double>(played.beeps.size()), 1);
  const bool isPictureAhead = !played.beeps.empty() && played.beeps[0] - played.flashes[0] > 0.5;
  for (std::size_t i = isPictureAhead ? 1 : 0; i < std::min(played.flashes.size(), played.beeps.size());
       ++i) {
    const double distance = played.flashes[i] - played.beeps[i - (isPictureAhead ? 1 : 0)];
    EXPECT_LT(std::abs(distance), 0.04);
  }
}

TEST(SequenceGrabber, ThePatternIsRecordedInAnySizeAgainAndAgain) {
  Capture capture(std::string{kTestPatternDevice});
  ASSERT_TRUE(capture.video && capture.sound);
  QDRect bounds;
  EXPECT_EQ(capture.video->srcVideoBounds(bounds), noErr);
  EXPECT_EQ(bounds, (QDRect{0, 0, 480, 640}));
  struct Case {
    int width, height;
    bool picture, sound;
  };
  for (const Case& one :
       {Case{640, 480, true, true}, {321, 241, true, true}, {9, 700, true, false}, {320, 240, false, true}}) {
    capture.resize(one.width, one.height);
    EXPECT_EQ(capture.run(0.3), noErr);
    capture.video->setUsage(one.picture ? 7 : 0);
    capture.sound->setUsage(one.sound ? 3 : 0);
    ASSERT_EQ(capture.start(), noErr) << capture.grabber->trouble();
    EXPECT_FALSE(capture.grabber->movie());
    EXPECT_EQ(capture.run(1.5), noErr);
    EXPECT_NEAR(capture.loudest, 0.25, 0.13);  // the tone alone, or with its beep
    EXPECT_EQ(capture.stop(), noErr) << capture.grabber->trouble();
    std::string expected;
    if (one.picture)
      expected = "mpeg4,mp4v," + std::to_string(one.width) + "," + std::to_string(one.height) + ",15/1\n";
    if (one.sound) expected += "aac,mp4a,48000,2,0/0\n";
    EXPECT_EQ(tracks(capture.path), expected);
    ASSERT_TRUE(capture.grabber->movie());
    EXPECT_NEAR(capture.grabber->movie()->duration(), capture.grabber->recordedTime(), 0.1);
    EXPECT_GT(capture.grabber->recordedTime(), 1.2);
    EXPECT_EQ(capture.grabber->droppedPictures(), 0);
    const double expectedPictures = one.picture ? capture.grabber->recordedTime() * 15 : 0;
    EXPECT_NEAR(play(capture.path)->pictures, expectedPictures, 1.5);
    capture.video->setUsage(7);
  }
}

TEST(SequenceGrabber, PictureAndSoundAreInStepThroughStallsPausesAndAnotherClock) {
  for (const bool soundIsMaster : {false, true}) {
    Capture capture("flash", "beep", flashAndBeep);
    ASSERT_TRUE(capture.video && capture.sound);
    if (soundIsMaster) {
      TimeBase *ours = nullptr, *theirs = nullptr;
      ComponentDescription system, device;
      capture.grabber->timeBase(ours);
      capture.sound->timeBase(theirs);
      ASSERT_EQ(ours->masterClock()->componentInfo(system), noErr);
      ASSERT_EQ(theirs->masterClock()->componentInfo(device), noErr);
      EXPECT_EQ(capture.kit->findClock(system), ours->masterClock());
      EXPECT_EQ(capture.kit->findClock(device), theirs->masterClock());
      EXPECT_NE(system, device);
      EXPECT_EQ(capture.kit->findClock({kClockComponent, 1, 0}), nullptr);
      ours->setMasterClock(*theirs->masterClock());
    }
    ASSERT_EQ(capture.start(), noErr);
    EXPECT_EQ(capture.run(1.2), noErr);
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    EXPECT_EQ(capture.run(1), noErr);
    capture.grabber->pause(true);
    capture.run(0.7);
    capture.grabber->pause(false);
    EXPECT_EQ(capture.run(1.7), noErr);
    const double beforeStop = captureTime();
    EXPECT_EQ(capture.stop(), noErr);
    EXPECT_EQ(capture.grabber->droppedPictures(), 0);
    const double time = capture.grabber->recordedTime();
    EXPECT_NEAR(time, 5.4, 0.3 + (captureTime() - beforeStop));
    const Played played = *play(capture.path);
    expectInStep(played, 4);
    EXPECT_NEAR(played.pictures, time * 15, 2);
  }
}

TEST(SequenceGrabber, PicturesThatAreLostOrTooMuchWorkAreCounted) {
  const TemporaryFolder folder;
  for (const int size : {32, 2500}) {
    Recording::Plan plan;
    plan.path = folder.write("a.mov", "");
    plan.picture = MovieWriter::Picture{size, size};
    const auto recording = Recording::start(plan);
    ASSERT_TRUE(recording);
    CaptureSource::Delivery none;
    for (int place = 0; place < 60; place += place == 19 ? 21 : 1) {  // then 20 are lost
      CaptureSource::Delivery delivery;
      delivery.hasLostPictures = place == 40;
      CapturedPicture& picture = delivery.pictures.emplace_back();
      picture.frame.reset(av_frame_alloc());
      picture.frame->width = picture.frame->height = 16;
      picture.frame->format = AV_PIX_FMT_GRAY8;
      av_frame_get_buffer(picture.frame.get(), 0);
      picture.time = place / 15.0;
      (*recording)->add(none, delivery);
    }
    ASSERT_TRUE((*recording)->finish());
    EXPECT_EQ((*recording)->droppedPictures() == 20, size == 32);
    EXPECT_GE((*recording)->droppedPictures(), size == 32 ? 20 : 50);
  }
}

TEST(SequenceGrabber, ADeviceThatGoesEndsTheRecordingAndLeavesAMovie) {
  for (const bool isCamera : {true, false}) {
    Capture capture("flash", "beep", [&](TestDevices& devices) {
      flashAndBeep(devices);
      auto& graph =
          isCamera ? devices.computed[kVideoMediaType]["flash"] : devices.computed[kAudioMediaType]["beep"];
      graph += isCamera ? ",trim=duration=2" : ",atrim=duration=2";
    });
    ASSERT_EQ(capture.start(), noErr);
    EXPECT_EQ(capture.run(20), ioErr);
    EXPECT_EQ(capture.grabber->trouble(),
              isCamera ? "The camera was disconnected." : "The microphone was disconnected.");
    EXPECT_EQ(capture.grabber->idle(), ioErr);
    EXPECT_EQ(capture.grabber->stop(), noErr);
    ASSERT_TRUE(capture.grabber->movie());
    EXPECT_NEAR(capture.grabber->movie()->duration(), 1.9, 0.5);
    expectInStep(*play(capture.path), 1);
    // Without a recording it is said once.
    ASSERT_EQ(capture.grabber->startPreview(), noErr);
    EXPECT_EQ(capture.run(20), ioErr);
    EXPECT_EQ(capture.run(0.2), noErr);
  }
}

TEST(SequenceGrabber, AFullDiskEndsTheRecordingAndLeavesAMovie) {
  Capture capture("flash", "beep", flashAndBeep);
  rlimit old{};
  ::getrlimit(RLIMIT_FSIZE, &old);
  const rlimit room{30'000, old.rlim_max};
  const auto handler = ::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(capture.start(), noErr);
  ::setrlimit(RLIMIT_FSIZE, &room);
  EXPECT_EQ(capture.run(20), dskFulErr);
  EXPECT_EQ(capture.grabber->trouble(), "The disk is full.");
  EXPECT_EQ(capture.stop(), noErr);
  ::setrlimit(RLIMIT_FSIZE, &old);
  ::signal(SIGXFSZ, handler);
  ASSERT_TRUE(capture.grabber->movie());
  EXPECT_GT(capture.grabber->movie()->duration(), 0.5);
}

TEST(SequenceGrabber, TheNewestPictureIsDrawnWhileNothingIsPaused) {
  Capture capture("red", "", [](TestDevices& devices) {
    devices.computed[kVideoMediaType]["red"] = "color=red:size=33x17:rate=10";
  });
  EXPECT_FALSE(capture.sound);
  capture.resize(101, 37);
  const auto pixel = [&](int x, int y) {
    const std::uint8_t* bytes = capture.world->pixBaseAddr() + y * capture.world->pixRowBytes() + 4 * x;
    return std::vector<int>(bytes, bytes + 4);
  };
  const auto isRed = [&] {
    for (const auto& [x, y] : {std::pair{0, 0}, {100, 36}, {50, 18}})
      if (const auto p = pixel(x, y); p[0] != 255 || p[1] < 245 || p[2] > 8 || p[3] > 8) return false;
    return true;
  };
  EXPECT_EQ(capture.run(0.5), noErr);
  EXPECT_TRUE(isRed());
  capture.grabber->pause(true);
  std::memset(capture.world->pixBaseAddr(), 7, 400);
  EXPECT_EQ(capture.run(0.3), noErr);
  capture.grabber->update();
  EXPECT_EQ(pixel(0, 0), (std::vector<int>{7, 7, 7, 7}));
  capture.grabber->pause(false);
  EXPECT_EQ(capture.run(0.5), noErr);
  EXPECT_TRUE(isRed());
  EXPECT_EQ(capture.video->setBounds({0, 0, 0, 0}), paramErr);
  EXPECT_FALSE(makeGWorld({0, 0, 1, 8191}));
}

TEST(SequenceGrabber, DevicesAreTheUsersChoice) {
  Capture none("");
  EXPECT_FALSE(none.video);
  EXPECT_FALSE(none.sound);
  EXPECT_EQ(none.start(), paramErr);
  EXPECT_THAT(none.kit->devices(kVideoMediaType), ElementsAre(CaptureDevice{"test-pattern", "Test Pattern"}));
  Capture capture("gone", "gone too", [](TestDevices& devices) {
    flashAndBeep(devices);
    devices.computed[kVideoMediaType]["broken"] = "nonsense";
  });
  ASSERT_TRUE(capture.video && capture.sound);
  EXPECT_EQ(capture.video->device().identifier, "flash");
  EXPECT_EQ(capture.sound->device().identifier, "beep");
  EXPECT_FALSE(capture.video->setDevice("broken"));
  EXPECT_FALSE(capture.video->setDevice("gone"));
  EXPECT_EQ(capture.video->device().identifier, "flash");
  EXPECT_TRUE(capture.video->setDevice(kTestPatternDevice));
  EXPECT_EQ(capture.defaults.string("captureDevice"), kTestPatternDevice);
  EXPECT_EQ(capture.defaults.string("captureSoundDevice"), "gone too");
  ASSERT_EQ(capture.start(), noErr);
  EXPECT_FALSE(capture.video->setDevice("flash"));
  EXPECT_EQ(capture.run(0.5), noErr);
  EXPECT_EQ(capture.stop(), noErr);
  EXPECT_THAT(tracks(capture.path), StartsWith("mpeg4,mp4v,640,480,15/1"));
}

TEST(SequenceGrabber, TheVolumeHasTwoNamesAndOneMeaning) {
  Capture capture("flash", "beep", flashAndBeep);
  const auto set = [&]<class T>(T value) {
    return capture.sound->setComponentProperty(kRecordDevicePropertyClass, kMasterGainProperty,
                                               std::as_bytes(std::span(&value, 1)));
  };
  const auto volume = [&] {
    std::int16_t now = -1;
    EXPECT_EQ(capture.sound->volume(now), noErr);
    return now;
  };
  EXPECT_EQ(volume(), 256);
  EXPECT_EQ(set(-6.0206F), noErr);
  EXPECT_EQ(volume(), 128);
  EXPECT_EQ(set(std::int16_t{3}), noErr);
  EXPECT_EQ(volume(), 3);
  EXPECT_EQ(set(std::nanf("")), paramErr);
  EXPECT_EQ(set(44100.0), paramErr);
  ASSERT_EQ(capture.start(), noErr);
  EXPECT_EQ(capture.run(1.5), noErr);
  EXPECT_NEAR(capture.loudest, 0.5 * 3 / 256, 0.001);
  EXPECT_EQ(capture.stop(), noErr);
  EXPECT_TRUE(play(capture.path)->beeps.empty());
  UnsignedFixed rate = 0;
  EXPECT_EQ(capture.sound->soundInputRate(rate), noErr);
  EXPECT_EQ(fixedToDouble(rate), 44'100);
  EXPECT_EQ(capture.video->soundInputRate(rate), paramErr);
}

}  // namespace
}  // namespace clipwave
