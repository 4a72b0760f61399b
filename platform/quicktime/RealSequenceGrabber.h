// The sequence grabber over the machine's devices. Internal to this room.
#pragma once

#include "platform/quicktime/GrabberChannels.h"
#include "platform/quicktime/RealCaptureKit.h"
#include "platform/quicktime/Recording.h"

namespace clipwave {

class RealSequenceGrabber final : public SequenceGrabber {
 public:
  // What the kit holds; all of it outlives the grabber, but for the settings dialogue, which may change.
  struct Kit {
    const CaptureServices& services;
    CaptureDevices& devices;
    SettingsDialog*& settingsDialog;
    ClockRegistry& clocks;
  };
  explicit RealSequenceGrabber(const Kit& kit);
  ~RealSequenceGrabber() override;

  OSStatus initialize() override { return noErr; }
  OSStatus newChannel(OSType mediaType, SGChannel*& channel) override;
  OSStatus setGWorld(GWorld* world) override;
  OSStatus startPreview() override;
  OSStatus pause(bool pause) override;
  OSStatus idle() override;
  OSStatus update() override;
  OSStatus stop() override;
  OSStatus setDataOutput(const FSSpec& file, std::int32_t flags) override;
  OSStatus startRecord() override;
  std::shared_ptr<Movie> movie() override;
  double recordedTime() const override { return recording_ ? recording_->recordedTime() : recordedTime_; }
  std::int64_t droppedPictures() const override {
    return recording_ ? recording_->droppedPictures() : dropped_;
  }
  std::string trouble() const override { return trouble_; }
  OSStatus timeBase(TimeBase*& timeBase) override;
  OSStatus settingsDialog(SGChannel& channel, Window* window) override;

 private:
  enum class State { Stopped, Previewing, Recording };

  template <class Channel>
  OSStatus addChannel(std::unique_ptr<Channel>& place, std::unique_ptr<Channel> made, bool usesPattern,
                      SGChannel*& channel);
  bool chosePattern() const;
  ChannelServices channelServices();
  bool records(const GrabberChannel* channel) const;
  OSStatus openRecording();
  void keepEverything(bool keeps);
  void takeOver();
  void draw(bool again);
  OSStatus checkDevices();
  OSStatus fail(OSStatus status, std::string trouble);
  OSStatus fail(const Error& error);

  const Kit kit_;
  ClockedTimeBase timeBase_;
  std::unique_ptr<VideoChannel> video_;
  std::unique_ptr<SoundChannel> sound_;
  GWorld* world_ = nullptr;
  State state_ = State::Stopped;
  bool isPaused_ = false;
  std::string path_;  // where the next recording goes
  std::unique_ptr<Recording> recording_;
  OSStatus failure_ = noErr;  // that ended the recording which goes on
  std::string recordedPath_;
  double recordedTime_ = 0;
  std::int64_t dropped_ = 0;
  std::string trouble_;
};

}  // namespace clipwave
