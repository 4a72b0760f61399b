#include "platform/quicktime/SoundTrack.h"

#include <algorithm>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

namespace clipwave {

SoundTrack::SoundTrack(int inputRate, bool isMaster)
    : inputRate_(inputRate), timing_(inputRate, kRate, isMaster) {
  if (inputRate_ != kRate) prepare();
}

void SoundTrack::add(std::vector<float> samples, double time) {
  timing_.add(time, static_cast<std::int64_t>(samples.size() / kChannels));
  packets_.push_back(std::move(samples));
}

std::vector<float> SoundTrack::take(bool flush) {
  std::vector<float> made;
  while (const std::optional<SoundTiming::Step> step = timing_.next(flush)) {
    const std::vector<float> packet = std::move(packets_.front());
    packets_.pop_front();
    if (step->silence > 0) {
      // What the resampler holds back belongs before the silence.
      convert(nullptr, 0, made);
      made.resize(made.size() + static_cast<std::size_t>(step->silence) * kChannels);
      timing_.produced(step->silence);
    }
    // Samples at the movie's own rate take the resampler only when they are to be stretched.
    if (step->stretch && (resampler_ || prepare()))
      swr_set_compensation(resampler_.get(), *step->stretch, SoundTiming::kStretchInterval);
    const auto skipped = static_cast<std::size_t>(step->skipped) * kChannels;
    if (skipped < packet.size())
      convert(packet.data() + skipped, (packet.size() - skipped) / kChannels, made);
  }
  if (flush) convert(nullptr, 0, made);
  return made;
}

bool SoundTrack::prepare() {
  AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
  SwrContext* made = nullptr;
  const bool isMade = swr_alloc_set_opts2(&made, &stereo, AV_SAMPLE_FMT_FLT, kRate, &stereo,
                                          AV_SAMPLE_FMT_FLT, inputRate_, 0, nullptr) >= 0;
  resampler_.reset(made);
  if (isMade && av_opt_set_int(made, "flags", SWR_FLAG_RESAMPLE, 0) >= 0 && swr_init(made) >= 0) return true;
  resampler_.reset();
  return false;
}

// Without samples it takes out what the resampler holds back, which then starts anew.
void SoundTrack::convert(const float* samples, std::size_t count, std::vector<float>& made) {
  const std::size_t before = made.size();
  if (!resampler_) {
    made.insert(made.end(), samples, samples + count * kChannels);
  } else {
    const int room = swr_get_out_samples(resampler_.get(), static_cast<int>(count));
    if (room <= 0) return;
    made.resize(before + static_cast<std::size_t>(room) * kChannels);
    auto* target = reinterpret_cast<std::uint8_t*>(made.data() + before);
    const auto* source = reinterpret_cast<const std::uint8_t*>(samples);
    const int converted = swr_convert(resampler_.get(), &target, room, samples == nullptr ? nullptr : &source,
                                      static_cast<int>(count));
    made.resize(before + static_cast<std::size_t>(std::max(converted, 0)) * kChannels);
    if (samples == nullptr) swr_init(resampler_.get());
  }
  timing_.produced(static_cast<std::int64_t>((made.size() - before) / kChannels));
}

}  // namespace clipwave
