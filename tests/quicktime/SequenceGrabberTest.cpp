#include "platform/quicktime/SequenceGrabber.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <cmath>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <map>
#include <thread>

#include "platform/quicktime/CaptureDevices.h"
#include "platform/quicktime/CaptureTime.h"
#include "platform/quicktime/MovieReader.h"
#include "tests/support/RealMovies.h"

extern "C" {
#include <libavutil/frame.h>
}

namespace clipwave {
namespace {
using namespace testing;
using ::testing::ElementsAre;
using ::testing::StartsWith;

constexpr const char* kCamera = "/dev/clipwave-camera";

// Computed devices of the test's own, and the test pattern; with `withReal` also those of the machine.
struct TestDevices final : CaptureDevices {
  std::vector<CaptureDevice> list(OSType mediaType) override {
    std::vector<CaptureDevice> found = real->list(mediaType);
    if (!withReal) found.erase(found.begin(), found.end() - 1);
    for (const auto& [identifier, graph] : computed[mediaType])
      found.insert(found.begin(), {identifier, identifier});
    if (hasCamera && mediaType == kVideoMediaType) found.insert(found.begin(), {kCamera, kCamera});
    return found;
  }
  std::optional<CaptureRequest> request(OSType mediaType, std::string_view identifier,
                                        bool lowLatency) override {
    const auto graph = computed[mediaType].find(std::string(identifier));
    if (graph == computed[mediaType].end()) return real->request(mediaType, identifier, lowLatency);
    return CaptureRequest{mediaType, "lavfi", graph->second, {}, true, epoch};
  }
  std::unique_ptr<CaptureDevices> real = makeCaptureDevices();
  std::map<OSType, std::map<std::string, std::string>> computed;  // libavfilter's language
  bool withReal = false;
  bool hasCamera = false;
  double epoch = captureTime();
};

// A kit and a grabber, used as the recorder of the record sheet does.
struct Capture {
  explicit Capture(const std::string& camera, const std::string& microphone = "",
                   const std::function<void(TestDevices&)>& prepare = {}) {
    auto made = std::make_unique<TestDevices>();
    if (prepare) prepare(*made);
    (void)defaults.setValue("captureDevice", camera);
    (void)defaults.setValue("captureSoundDevice", microphone);
    kit = makeCaptureKit({*files, defaults, *movies}, std::move(made));
    grabber = kit->openSequenceGrabber({kSequenceGrabberComponent, 0, kPlatformManufacturer});
    grabber->initialize();
    if (grabber->newChannel(kVideoMediaType, video) == noErr) {
      video->setUsage(7);
      video->setFrameRate(15 << 16);
    }
    if (grabber->newChannel(kAudioMediaType, sound) == noErr) sound->setUsage(3);
    grabber->startPreview();
  }
  void resize(int width, int height) {
    grabber->pause(true);
    const QDRect bounds{0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)};
    EXPECT_EQ(video->setBounds(bounds), noErr);
    grabber->setGWorld(nullptr);
    world = kit->newGWorld(bounds);
    grabber->setGWorld(world.get());
    grabber->pause(false);
  }
  OSStatus run(double seconds) {
    for (const double end = captureTime() + seconds; captureTime() < end;) {
      if (const OSStatus status = grabber->idle(); status != noErr) return status;
      std::this_thread::sleep_for(std::chrono::microseconds(16'667));
    }
    return noErr;
  }
  OSStatus start(const std::string& name = "a.mov") {
    path = folder.write(name, "");
    grabber->stop();
    const auto file = kit->specificationOfPath(path);
    EXPECT_EQ(grabber->setDataOutput(*file, 1), noErr);
    grabber->pause(false);
    kit->deleteMovieFile(*file);
    EXPECT_EQ(kit->createMovieFile(*file, kMovieFileCreator, -1, 0x70000000), noErr);
    const OSStatus status = grabber->startRecord();
    grabber->update();
    return status;
  }
  OSStatus stop() {
    const OSStatus status = grabber->stop();
    grabber->startPreview();
    return status;
  }

  TemporaryFolder folder;
  std::unique_ptr<FileManager> files = makeFileManager();
  UserDefaultsController defaults{*files, folder / "defaults.plist"};
  std::unique_ptr<MovieOpener> movies = makeMovieOpener();
  std::unique_ptr<CaptureKit> kit;
  std::unique_ptr<GWorld> world;
  std::unique_ptr<SequenceGrabber> grabber;
  SGChannel* video = nullptr;
  SGChannel* sound = nullptr;
  std::string path;
};

struct Played {
  int pictures = 0;
  std::vector<double> flashes, beeps;  // when each begins
};

Played play(const std::string& path) {
  Played played;
  const auto reader = MovieReader::open(path, {[](void*) { return 0; }, nullptr});
  if (!reader) return played;
  const auto note = [](std::vector<double>& beginnings, double& lastAt, double time) {
    if (time - lastAt > 0.3) beginnings.push_back(time);
    lastAt = time;
  };
  double lastFlash = -1, lastBeep = -1;
  while ((*reader)->hasPicture() && !(*reader)->pictureHasEnded()) {
    const auto picture = (*reader)->nextPicture();
    if (!picture) continue;
    ++played.pictures;
    if (picture->frame->data[0][0] > 180) note(played.flashes, lastFlash, picture->time);
  }
  while ((*reader)->hasSound() && !(*reader)->soundHasEnded()) {
    const auto sound = (*reader)->nextSound();
    for (std::size_t i = 0; sound && i < sound->samples.size(); i += 2) {
      if (std::abs(sound->samples[i]) > 3000)
        note(played.beeps, lastBeep, sound->time + static_cast<double>(i / 2) / kSoundRate);
    }
  }
  return played;
}

std::string output(const std::string& command) {
  std::string text(1000, '\0');
  FILE* const pipe = ::popen(command.c_str(), "r");
  text.resize(std::fread(text.data(), 1, text.size(), pipe));
  ::pclose(pipe);
  return text;
}

std::string probe(const std::string& path) {
  return output(
      "ffprobe -v error -of csv=p=0 -show_entries stream=codec_name,codec_tag_string,sample_rate,channels,"
      "width,height,r_frame_rate '" +
      path + "'");
}

void flashAndBeep(TestDevices& devices) {
  devices.computed[kVideoMediaType]["flash"] =
      "color=black:size=160x120:rate=15,drawbox=color=white:t=fill:enable='lt(mod(t,1),0.12)'";
  devices.computed[kAudioMediaType]["beep"] =
      "aevalsrc='if(lt(mod(t,1),0.12),0.5*sin(3000*t),0)':sample_rate=44100";
}

void expectInStep(const Played& played, std::size_t atLeast) {
  EXPECT_GE(played.flashes.size(), atLeast);
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
    EXPECT_EQ(capture.sound->level() > 0.05, true);
    EXPECT_EQ(capture.stop(), noErr) << capture.grabber->trouble();
    std::string expected;
    if (one.picture)
      expected = "mpeg4,mp4v," + std::to_string(one.width) + "," + std::to_string(one.height) + ",15/1\n";
    if (one.sound) expected += "aac,mp4a,48000,2,0/0\n";
    EXPECT_EQ(probe(capture.path), expected);
    ASSERT_TRUE(capture.grabber->movie());
    EXPECT_NEAR(capture.grabber->movie()->duration(), capture.grabber->recordedTime(), 0.1);
    EXPECT_GT(capture.grabber->recordedTime(), 1.2);
    EXPECT_EQ(capture.grabber->droppedPictures(), 0);
    const double expectedPictures = one.picture ? capture.grabber->recordedTime() * 15 : 0;
    EXPECT_NEAR(play(capture.path).pictures, expectedPictures, 1.5);
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
    const Played played = play(capture.path);
    expectInStep(played, 4);
    EXPECT_NEAR(played.pictures, time * 15, 2);
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
    expectInStep(play(capture.path), 1);
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
  EXPECT_FALSE(capture.kit->newGWorld({0, 0, 1, 8191}));
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
  EXPECT_THAT(probe(capture.path), StartsWith("mpeg4,mp4v,640,480,15/1"));
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
  EXPECT_LT(capture.sound->level(), 0.01);
  EXPECT_EQ(capture.stop(), noErr);
  EXPECT_TRUE(play(capture.path).beeps.empty());
  Fixed rate = 0;
  EXPECT_EQ(capture.sound->soundInputRate(rate), noErr);
  EXPECT_EQ(unsignedFixedToDouble(rate), 44'100);
  EXPECT_EQ(capture.video->soundInputRate(rate), paramErr);
}

// In a process whose calls of the system are answered by a camera of paper.
TEST(SequenceGrabber, ACameraIsRecordedUntilItIsPulledOut) {
  if (::getenv("CLIPWAVE_PAPER_CAMERA") == nullptr) {
    const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string answer = output(
        "CLIPWAVE_PAPER_CAMERA=1 ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD=" CLIPWAVE_CAMERA " '" +
        self + "' --gtest_filter=SequenceGrabber.ACamera* 2>&1");
    EXPECT_THAT(answer, ::testing::HasSubstr("[  PASSED  ] 1 test.")) << answer;
    return;
  }
  Capture capture("", "", [](TestDevices& devices) { devices.hasCamera = true; });
  ASSERT_TRUE(capture.video);
  QDRect bounds;
  capture.video->srcVideoBounds(bounds);
  EXPECT_EQ(bounds, (QDRect{0, 0, 48, 64}));
  capture.video->setOptions({false, true});
  capture.video->setFrameRate(10 << 16);
  ASSERT_EQ(capture.start(), noErr);
  EXPECT_EQ(capture.run(20), ioErr);
  EXPECT_EQ(capture.grabber->trouble(), "The camera was disconnected.");
  EXPECT_EQ(capture.grabber->stop(), noErr);
  EXPECT_THAT(probe(capture.path), StartsWith("mpeg4,mp4v,64,48,10/1"));
  EXPECT_NEAR(play(capture.path).pictures, 19, 3);
  EXPECT_FALSE(play(capture.path).flashes.empty());  // it grew light
}

TEST(SequenceGrabber, TheDesktopsMicrophoneIsRecorded) {
  const TemporaryFolder home;
  const std::string socket = home / "socket";
  const EnvironmentVariable folder("HOME", home.path().c_str()),
      runtime("XDG_RUNTIME_DIR", home.path().c_str()), server("PULSE_SERVER", ("unix:" + socket).c_str());
  std::string command = "pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no";
  for (const std::string& module :
       {"native-protocol-unix auth-anonymous=1 socket=" + socket, std::string("null-sink sink_name=out"),
        std::string("sine sink=out"),
        std::string(
            "remap-source master=out.monitor source_name=hum source_properties=device.description=Hum")})
    command += " -L 'module-" + module + "'";
  const std::string process = output(command + " >/dev/null 2>&1 & echo $!");
  for (int i = 0; i < 200 && !std::filesystem::exists(socket); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  {
    Capture capture(std::string{kTestPatternDevice}, "pulse:gone",
                    [](TestDevices& devices) { devices.withReal = true; });
    ASSERT_TRUE(capture.sound);
    EXPECT_EQ(capture.sound->device(), (CaptureDevice{"pulse:hum", "Hum"}));
    EXPECT_EQ(capture.sound->devices().size(), 2U);  // no monitor among them
    EXPECT_EQ(capture.run(2.5), noErr);              // a server takes its time before it delivers
    for (const bool lowLatency : {false, true}) {
      capture.sound->setOptions({lowLatency, lowLatency});
      ASSERT_EQ(capture.start(), noErr) << capture.grabber->trouble();
      EXPECT_EQ(capture.run(2), noErr);
      EXPECT_GT(capture.sound->level(), 0.3) << lowLatency;
      EXPECT_EQ(capture.stop(), noErr);
      EXPECT_THAT(probe(capture.path), ::testing::HasSubstr("aac,mp4a,48000,2"));
      EXPECT_NEAR(capture.grabber->recordedTime(), 2, 0.3);
      EXPECT_EQ(play(capture.path).beeps.size(), 1U);  // on and on
    }
    // The server goes.
    ASSERT_EQ(capture.start(), noErr);
    EXPECT_EQ(capture.run(1), noErr);
    std::system(("kill " + process).c_str());
    EXPECT_EQ(capture.run(20), ioErr);
    EXPECT_EQ(capture.stop(), noErr);
  }
}

}  // namespace
}  // namespace clipwave
