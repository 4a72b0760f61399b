#include "platform/quicktime/SequenceGrabber.h"

#include <gmock/gmock.h>

#include <cmath>
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

// The machine's devices, and computed ones of the test's own: identifiers with what is computed.
struct DevicesAndMore final : CaptureDevices {
  std::vector<CaptureDevice> list(OSType mediaType) override {
    std::vector<CaptureDevice> found = real->list(mediaType);
    for (const auto& [identifier, graph] : more[mediaType])
      found.insert(found.begin(), {identifier, identifier});
    return found;
  }
  std::optional<CaptureRequest> request(OSType mediaType, std::string_view identifier,
                                        bool lowLatency) override {
    const auto graph = more[mediaType].find(std::string(identifier));
    if (graph == more[mediaType].end()) return real->request(mediaType, identifier, lowLatency);
    return CaptureRequest{mediaType, "lavfi", graph->second, {}, true, epoch};
  }
  std::unique_ptr<CaptureDevices> real = makeCaptureDevices();
  std::map<OSType, std::map<std::string, std::string>> more;
  double epoch = captureTime();
};

// A kit and a grabber, used as the recorder of the record sheet does.
struct Capture {
  explicit Capture(const std::string& camera, const std::string& microphone = "",
                   const std::function<void(DevicesAndMore&)>& prepare = {}) {
    auto made = std::make_unique<DevicesAndMore>();
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

TEST(SequenceGrabber, First) {
  Capture capture("test-pattern");
  ASSERT_TRUE(capture.video);
  ASSERT_TRUE(capture.sound);
  capture.resize(320, 240);
  EXPECT_EQ(capture.run(0.5), noErr);
  EXPECT_EQ(capture.start(), noErr);
  EXPECT_EQ(capture.run(3), noErr);
  std::printf("level %f\n", capture.sound->level());
  EXPECT_EQ(capture.stop(), noErr);
  std::printf("time %f dropped %ld\n", capture.grabber->recordedTime(), capture.grabber->droppedPictures());
  std::system(("ffprobe -v error -show_entries "
               "stream=codec_tag_string,width,height,avg_frame_rate,duration,nb_frames -of csv " +
               capture.path)
                  .c_str());
  std::filesystem::copy(capture.path, "/tmp/grab.mov", std::filesystem::copy_options::overwrite_existing);
}

}  // namespace
}  // namespace clipwave
