// Keeps the samples of a sound device in step with the time that pictures are stamped with. Internal to this
// room.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>

namespace clipwave {

// Knows neither threads nor devices nor samples: it is told when how many arrived, and says what is to be
// done with them. A device's clock runs a little faster or slower than the system's; and samples arrive late,
// but never early, which is how a late arrival is told from samples that were lost: after a loss all that
// follows is late.
class SoundTiming {
 public:
  // `inputRate` and `outputRate` in samples a second. As the master, the sound is the time: it is taken as it
  // comes, and soundTime() says where in it a moment lies.
  SoundTiming(int inputRate, int outputRate, bool isMaster);

  // The first sample from now on stands exactly where its time is; `start` is the time of output sample 0.
  // Called before the first packet is taken out, and again after a pause, when all of before it have been.
  void begin(double start);

  // A packet of input samples has arrived; `time` is that of its end.
  void add(double time, std::int64_t samples);

  // What is to be done with the oldest packet.
  struct Step {
    std::int64_t silence = 0;  // output samples of it, in front of the packet
    std::int64_t skipped = 0;  // input samples cut off its beginning
    // Output samples more, or fewer, in each kStretchInterval from now on; nothing: as before.
    std::optional<int> stretch;
  };
  // None while too little is known of what came after it; with `flush` what is known has to do.
  std::optional<Step> next(bool flush);
  // So many output samples have been made: by silence, or of packets.
  void produced(std::int64_t samples) { position_ += samples; }

  // The sound's own time at a moment, both in seconds; where the sound is not the master, the moment's
  // distance from the start.
  double soundTime(double time) const { return time - soundOffset_; }

  static constexpr int kStretchInterval = 48'000;  // output samples

 private:
  struct Packet {
    double time = 0;
    std::int64_t samples = 0;
    double lateness = 0;  // its end's arrival, against the time that its samples make
  };
  double latenessOfFirst(bool flush) const;
  std::optional<int> stretchFor(double error);

  const int inputRate_;
  const int outputRate_;
  const bool isMaster_;
  double start_ = 0;
  double begun_ = 0;  // as it was given
  bool isAligned_ = false;
  std::deque<Packet> packets_;
  std::int64_t arrived_ = 0;   // input samples
  std::int64_t taken_ = 0;     // input samples of the packets that were taken out
  std::int64_t position_ = 0;  // output samples
  double lateness_ = 0;        // of the packet that was taken out last
  double soundOffset_ = 0;
  // Since the stretch was set last.
  std::int64_t stretchedAt_ = 0;
  double errorSum_ = 0;
  int errorCount_ = 0;
  int stretch_ = 0;
};

}  // namespace clipwave
