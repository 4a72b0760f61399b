// The picture's and the sound's channel of a grabber. Internal to this room.
#pragma once

#include "platform/quicktime/CaptureClocks.h"
#include "platform/quicktime/GrabberChannel.h"
#include "platform/quicktime/MovieWriter.h"
#include "platform/quicktime/PreviewPainter.h"

namespace clipwave {

class VideoChannel final : public GrabberChannel {
 public:
  VideoChannel(ChannelServices services, ClockComponent& clock);

  OSStatus srcVideoBounds(QDRect& bounds) override;
  OSStatus setBounds(const QDRect& bounds) override;
  OSStatus setVideoCompressorType(OSType compressor) override;
  OSStatus setVideoCompressor(int depth, OSType compressor, int spatialQuality, int temporalQuality,
                              int keyFrameRate) override;
  OSStatus setFrameRate(Fixed framesPerSecond) override;
  OSStatus frameRate(Fixed& framesPerSecond) override;
  OSStatus setRequestedDataRate(std::int32_t bytesPerSecond) override;
  OSStatus timeBase(TimeBase*& timeBase) override;

  CaptureSource::Delivery collect() override;
  // What the writer is to be asked for.
  MovieWriter::Picture recordedPicture() const;
  // Draws the newest picture; only one that was not drawn yet, unless `again`.
  void draw(GWorld& world, bool again);

 private:
  void sourceHasChanged() override;
  Fixed rateInUse() const;

  ClockedTimeBase timeBase_;
  QDRect bounds_;
  bool hasBounds_ = false;
  Fixed frameRate_ = 0;  // 0: as the device delivers
  std::int32_t dataRate_ = MovieWriter::Picture{}.bytesPerSecond;
  int keyFrameRate_ = 0;
  MovieFrame newest_;
  bool isDrawn_ = false;
  PreviewPainter painter_;
};

class SoundChannel final : public GrabberChannel {
 public:
  explicit SoundChannel(ChannelServices services);

  OSStatus soundInputRate(UnsignedFixed& samplesPerSecond) override;
  OSStatus volume(std::int16_t& volume) override;
  OSStatus setComponentProperty(OSType propertyClass, OSType property,
                                std::span<const std::byte> value) override;
  float level() const override;
  OSStatus timeBase(TimeBase*& timeBase) override;

  CaptureSource::Delivery collect() override;
  DescribedClock& clock() { return clock_; }

 private:
  OSStatus setMasterGain(std::span<const std::byte> value);

  DescribedClock clock_;
  ClockedTimeBase timeBase_;
  std::int16_t volume_ = kFullVolume;
  float level_ = 0;
  double levelAt_ = 0;
};

}  // namespace clipwave
