// Plays sound on the system's default device, and tells how much of it has been heard. Internal to this room.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

namespace clipwave {

// Samples are 16 bits, left and right in turn, kSoundRate of each in a second. One thread uses it; the
// device's own thread takes the samples.
class SoundOutput {
 public:
  // None without a device. Silent and at a standstill until it is let run. May take a moment.
  static std::unique_ptr<SoundOutput> open();
  ~SoundOutput();
  SoundOutput(const SoundOutput&) = delete;
  SoundOutput& operator=(const SoundOutput&) = delete;

  void append(std::span<const std::int16_t> samples);
  void appendSilence(double seconds);
  // Nothing more is to come: silence then counts as heard, so that time goes on.
  void finish();
  // Forgets what was appended; counting begins anew.
  void clear();
  void setRunning(bool running);
  void setVolume(float volume);  // 0 to 1, at once

  double waitingSeconds() const;  // appended, not yet taken by the device
  double heardSeconds() const;    // since the last clear(), from what is known of the device
 private:
  SoundOutput() = default;
  static void takeSamples(void* self, std::uint8_t* bytes, int count);
  void fill(std::span<std::int16_t> target);

  std::uint32_t device_ = 0;
  mutable std::mutex mutex_;  // guards all that follows
  std::vector<std::int16_t> samples_;
  std::size_t taken_ = 0;       // of samples_
  std::int64_t given_ = 0;      // to the device since clear(), in samples of one channel
  std::int64_t lastGiven_ = 0;  // the part of it that went last, and when
  std::chrono::steady_clock::time_point lastTime_;
  bool finished_ = false;
  float volume_ = 1;
};

}  // namespace clipwave
