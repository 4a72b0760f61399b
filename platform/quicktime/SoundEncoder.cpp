#include "platform/quicktime/SoundEncoder.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/quicktime/PictureEncoder.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/channel_layout.h>
}

namespace clipwave {
namespace {

constexpr int kMostChannels = 2;
constexpr std::int64_t kBitsPerSecond = 64'000;  // of each channel

// The encoder ends with an error at a number that is none.
float audible(float sample) {
  return std::isfinite(sample) ? std::clamp(sample, -1.0F, 1.0F) : 0.0F;
}

}  // namespace

SoundEncoder::~SoundEncoder() = default;

std::unique_ptr<SoundEncoder> SoundEncoder::open(const MovieWriter::Sound& wanted) {
  const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
  if (codec == nullptr || wanted.rate <= 0 || wanted.channels < 1 || wanted.channels > kMostChannels)
    return nullptr;
  std::unique_ptr<SoundEncoder> made(new SoundEncoder);
  made->encoder_.reset(avcodec_alloc_context3(codec));
  made->frame_.reset(av_frame_alloc());
  if (!made->encoder_ || !made->frame_) return nullptr;
  AVCodecContext& encoder = *made->encoder_;
  encoder.sample_rate = wanted.rate;
  encoder.sample_fmt = AV_SAMPLE_FMT_FLTP;
  av_channel_layout_default(&encoder.ch_layout, wanted.channels);
  encoder.time_base = {1, wanted.rate};
  encoder.bit_rate = kBitsPerSecond * wanted.channels;
  encoder.flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  if (avcodec_open2(&encoder, codec, nullptr) < 0) return nullptr;
  made->frame_->nb_samples = encoder.frame_size;
  made->frame_->format = encoder.sample_fmt;
  made->frame_->sample_rate = encoder.sample_rate;
  if (av_channel_layout_copy(&made->frame_->ch_layout, &encoder.ch_layout) < 0 ||
      av_frame_get_buffer(made->frame_.get(), 0) < 0)
    return nullptr;
  return made;
}

bool SoundEncoder::add(std::span<const float> samples, std::vector<MoviePacket>& packets) {
  const auto channels = static_cast<std::size_t>(encoder_->ch_layout.nb_channels);
  while (samples.size() >= channels) {
    const std::size_t room = static_cast<std::size_t>(encoder_->frame_size - filled_);
    const std::size_t count = std::min(samples.size() / channels, room);
    if (av_frame_make_writable(frame_.get()) < 0) return false;
    for (std::size_t channel = 0; channel < channels; ++channel) {
      float* target = reinterpret_cast<float*>(frame_->extended_data[channel]) + filled_;
      for (std::size_t i = 0; i < count; ++i) target[i] = audible(samples[i * channels + channel]);
    }
    samples = samples.subspan(count * channels);
    filled_ += static_cast<int>(count);
    added_ += static_cast<std::int64_t>(count);
    if (filled_ == encoder_->frame_size && !encodeFilled(packets)) return false;
  }
  return true;
}

bool SoundEncoder::encodeFilled(std::vector<MoviePacket>& packets) {
  frame_->pts = added_ - filled_;
  frame_->nb_samples = filled_;
  filled_ = 0;
  return encodeFrame(*encoder_, frame_.get(), packets);
}

bool SoundEncoder::finish(std::vector<MoviePacket>& packets) {
  return (filled_ == 0 || encodeFilled(packets)) && encodeFrame(*encoder_, nullptr, packets);
}

double SoundEncoder::seconds() const {
  return static_cast<double>(added_) / encoder_->sample_rate;
}

}  // namespace clipwave
