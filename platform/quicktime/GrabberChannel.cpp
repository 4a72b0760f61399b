#include "platform/quicktime/GrabberChannel.h"

#include <algorithm>

#include "platform/foundation/Localization.h"
#include "platform/quicktime/CaptureTime.h"

namespace clipwave {
namespace {

constexpr double kLongestOpening = 3;  // seconds, for all devices that are tried at once
constexpr std::int32_t kAllUsages = seqGrabPreview | seqGrabRecord | seqGrabPlayDuringRecord |
                                    seqGrabLowLatencyCapture | seqGrabAlwaysUseTimeBase;

}  // namespace

GrabberChannel::GrabberChannel(OSType mediaType, ChannelServices services)
    : mediaType_(mediaType), services_(std::move(services)) {}

OSStatus GrabberChannel::setUsage(std::int32_t usage) {
  if ((usage & ~kAllUsages) != 0) return paramErr;
  usage_ = usage;
  return noErr;
}

OSStatus GrabberChannel::usage(std::int32_t& usage) {
  usage = usage_;
  return noErr;
}

OSStatus GrabberChannel::setOptions(const CaptureOptions& options) {
  options_ = options;
  return noErr;
}

CaptureOptions GrabberChannel::options() const {
  return {options_.lowLatency || uses(seqGrabLowLatencyCapture),
          options_.deviceTimeStamps || uses(seqGrabAlwaysUseTimeBase)};
}

const char* GrabberChannel::choiceKey() const {
  return mediaType_ == kVideoMediaType ? "captureDevice" : "captureSoundDevice";
}

bool GrabberChannel::open(bool usesPattern) {
  openUntil_ = captureTime() + kLongestOpening;
  const std::string chosen = services_.defaults.string(choiceKey());
  const std::vector<CaptureDevice> found = devices();
  const std::string_view wanted =
      chosen.empty() && usesPattern ? kTestPatternDevice : std::string_view(chosen);
  const auto named = std::ranges::find(found, wanted, &CaptureDevice::identifier);
  if (named != found.end() && tryDevice(*named)) return true;
  return std::ranges::any_of(found, [&](const CaptureDevice& device) {
    return device.identifier != kTestPatternDevice && device.identifier != wanted && tryDevice(device);
  });
}

bool GrabberChannel::tryDevice(const CaptureDevice& device) {
  const double seconds = openUntil_ - captureTime();
  if (seconds <= 0) return false;
  const std::optional<CaptureRequest> request =
      services_.devices.request(mediaType_, device.identifier, options().lowLatency);
  if (!request) return false;
  std::unique_ptr<CaptureSource> source = CaptureSource::open(*request, seconds);
  if (!source) return false;
  source_ = std::move(source);
  isLowLatency_ = options().lowLatency;
  device_ = device;
  hasNoticedEnd_ = false;
  sourceHasChanged();
  return true;
}

bool GrabberChannel::refresh() {
  // A camera has no buffers to choose from.
  const bool isAsWanted = mediaType_ == kVideoMediaType || options().lowLatency == isLowLatency_;
  if (!source_->hasEnded() && isAsWanted) return true;
  openUntil_ = captureTime() + kLongestOpening;
  return tryDevice(device_) || !source_->hasEnded();
}

Result<void> GrabberChannel::setDevice(std::string_view identifier) {
  const std::vector<CaptureDevice> found = devices();
  const auto device = std::ranges::find(found, identifier, &CaptureDevice::identifier);
  if (services_.isRecording())
    return cocoaError(kFileReadUnknownError,
                      localized("Recording", "The device cannot be changed during a recording."));
  if (device == found.end())
    return cocoaError(kFileReadNoSuchFileError,
                      localized("Recording", "The device is not connected any more."));
  openUntil_ = captureTime() + kLongestOpening;
  if (*device == device_ && !source_->hasEnded()) return {};
  if (!tryDevice(*device))
    return cocoaError(kFileReadUnknownError,
                      filledIn(localized("Recording", "“%1” cannot be used at the moment."), {device->name}));
  return services_.defaults.setValue(choiceKey(), std::string(identifier));
}

bool GrabberChannel::noticeEnd() {
  if (hasNoticedEnd_ || !source_->hasEnded()) return false;
  return hasNoticedEnd_ = true;
}

}  // namespace clipwave
