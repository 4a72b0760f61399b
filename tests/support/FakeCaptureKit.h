// Capture components that write down every call, and fail where a test wants them to.
#pragma once

#include <cstring>
#include <deque>
#include <map>

#include "platform/foundation/FileManager.h"
#include "platform/quicktime/SequenceGrabber.h"
#include "tests/support/FakeMovies.h"

namespace clipwave::testing {

// What happened so far, and what fails: shared by the kit and all that it hands out.
struct CaptureScript {
  std::vector<std::string> calls;
  std::map<std::string, OSStatus, std::less<>> failures;  // by the call as it is written, or its first word
  std::map<OSType, QDRect> devices = {{kVideoMediaType, {0, 0, 480, 640}}, {kAudioMediaType, {}}};
  bool pixelsCanBeLocked = true;
  std::shared_ptr<Movie> movie;
  std::string trouble;
  int idles = 0;  // not among the calls

  OSStatus call(const std::string& text) {
    calls.push_back(text);
    for (const std::string& key : {text, text.substr(0, text.find(' '))})
      if (const auto found = failures.find(key); found != failures.end()) return found->second;
    return noErr;
  }
  // The calls since the last time.
  std::vector<std::string> taken() { return std::exchange(calls, {}); }
};

class FakeClock final : public ClockComponent {
 public:
  explicit FakeClock(OSType subType) : description_{kClockComponent, subType, kPlatformManufacturer} {}
  OSStatus componentInfo(ComponentDescription& description) const override {
    description = description_;
    return noErr;
  }

 private:
  ComponentDescription description_;
};

class FakeTimeBase final : public TimeBase {
 public:
  explicit FakeTimeBase(ClockComponent& clock) : clock_(&clock) {}
  ClockComponent* masterClock() const override { return clock_; }
  void setMasterClock(ClockComponent& clock) override { clock_ = &clock; }

 private:
  ClockComponent* clock_;
};

// A world whose rows are eight bytes longer than their pixels.
class FakeGWorld final : public GWorld {
 public:
  FakeGWorld(CaptureScript& script, const QDRect& bounds)
      : bytes(static_cast<std::size_t>(bounds.width() * 4 + 8) * static_cast<std::size_t>(bounds.height())),
        script_(script),
        bounds_(bounds) {}
  ~FakeGWorld() override { script_.call("DisposeGWorld"); }
  bool lockPixels() override { return script_.pixelsCanBeLocked; }
  void unlockPixels() override {}
  std::uint8_t* pixBaseAddr() override { return bytes.data(); }
  int pixRowBytes() const override { return bounds_.width() * 4 + 8; }
  QDRect portBounds() const override { return bounds_; }
  std::vector<std::uint8_t> bytes;

 private:
  CaptureScript& script_;
  QDRect bounds_;
};

class FakeChannel final : public SGChannel {
 public:
  FakeChannel(CaptureScript& script, OSType type, FakeTimeBase& base)
      : script_(script), type_(type), base_(base), name_(type == kVideoMediaType ? "video" : "sound") {}

