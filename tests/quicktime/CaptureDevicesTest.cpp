#include "platform/quicktime/CaptureDevices.h"

#include "tests/quicktime/TestCapture.h"

namespace clipwave {
namespace {
using namespace testing;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::string output(const std::string& command) {
  std::string text(1000, '\0');
  FILE* const pipe = ::popen(command.c_str(), "r");
  text.resize(std::fread(text.data(), 1, text.size(), pipe));
  ::pclose(pipe);
  return text;
}

// A server that runs until it is told to end, at the latest with this.
struct Server {
  explicit Server(const std::string& command) : process(output(command + " >/dev/null 2>&1 & echo $!")) {}
  ~Server() { end(); }
  void end() const { static_cast<void>(std::system(("kill " + process + " 2>/dev/null").c_str())); }
  const std::string process;
};

// In a process whose calls of the system are answered by a camera of paper.
TEST(CaptureDevices, ACameraIsRecordedUntilItIsPulledOut) {
  if (::getenv("CLIPWAVE_PAPER_CAMERA") == nullptr) {
    const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string answer = output(
        "CLIPWAVE_PAPER_CAMERA=1 ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD=" CLIPWAVE_CAMERA " '" +
        self + "' --gtest_filter=CaptureDevices.ACamera* 2>&1");
    EXPECT_THAT(answer, HasSubstr("[  PASSED  ] 1 test.")) << answer;
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
  EXPECT_THAT(tracks(capture.path), StartsWith("mpeg4,mp4v,64,48,10/1"));
  EXPECT_NEAR(play(capture.path)->pictures, 19, 3);
  EXPECT_FALSE(play(capture.path)->flashes.empty());  // it grew light
}

TEST(CaptureDevices, TheDesktopsMicrophoneIsRecorded) {
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
  const Server daemon(command);
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
      EXPECT_GT(capture.loudest, 0.3) << lowLatency;
      EXPECT_EQ(capture.stop(), noErr);
      EXPECT_THAT(tracks(capture.path), HasSubstr("aac,mp4a,48000,2"));
      EXPECT_NEAR(capture.grabber->recordedTime(), 2, 0.3);
      EXPECT_EQ(play(capture.path)->beeps.size(), 1U);  // on and on
    }
    // The server goes.
    ASSERT_EQ(capture.start(), noErr);
    EXPECT_EQ(capture.run(1), noErr);
    daemon.end();
    EXPECT_EQ(capture.run(20), ioErr);
    EXPECT_EQ(capture.stop(), noErr);
  }
}

}  // namespace
}  // namespace clipwave
