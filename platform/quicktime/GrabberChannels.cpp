#include "platform/quicktime/GrabberChannels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/quicktime/CaptureTime.h"
#include "platform/quicktime/SoundTrack.h"

extern "C" {
#include <libavutil/frame.h>
}

namespace clipwave {
namespace {

constexpr double kUsualRate = 30;
constexpr Fixed kFastest = 120 * 65536;
constexpr int kLargestQuality = 1023;
constexpr double kLevelHalfLife = 0.2;  // seconds
constexpr double kDecibelsPerDecade = 20;

bool isCompressor(OSType compressor) {
  return compressor == 0 || compressor == kMPEG4VideoCodec;
}

bool isQuality(int quality) {
  return quality >= 0 && quality <= kLargestQuality;
}

Fixed toFixed(double number) {
  return static_cast<Fixed>(std::lround(std::min(number, 32767.0) * 65536));
}

template <class T>
T valueIn(std::span<const std::byte> bytes) {
  T value;
  std::memcpy(&value, bytes.data(), sizeof value);
  return value;
}

}  // namespace

VideoChannel::VideoChannel(ChannelServices services, ClockComponent& clock)
    : GrabberChannel(kVideoMediaType, std::move(services)), timeBase_(clock) {}

void VideoChannel::sourceHasChanged() {
  newest_.reset();
  if (!hasBounds_) srcVideoBounds(bounds_);
}

OSStatus VideoChannel::srcVideoBounds(QDRect& bounds) {
  const CaptureFacts& facts = source().facts();
  bounds = {0, 0, static_cast<std::int16_t>(std::min(facts.height, kLargestPictureMeasure)),
            static_cast<std::int16_t>(std::min(facts.width, kLargestPictureMeasure))};
  return noErr;
}

OSStatus VideoChannel::setBounds(const QDRect& bounds) {
  if (!isPictureMeasure(bounds.width()) || !isPictureMeasure(bounds.height())) return paramErr;
  bounds_ = bounds;
  hasBounds_ = true;
  isDrawn_ = false;
  return noErr;
}

OSStatus VideoChannel::setVideoCompressorType(OSType compressor) {
  return isCompressor(compressor) ? noErr : paramErr;
}

OSStatus VideoChannel::setVideoCompressor(int depth, OSType compressor, int spatialQuality,
                                          int temporalQuality, int keyFrameRate) {
  if (depth < 0 || !isCompressor(compressor) || !isQuality(spatialQuality) || !isQuality(temporalQuality) ||
      keyFrameRate < 0)
    return paramErr;
  keyFrameRate_ = keyFrameRate;
  return noErr;
}

OSStatus VideoChannel::setFrameRate(Fixed framesPerSecond) {
  if (framesPerSecond < 0 || framesPerSecond > kFastest) return paramErr;
  frameRate_ = framesPerSecond;
  return noErr;
}

OSStatus VideoChannel::frameRate(Fixed& framesPerSecond) {
  framesPerSecond = rateInUse();
  return noErr;
}

Fixed VideoChannel::rateInUse() const {
  const double rate = source().facts().framesPerSecond;
  return frameRate_ > 0 ? frameRate_ : toFixed(rate > 0 ? std::min(rate, kUsualRate) : kUsualRate);
}

OSStatus VideoChannel::setRequestedDataRate(std::int32_t bytesPerSecond) {
  if (bytesPerSecond <= 0) return paramErr;
  dataRate_ = bytesPerSecond;
  return noErr;
}

OSStatus VideoChannel::timeBase(TimeBase*& timeBase) {
  timeBase = &timeBase_;
  return noErr;
}

MovieWriter::Picture VideoChannel::recordedPicture() const {
  return {bounds_.width(), bounds_.height(), fixedToDouble(rateInUse()), dataRate_, keyFrameRate_};
}

CaptureSource::Delivery VideoChannel::collect() {
  CaptureSource::Delivery delivery = source().take();
  if (!delivery.pictures.empty()) {
    newest_.reset(av_frame_clone(delivery.pictures.back().frame.get()));
    isDrawn_ = false;
  }
  return delivery;
}

void VideoChannel::draw(GWorld& world, bool again) {
  if (!newest_ || (isDrawn_ && !again)) return;
  painter_.paint(*newest_, bounds_, world);
  isDrawn_ = true;
}

SoundChannel::SoundChannel(ChannelServices services)
    : GrabberChannel(kAudioMediaType, std::move(services)),
      clock_(kSoundClock, [this] { return !source().hasEnded(); }),
      timeBase_(clock_) {}

OSStatus SoundChannel::soundInputRate(UnsignedFixed& samplesPerSecond) {
  // The fastest devices have rates that the number has no room for.
  constexpr UnsignedFixed kMostSamples = 0xFFFF;
  const auto rate = static_cast<UnsignedFixed>(source().facts().sampleRate);
  samplesPerSecond = std::min(rate, kMostSamples) << 16;
  return noErr;
}

OSStatus SoundChannel::volume(std::int16_t& volume) {
  volume = volume_;
  return noErr;
}

// One form of sound is what the movie takes.
OSStatus SoundChannel::setComponentProperty(OSType propertyClass, OSType property,
                                            std::span<const std::byte> value) {
  if (propertyClass == kRecordDevicePropertyClass && property == kMasterGainProperty)
    return setMasterGain(value);
  if (propertyClass != kSoundChannelPropertyClass || property != kStreamFormatProperty ||
      value.size() != sizeof(AudioStreamBasicDescription))
    return paramErr;
  const auto format = valueIn<AudioStreamBasicDescription>(value);
  const bool isOurs = format.formatID == kAACFormat && format.channelsPerFrame == SoundTrack::kChannels &&
                      format.sampleRate == SoundTrack::kRate;
  return isOurs ? noErr : paramErr;
}

OSStatus SoundChannel::setMasterGain(std::span<const std::byte> value) {
  double volume = 0;
  if (value.size() == sizeof(float))
    volume = kFullVolume * std::pow(10.0, valueIn<float>(value) / kDecibelsPerDecade);
  else if (value.size() == sizeof(std::int16_t))
    volume = valueIn<std::int16_t>(value);
  else
    return paramErr;
  if (std::isnan(volume)) return paramErr;
  volume_ = static_cast<std::int16_t>(std::lround(std::clamp<double>(volume, 0, kFullVolume)));
  return noErr;
}

OSStatus SoundChannel::timeBase(TimeBase*& timeBase) {
  timeBase = &timeBase_;
  return noErr;
}

float SoundChannel::level() const {
  return level_ * static_cast<float>(std::exp2((levelAt_ - captureTime()) / kLevelHalfLife));
}

CaptureSource::Delivery SoundChannel::collect() {
  CaptureSource::Delivery delivery = source().take();
  const float factor = static_cast<float>(volume_) / kFullVolume;
  float loudest = 0;
  for (CapturedSound& sound : delivery.sounds) {
    for (float& sample : sound.samples) {
      sample *= factor;
      loudest = std::max(loudest, std::abs(sample));
    }
  }
  if (loudest >= level()) {
    level_ = std::min(loudest, 1.0F);
    levelAt_ = captureTime();
  }
  return delivery;
}

}  // namespace clipwave