  OSType mediaType() const override { return type_; }
  OSStatus setUsage(std::int32_t usage) override {
    usage_ = usage;
    return script_.call("SGSetChannelUsage " + name_ + " " + std::to_string(usage));
  }
  OSStatus usage(std::int32_t& usage) override {
    usage = usage_;
    return noErr;
  }
  OSStatus setOptions(const CaptureOptions& options) override {
    return script_.call("options " + name_ + (options.lowLatency ? " latency" : "") +
                        (options.deviceTimeStamps ? " stamps" : ""));
  }
  OSStatus srcVideoBounds(QDRect& bounds) override {
    bounds = script_.devices[kVideoMediaType];
    return script_.call("SGGetSrcVideoBounds");
  }
  OSStatus setBounds(const QDRect& bounds) override {
    return script_.call("SGSetChannelBounds " + std::to_string(bounds.width()) + "x" +
                        std::to_string(bounds.height()));
  }
  OSStatus setVideoCompressorType(OSType type) override {
    return script_.call("SGSetVideoCompressorType " + std::to_string(type));
  }
  OSStatus setVideoCompressor(int depth, OSType compressor, int spatial, int temporal, int key) override {
    std::string text = "SGSetVideoCompressor";
    for (const auto number : {depth, static_cast<int>(compressor), spatial, temporal, key})
      text += " " + std::to_string(number);
    return script_.call(text);
  }
  OSStatus setFrameRate(Fixed rate) override {
    rate_ = rate;
    return script_.call("SGSetFrameRate " + std::to_string(rate));
  }
  OSStatus frameRate(Fixed& rate) override {
    rate = rate_;
    return noErr;
  }
  OSStatus setRequestedDataRate(std::int32_t rate) override {
    return script_.call("SGChannelSetRequestedDataRate " + std::to_string(rate));
  }
  OSStatus soundInputRate(UnsignedFixed& rate) override {
    rate = 44'100U << 16;
    return noErr;
  }
  OSStatus volume(std::int16_t& volume) override {
    volume = volume_;
    return noErr;
  }
  OSStatus setComponentProperty(OSType propertyClass, OSType property,
                                std::span<const std::byte> value) override {
    if (property == kMasterGainProperty && value.size() == sizeof volume_)
      std::memcpy(&volume_, value.data(), sizeof volume_);
    return script_.call("QTSetComponentProperty " + std::to_string(propertyClass) + " " +
                        std::to_string(property) + " " + std::to_string(value.size()));
  }
  OSStatus setAudioUnitProperty(std::uint32_t property, std::uint32_t scope, std::uint32_t element,
                                std::span<const std::byte> value) override {
    double number = 0;
    std::memcpy(&number, value.data(), sizeof number);
    return script_.call("AudioUnitSetProperty " + std::to_string(property) + " " + std::to_string(scope) +
                        " " + std::to_string(element) + " " + std::to_string(number));
  }
  float level() const override { return 0.5F; }
  OSStatus timeBase(TimeBase*& base) override {
    base = &base_;
    return noErr;
  }
  std::vector<CaptureDevice> devices() override { return {{"one", "First"}, {"two", "Second"}}; }
  CaptureDevice device() const override { return device_; }
  Result<void> setDevice(std::string_view identifier) override {
    if (script_.call("device " + std::string(identifier)) != noErr)
      return cocoaError(kFileReadUnknownError, "It is busy.");
    device_ = {std::string(identifier), ""};
    return {};
  }

 private:
  CaptureScript& script_;
  OSType type_;
  FakeTimeBase& base_;
  std::string name_;
  std::int32_t usage_ = 0;
  Fixed rate_ = 0;
  std::int16_t volume_ = 256;
  CaptureDevice device_{"one", "First"};
};

class FakeGrabber final : public SequenceGrabber {
 public:
  FakeGrabber(CaptureScript& script, FakeClock& systemClock, FakeClock& soundClock, SettingsDialog** dialog)
      : script_(script), base_(systemClock), soundBase_(soundClock), dialog_(dialog) {}
  ~FakeGrabber() override { script_.call("CloseComponent"); }

