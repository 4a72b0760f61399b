// What a grabber's two channels have in common: a device, and what it is used for. Internal to this room.
#pragma once

#include <functional>

#include "platform/foundation/UserDefaultsController.h"
#include "platform/quicktime/CaptureDevices.h"
#include "platform/quicktime/CaptureSource.h"
#include "platform/quicktime/SequenceGrabber.h"

namespace clipwave {

struct ChannelServices {
  CaptureDevices& devices;
  UserDefaultsController& defaults;
  std::function<bool()> isRecording;
};

class GrabberChannel : public SGChannel {
 public:
  OSType mediaType() const final { return mediaType_; }
  OSStatus setUsage(std::int32_t usage) override;
  OSStatus usage(std::int32_t& usage) override;
  OSStatus setOptions(const CaptureOptions& options) override;

  // What the channels of the other kind do.
  OSStatus srcVideoBounds(QDRect&) override { return paramErr; }
  OSStatus setBounds(const QDRect&) override { return paramErr; }
  OSStatus setVideoCompressorType(OSType) override { return paramErr; }
  OSStatus setVideoCompressor(int, OSType, int, int, int) override { return paramErr; }
  OSStatus setFrameRate(Fixed) override { return paramErr; }
  OSStatus frameRate(Fixed&) override { return paramErr; }
  OSStatus setRequestedDataRate(std::int32_t) override { return paramErr; }
  OSStatus soundInputRate(UnsignedFixed&) override { return paramErr; }
  OSStatus volume(std::int16_t&) override { return paramErr; }
  OSStatus setComponentProperty(OSType, OSType, std::span<const std::byte>) override { return paramErr; }
  OSStatus setAudioUnitProperty(std::uint32_t, std::uint32_t, std::uint32_t,
                                std::span<const std::byte>) override {
    return paramErr;
  }
  float level() const override { return 0; }

  std::vector<CaptureDevice> devices() final { return services_.devices.list(mediaType_); }
  CaptureDevice device() const final { return device_; }
  Result<void> setDevice(std::string_view identifier) final;

  // Opens the device that the user chose, else the first one that works; with `usesPattern` and no choice,
  // the test pattern.
  bool open(bool usesPattern);
  // Opens the device anew where it is gone, or where the options ask for something else by now.
  bool refresh();
  bool uses(ChannelUsage usage) const { return (usage_ & usage) != 0; }
  CaptureOptions options() const;
  CaptureSource& source() { return *source_; }
  const CaptureSource& source() const { return *source_; }
  // Takes over what has come.
  virtual CaptureSource::Delivery collect() = 0;
  // True once for a device that is gone.
  bool noticeEnd();

 protected:
  GrabberChannel(OSType mediaType, ChannelServices services);
  // Called with each new source, before anything is taken from it.
  virtual void sourceHasChanged() {}

 private:
  bool tryDevice(const CaptureDevice& device);
  const char* choiceKey() const;

  const OSType mediaType_;
  const ChannelServices services_;
  std::int32_t usage_ = 0;
  CaptureOptions options_;
  CaptureDevice device_;
  std::unique_ptr<CaptureSource> source_;  // never null once open() has succeeded
  bool isLowLatency_ = false;              // as it was opened
  double openUntil_ = 0;
  bool hasNoticedEnd_ = false;
};

}  // namespace clipwave
