#include "record/Recorder.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/foundation/Localization.h"
#include "record/CaptureSettings.h"
#include "record/PixelConversion.h"

namespace clipwave {
namespace {

constexpr Seconds kTick(1.0 / 60);
constexpr Size kFirstSize{320, 240};
constexpr Fixed kFrameRate = 15 << 16;
constexpr int kNormalQuality = 512;
constexpr double kSoundRate = 48'000;
constexpr std::uint32_t kSoundChannels = 2;
// A device's unit that takes its input format: its rate is asked for there, where there is
// one.
constexpr std::uint32_t kSampleRateProperty = 2;
constexpr std::uint32_t kOutputScope = 2;
constexpr double kDeviceRate = 44'100;

constexpr int k32ARGBPixelFormat = 32;

constexpr const char* kCreditPage = "https://ffmpeg.org/";

std::int16_t toShort(double number) {
  if (std::isnan(number)) return 0;
  constexpr double kLeast = std::numeric_limits<std::int16_t>::min();
  constexpr double kMost = std::numeric_limits<std::int16_t>::max();
  return static_cast<std::int16_t>(std::clamp(number, kLeast, kMost));
}

QDRect boundsOfSize(Size size) {
  return {0, 0, toShort(size.height), toShort(size.width)};
}

}  // namespace

Recorder::Recorder(const Services& services, Window& window) : services_(services), window_(window) {
  recordButton.setImage("RecordButton");
  recordButton.setAction([this] { record(); });
  videoItem.setTarget([this](MenuItem& sender) { setRecordVideo(sender); });
  soundItem.setTarget([this](MenuItem& sender) { setRecordSound(sender); });
  for (MenuItem* item : {&lowLatencyItem, &timeBaseItem, &soundClockItem})
    item->setTarget([this](MenuItem& sender) { toggleOption(sender); });
}

Recorder::~Recorder() {
  unsetup();
}

void Recorder::log(std::string_view operation, OSStatus status) {
  services_.log.write(std::string(operation) + " returned " + std::to_string(status));
}

void Recorder::setup() {
  unsetup();
  isSetUp_ = true;
  services_.captureKit.enterMovies();
  _initializeSequenceGrabber();
  applyVideoSettings();
  recordSound_ = hasSound();
  soundItem.setOn(recordSound_);
  timer_ = services_.runLoop.scheduleRepeatingTimer(kTick, [this] { _updateDisplay(); });
  setVideoSize(kFirstSize);
}

void Recorder::_initializeSequenceGrabber() {
  gSeqGrabber_.reset();
  gVideoChannel_ = nullptr;
  gSoundChannel_ = nullptr;
  gCurrentlyRecording_ = false;
  gSeqGrabber_ =
      services_.captureKit.openSequenceGrabber({kSequenceGrabberComponent, 0, kPlatformManufacturer});
  if (!gSeqGrabber_) {
    services_.log.write("OpenComponent() didn't work");
    return;
  }
  if (const OSStatus status = gSeqGrabber_->initialize(); status != noErr)
    return log("SGInitialize()", status);
  if (!initializeVideo() || !initializeSound()) return;
  if (const OSStatus status = gSeqGrabber_->startPreview(); status != noErr) log("SGStartPreview()", status);
}

// False: the build ends here. Without a camera it goes on.
bool Recorder::initializeVideo() {
  if (gSeqGrabber_->newChannel(kVideoMediaType, gVideoChannel_) != noErr) {
    gVideoChannel_ = nullptr;
    return true;
  }
  if (const OSStatus status = gVideoChannel_->srcVideoBounds(gActiveVideoRect_); status != noErr)
    return log("SGGetSrcVideoBounds()", status), false;
  const QDRect bounds = boundsOfSize(videoSize());
  if (const OSStatus status = gVideoChannel_->setBounds(bounds); status != noErr)
    return log("SGSetChannelBounds()", status), false;
  if (const OSStatus status = gVideoChannel_->setUsage(kVideoUsage); status != noErr)
    return log("SGSetChannelUsage() for video", status), false;
  return makeWorld(bounds);
}

bool Recorder::makeWorld(const QDRect& bounds) {
  // The old one goes first; nobody may draw into it by then.
  if (gWorld_) gSeqGrabber_->setGWorld(nullptr);
  gWorld_.reset();
  if (const OSStatus status = services_.captureKit.newGWorld(gWorld_, k32ARGBPixelFormat, bounds);
      status != noErr)
    return log("QTNewGWorld()", status), false;
  if (!gWorld_->lockPixels()) {
    services_.log.write("Could not lock pixels.");
    return false;
  }
  if (const OSStatus status = gSeqGrabber_->setGWorld(gWorld_.get()); status != noErr)
    return log("SGSetGWorld()", status), false;
  return true;
}

bool Recorder::initializeSound() {
  if (gSeqGrabber_->newChannel(kAudioMediaType, gSoundChannel_) != noErr) {
    gSoundChannel_ = nullptr;
    return true;
  }
  if (const OSStatus status = gSoundChannel_->setUsage(kSoundUsage); status != noErr)
    return log("SGSetChannelUsage() for sound", status), false;
  // What a device cannot take of these it leaves as it is.
  AudioStreamBasicDescription format;
  format.sampleRate = kSoundRate;
  format.formatID = kAACFormat;
  format.channelsPerFrame = kSoundChannels;
  gSoundChannel_->setComponentProperty(kSoundChannelPropertyClass, kStreamFormatProperty,
                                       std::as_bytes(std::span(&format, 1)));
  const float gain = 0;
  gSoundChannel_->setComponentProperty(kRecordDevicePropertyClass, kMasterGainProperty,
                                       std::as_bytes(std::span(&gain, 1)));
  gSoundChannel_->setAudioUnitProperty(kSampleRateProperty, kOutputScope, 0,
                                       std::as_bytes(std::span(&kDeviceRate, 1)));
  return true;
}

void Recorder::applyVideoSettings() {
  recordVideo_ = hasVideo();
  videoItem.setOn(recordVideo_);
  if (!hasVideo()) return;
  gVideoChannel_->setVideoCompressorType(kMPEG4VideoCodec);
  gVideoChannel_->setFrameRate(kFrameRate);
  gVideoChannel_->setVideoCompressor(0, 0, kNormalQuality, 0, 0);
  gVideoChannel_->setRequestedDataRate(kBytesPerSecond);
}

void Recorder::setFilename(std::string_view filename) {
  filename_ = filename;
  endTrouble(Cause::Name);
}

void Recorder::tellTrouble(Cause cause, std::string text) {
  troubleCause_ = cause;
  trouble_ = std::move(text);
}

void Recorder::endTrouble(Cause cause) {
  if (troubleCause_ == cause) tellTrouble(Cause::None, "");
}

void Recorder::unsetup() {
  if (!isSetUp_) return;
  isSetUp_ = false;
  if (timer_) timer_->invalidate();
  timer_.reset();
  gCurrentlyRecording_ = false;
  gVideoChannel_ = nullptr;
  gSoundChannel_ = nullptr;
  gSeqGrabber_.reset();
  gWorld_.reset();
  services_.captureKit.exitMovies();
}

void Recorder::cleanup() {
  recordButton.setImage("RecordButton");
  closeButton.setEnabled(true);
  services_.application.endSheet(window_);
  unsetup();
}

Size Recorder::videoSize() const {
  return {static_cast<double>(gActiveVideoRect_.width()), static_cast<double>(gActiveVideoRect_.height())};
}

void Recorder::setVideoSize(Size size) {
  if (!hasVideo()) return;
  gSeqGrabber_->pause(true);
  // A recording that goes on stands still as well: that has to be said.
  if (!takeBounds(boundsOfSize(size)))
    return tellTrouble(Cause::Size,
                       localized("Recording", "The picture cannot have this size. Choose another one."));
  endTrouble(Cause::Size);
  gSeqGrabber_->pause(false);
}

bool Recorder::takeBounds(const QDRect& bounds) {
  if (const OSStatus status = gVideoChannel_->setBounds(bounds); status != noErr)
    return log("SGSetChannelBounds()", status), false;
  return makeWorld(bounds);
}

void Recorder::goToScale(double scale) {
  if (!hasVideo()) return;
  const Size native = videoSize();
  takeSize({native.width * scale, native.height * scale});
}

void Recorder::takeSize(Size size) {
  setVideoSize(size);
  setImage(nullptr);
  _updateWindowSize(size);
}

void Recorder::showSizePanel() {
  if (!hasVideo()) return;
  sizePanel.center();
  hSizeField.setStringValue(std::to_string(gActiveVideoRect_.height()));
  wSizeField.setStringValue(std::to_string(gActiveVideoRect_.width()));
  services_.application.runModalForWindow(sizePanel);
}

void Recorder::sizePanelOKButtonPressed() {
  services_.application.stopModal();
  sizePanel.orderOut();
  const auto number = [](TextField& field) {
    return static_cast<double>(Value(field.stringValue()).integerValue());
  };
  takeSize({number(wSizeField), number(hSizeField)});
}

void Recorder::sizePanelCancelButtonPressed() {
  services_.application.stopModal();
  sizePanel.orderOut();
}

// Resizes the sheet around the view, keeping its centre to the pixel.
void Recorder::_updateWindowSize(Size size) {
  const double extra = std::trunc(window_.contentView().frame().size.height - frame().size.height);
  Size content{size.width, extra + size.height};
  const Size least = window_.contentMinSize();
  if (least.width > content.width || least.height > content.height) content = least;
  const Rect old = window_.frame();
  const Size newSize = window_.frameSizeForContentSize(content);
  const double dx = std::trunc((std::trunc(old.size.width) - newSize.width) / 2);
  const double dy = std::trunc((std::trunc(old.size.height) - newSize.height) / 2);
  window_.setFrame({{std::trunc(old.origin.x + dx), std::trunc(old.origin.y + dy)}, newSize});
}

void Recorder::setRecordVideo(MenuItem& sender) {
  sender.setOn(!sender.isOn());
  recordVideo_ = sender.isOn();
}

void Recorder::setRecordSound(MenuItem& sender) {
  sender.setOn(!sender.isOn());
  recordSound_ = sender.isOn();
}

void Recorder::toggleOption(MenuItem& sender) {
  sender.setOn(!sender.isOn());
  switch (sender.tag()) {
    case 0:
      lowLatencyCapture_ = !lowLatencyCapture_;
      break;
    case 1:
      useTimeBase_ = !useTimeBase_;
      break;
    case 2:
      useSoundClock_ = !useSoundClock_;
      break;
    default:
      break;
  }
}

void Recorder::showVideoSettings() {
  showSettings(gVideoChannel_);
  // Another camera has a size of its own.
  if (hasVideo()) gVideoChannel_->srcVideoBounds(gActiveVideoRect_);
}

void Recorder::showSoundSettings() {
  showSettings(gSoundChannel_);
}

void Recorder::showSettings(SGChannel* channel) {
  if (!gSeqGrabber_ || channel == nullptr) return;
  gSeqGrabber_->pause(true);
  const OSStatus status = gSeqGrabber_->settingsDialog(*channel, &window_);
  // Quitting in the middle of the dialogue closes the grabber.
  if (!gSeqGrabber_) return;
  gSeqGrabber_->pause(false);
  if (status == noErr) endTrouble(Cause::Device);
}

bool Recorder::validateMenuItem(const MenuItem& item) const {
  const std::string& action = item.action();
  for (const char* ofVideo : {"showVideoSettings:", "toggleOption:", "goFullSize:", "goHalfSize:",
                              "goQuarterSize:", "showSizePanel:", "setRecordVideo:"})
    if (action == ofVideo) return hasVideo();
  if (action == "showSoundSettings:" || action == "setRecordSound:") return hasSound();
  return hasVideo() || hasSound();
}

void Recorder::_runPanel() {
  if (services_.application.runAlertPanel(
          localized("Recording", "Built on FFmpeg"),
          localized("Recording",
                    "Clipwave’s recorder captures, compresses and writes movies with the libraries of the "
                    "FFmpeg project, "
                    "which come under the GNU Lesser General Public License."),
          "OK", "More Info") == Alert::Answer::Alternate)
    services_.workspace.openURL(kCreditPage);
}

float Recorder::frameRate() const {
  Fixed rate = 0;
  if (!hasVideo() || gVideoChannel_->frameRate(rate) != noErr) return 0;
  return static_cast<float>(fixedToDouble(rate));
}

float Recorder::soundInputRate() const {
  UnsignedFixed rate = 0;
  if (!hasSound() || gSoundChannel_->soundInputRate(rate) != noErr) return 0;
  return static_cast<float>(fixedToDouble(rate));
}

float Recorder::volume() const {
  std::int16_t volume = 0;
  if (hasSound()) gSoundChannel_->volume(volume);
  return volume;
}

void Recorder::setVolume(float volume) {
  if (hasSound()) setChannelVolume(*gSoundChannel_, toShort(volume));
}

double Recorder::recordedTime() const {
  return gSeqGrabber_ ? gSeqGrabber_->recordedTime() : 0;
}

float Recorder::soundLevel() const {
  return hasSound() ? gSoundChannel_->level() : 0;
}

std::shared_ptr<Movie> Recorder::lastRecordedMovie() const {
  return gSeqGrabber_ ? gSeqGrabber_->movie() : nullptr;
}

}  // namespace clipwave
