#include "platform/quicktime/SoundTiming.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "platform/quicktime/SoundTrack.h"

namespace clipwave {
namespace {

constexpr int kRate = SoundTrack::kRate;
constexpr int kPacket = 960;
constexpr double kStart = 1000;

// A microphone by its own clock: what it captures arrives late by turns, in heaps after a stall, and half a
// second of it is lost.
struct Microphone {
  explicit Microphone(double drift) : seconds(kPacket / (kRate * (1 + drift))) {}
  void advance() {
    if (lossAt > 0 && time >= lossAt) {
      time += 0.5;
      lossAt = 0;
    }
    time += seconds;
    const double late = std::uniform_real_distribution(0.0, 0.015)(random);
    const double stall = std::fmod(time, 40) < 0.4 ? 0.4 - std::fmod(time, 40) : 0;
    arrival = std::max(arrival, kStart + time + std::max(late, stall));
  }
  const double seconds;
  double lossAt = 0;
  double time = 0;  // when the last packet's last sample was captured
  double arrival = 0;
  std::minstd_rand random{5};
};

TEST(SoundTiming, ADriftingMicrophoneStaysInStepForTenMinutes) {
  for (const double drift : {200e-6, -200e-6, 0.0}) {
    SoundTiming timing(kRate, kRate, false);
    timing.begin(kStart);
    Microphone microphone(drift);
    microphone.lossAt = 300;
    std::deque<double> ends;
    double position = 0, stretch = 0, worst = 0;
    std::int64_t silence = 0, told = 0;
    while (microphone.time < 600) {
      microphone.advance();
      timing.add(microphone.arrival, kPacket);
      ends.push_back(microphone.time);
      while (const auto step = timing.next(false)) {
        if (step->stretch) stretch = *step->stretch;
        EXPECT_LE(std::abs(stretch), kRate / 2000);  // nobody hears that
        silence += step->silence;
        position += static_cast<double>(step->silence + kPacket - step->skipped) +
                    stretch * kPacket / SoundTiming::kStretchInterval;
        timing.produced(std::llround(position) - told);
        told = std::llround(position);
        worst = std::max(worst, std::abs(position / kRate - ends.front()));
        ends.pop_front();
      }
    }
    EXPECT_LT(worst, 0.02) << drift;
    EXPECT_NEAR(static_cast<double>(silence) / kRate, 0.5, 0.03) << drift;  // and once only
  }
}

TEST(SoundTiming, AsTheMasterItLeavesItsSamplesAloneAndTellsTheTime) {
  SoundTiming timing(44'100, kRate, true);
  timing.begin(kStart);
  std::int64_t samples = 0, packets = 0, adjusted = 0;
  while (packets < 600 * 44'100 / kPacket) {
    timing.add(kStart + static_cast<double>(++packets) * kPacket / (44'100 * (1 + 200e-6)), kPacket);
    while (const auto step = timing.next(false)) {
      adjusted += step->silence + step->skipped;
      EXPECT_FALSE(step->stretch);
      samples += kPacket;
      timing.produced(samples * kRate / 44'100 - (samples - kPacket) * kRate / 44'100);
    }
    if (packets % 1000 == 0) {
      const double captured = static_cast<double>(packets) * kPacket / 44'100;
      EXPECT_NEAR(timing.soundTime(kStart + captured / (1 + 200e-6)), captured, 0.005);
    }
  }
  EXPECT_LT(adjusted, 10);  // where it begins
}

// A click in each second, by the system's clock.
TEST(SoundTrack, WhatWasHeardAtATimeStandsThere) {
  for (const int rate : {kRate, 44'100}) {
    SoundTrack track(rate, false);
    const double drift = 200e-6;
    const auto count = static_cast<std::int64_t>(90 * rate * (1 + drift));
    const std::int64_t lost = 50 * rate + rate / 4, found = lost + rate / 2;
    std::vector<float> packet, made;
    const auto takeOver = [&](bool flush) {
      const std::vector<float> more = track.take(flush);
      made.insert(made.end(), more.begin(), more.end());
    };
    // The recording begins a quarter of a second after the microphone.
    track.begin(kStart + 0.25);
    for (std::int64_t i = 0, second = -1; i < count; ++i) {
      const double time = static_cast<double>(i) / (rate * (1 + drift));
      const bool clicks = std::exchange(second, static_cast<std::int64_t>(time)) != second;
      if (i > lost && i < found) continue;
      packet.insert(packet.end(), 2, clicks ? 1.0F : 0.0F);
      if (packet.size() < 1000) continue;
      track.add(std::exchange(packet, {}), kStart + time);
      takeOver(false);
    }
    takeOver(true);
    std::vector<double> clicks;
    for (std::size_t i = 0; i < made.size(); i += 2) {
      const double time = static_cast<double>(i / 2) / kRate;
      if (made[i] > 0.2 && (clicks.empty() || time - clicks.back() > 0.1)) clicks.push_back(time);
    }
    ASSERT_EQ(clicks.size(), 89U) << rate;
    for (std::size_t i = 0; i < clicks.size(); ++i)
      EXPECT_NEAR(clicks[i], static_cast<double>(i) + 0.75, 0.005) << rate;
    EXPECT_NEAR(static_cast<double>(made.size()) / 2 / kRate, 89.75, 0.02);
  }
}

}  // namespace
}  // namespace clipwave
