// A grabber over devices of a test's own, used as the record sheet uses it.
#pragma once

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <thread>

#include "platform/quicktime/CaptureDevices.h"
#include "platform/quicktime/CaptureTime.h"
#include "platform/quicktime/RealCaptureKit.h"
#include "tests/quicktime/PlayedMovie.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

inline constexpr const char* kCamera = "/dev/clipwave-camera";

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
    EXPECT_EQ(kit->newGWorld(world, 32, bounds), noErr);
    grabber->setGWorld(world.get());
    grabber->pause(false);
  }
  OSStatus run(double seconds) {
    for (const double end = captureTime() + seconds; captureTime() < end;) {
      if (const OSStatus status = grabber->idle(); status != noErr) return status;
      if (sound != nullptr) loudest = std::max(loudest, sound->level());
      std::this_thread::sleep_for(std::chrono::microseconds(16'667));
    }
    return noErr;
  }
  OSStatus start(const std::string& name = "a.mov") {
    path = folder.write(name, "");
    loudest = 0;
    grabber->stop();
    const auto file = kit->specificationOfPath(path);
    EXPECT_EQ(grabber->setDataOutput(*file, 1), noErr);
    grabber->pause(false);
    kit->deleteMovieFile(*file);
    EXPECT_EQ(kit->createMovieFile(*file, 0, -1, 0), noErr);
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
  float loudest = 0;  // while it recorded
};

inline void flashAndBeep(TestDevices& devices) {
  devices.computed[kVideoMediaType]["flash"] =
      "color=black:size=160x120:rate=15,drawbox=color=white:t=fill:enable='lt(mod(t,1),0.12)'";
  devices.computed[kAudioMediaType]["beep"] =
      "aevalsrc='if(lt(mod(t,1),0.12),0.5*sin(3000*t),0)':sample_rate=44100";
}

}  // namespace clipwave::testing
