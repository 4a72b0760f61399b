// Turns what a sound device delivers into the samples that a movie takes. Internal to this room.
#pragma once

#include <deque>
#include <vector>

#include "platform/quicktime/CaptureInput.h"
#include "platform/quicktime/SoundTiming.h"

namespace clipwave {

// Left and right in turn, kRate of each in a second, without a gap from the start on.
class SoundTrack {
 public:
  static constexpr int kRate = 48'000;
  static constexpr std::size_t kChannels = 2;

  SoundTrack(int inputRate, bool isMaster);

  // See SoundTiming.
  void begin(double start) { timing_.begin(start); }
  double soundTime(double time) const { return timing_.soundTime(time); }

  // `time` is that of the last sample.
  void add(std::vector<float> samples, double time);
  // What is ready; with `flush` all that is left, and the device's time is broken off.
  std::vector<float> take(bool flush);

 private:
  bool prepare();
  void convert(const float* samples, std::size_t count, std::vector<float>& made);

  const int inputRate_;
  SoundTiming timing_;
  std::deque<std::vector<float>> packets_;
  std::unique_ptr<SwrContext, FreeLibraryObject> resampler_;  // none: samples pass as they are
};

}  // namespace clipwave