  OSStatus initialize() override { return script_.call("SGInitialize"); }
  OSStatus newChannel(OSType mediaType, SGChannel*& channel) override {
    if (!script_.devices.contains(mediaType)) return paramErr;
    auto& mine = mediaType == kVideoMediaType ? video : sound;
    mine =
        std::make_unique<FakeChannel>(script_, mediaType, mediaType == kVideoMediaType ? base_ : soundBase_);
    channel = mine.get();
    return script_.call(std::string("SGNewChannel ") + (mediaType == kVideoMediaType ? "video" : "sound"));
  }
  OSStatus setGWorld(GWorld* world) override {
    return script_.call(world ? "SGSetGWorld" : "SGSetGWorld none");
  }
  OSStatus startPreview() override { return script_.call("SGStartPreview"); }
  OSStatus pause(bool pause) override { return script_.call(pause ? "SGPause" : "SGPause off"); }
  OSStatus idle() override {
    ++script_.idles;
    const auto failure = script_.failures.find("SGIdle");
    return failure == script_.failures.end() ? noErr : std::exchange(failure->second, noErr);
  }
  OSStatus update() override { return script_.call("SGUpdate"); }
  OSStatus stop() override { return script_.call("SGStop"); }
  OSStatus setDataOutput(const FSSpec& file, std::int32_t flags) override {
    return script_.call("SGSetDataOutput " + file.name + " " + std::to_string(flags));
  }
  OSStatus startRecord() override { return script_.call("SGStartRecord"); }
  std::shared_ptr<Movie> movie() override { return script_.movie; }
  double recordedTime() const override { return 65; }
  std::int64_t droppedPictures() const override { return 0; }
  std::string trouble() const override { return script_.trouble; }
  OSStatus timeBase(TimeBase*& base) override {
    base = &base_;
    return noErr;
  }
  OSStatus settingsDialog(SGChannel& channel, Window* window) override {
    script_.call(channel.mediaType() == kVideoMediaType ? "SGSettingsDialog video"
                                                        : "SGSettingsDialog sound");
    return *dialog_ ? (*dialog_)->run(channel, window) : paramErr;
  }

  std::unique_ptr<FakeChannel> video;
  std::unique_ptr<FakeChannel> sound;

 private:
  CaptureScript& script_;
  FakeTimeBase base_;
  FakeTimeBase soundBase_;
  SettingsDialog** dialog_;
};

class FakeCaptureKit final : public CaptureKit {
 public:
  explicit FakeCaptureKit(FileManager& files) : files_(files) {}

  CaptureScript script;
  FakeClock systemClock{fourCharacterCode("syst")};
  FakeClock soundClock{fourCharacterCode("soun")};

  void enterMovies() override { script.call("EnterMovies"); }
  void exitMovies() override { script.call("ExitMovies"); }
  std::unique_ptr<SequenceGrabber> openSequenceGrabber(const ComponentDescription& wanted) override {
    if (wanted != ComponentDescription{kSequenceGrabberComponent, 0, kPlatformManufacturer} ||
        script.call("OpenComponent") != noErr)
      return nullptr;
    return std::make_unique<FakeGrabber>(script, systemClock, soundClock, &dialog_);
  }
  ClockComponent* findClock(const ComponentDescription& description) override {
    for (ClockComponent* clock : {&systemClock, &soundClock}) {
      ComponentDescription own;
      clock->componentInfo(own);
      if (own == description) return clock;
    }
    return nullptr;
  }
  OSStatus newGWorld(std::unique_ptr<GWorld>& world, int pixelFormat, const QDRect& bounds) override {
    const OSStatus status =
        script.call("QTNewGWorld " + std::to_string(pixelFormat) + " " + std::to_string(bounds.width()) +
                    "x" + std::to_string(bounds.height()));
    if (status == noErr) world = std::make_unique<FakeGWorld>(script, bounds);
    return status;
  }
  std::optional<FSSpec> specificationOfPath(std::string_view path) override {
    if (!files_.fileExistsAtPath(path)) return std::nullopt;
    return FSSpec{stringByDeletingLastPathComponent(path), lastPathComponent(path)};
  }
  std::optional<std::string> pathOfSpecification(const FSSpec& file) override {
    return file.folder + "/" + file.name;
  }
  OSStatus deleteMovieFile(const FSSpec& file) override {
    return script.call("DeleteMovieFile " + file.name);
  }
  OSStatus createMovieFile(const FSSpec& file, OSType creator, std::int16_t scriptCode,
                           std::uint32_t flags) override {
    return script.call("CreateMovieFile " + file.name + " " + std::to_string(creator) + " " +
                       std::to_string(scriptCode) + " " + std::to_string(flags));
  }
  std::vector<CaptureDevice> devices(OSType) override { return {}; }
  void setSettingsDialog(SettingsDialog* dialog) override { dialog_ = dialog; }

 private:
  FileManager& files_;
  SettingsDialog* dialog_ = nullptr;
};

}  // namespace clipwave::testing
