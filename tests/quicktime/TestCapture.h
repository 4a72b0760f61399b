// A grabber over devices of a test's own, used as the record sheet uses it, and what its movies show when
// they are played.
#pragma once

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <thread>

#include "platform/quicktime/CaptureDevices.h"
#include "platform/quicktime/RealCaptureKit.h"
#include "platform/quicktime/CaptureTime.h"
#include "platform/quicktime/MovieReader.h"
#include "tests/support/TemporaryFolder.h"

extern "C" {
#include <libavutil/frame.h>
}

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

struct Played {
  int pictures = 0;
  std::vector<double> flashes, beeps;  // when each begins
};

inline Played play(const std::string& path) {
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

inline std::string output(const std::string& command) {
  std::string text(1000, '\0');
  FILE* const pipe = ::popen(command.c_str(), "r");
  text.resize(std::fread(text.data(), 1, text.size(), pipe));
  ::pclose(pipe);
  return text;
}

inline std::string probe(const std::string& path) {
  return output(
      "ffprobe -v error -of csv=p=0 -show_entries stream=codec_name,codec_tag_string,sample_rate,channels,"
      "width,height,r_frame_rate '" +
      path + "'");
}

inline void flashAndBeep(TestDevices& devices) {
  devices.computed[kVideoMediaType]["flash"] =
      "color=black:size=160x120:rate=15,drawbox=color=white:t=fill:enable='lt(mod(t,1),0.12)'";
  devices.computed[kAudioMediaType]["beep"] =
      "aevalsrc='if(lt(mod(t,1),0.12),0.5*sin(3000*t),0)':sample_rate=44100";
}

}  // namespace clipwave::testing
