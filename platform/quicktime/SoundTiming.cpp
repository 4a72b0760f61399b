#include "platform/quicktime/SoundTiming.h"

#include <algorithm>
#include <cmath>

namespace clipwave {
namespace {

constexpr double kLookAhead = 0.3;      // seconds of arrivals that a packet is judged by
constexpr double kLargestError = 0.04;  // seconds that are corrected without a jump
// At the end of a recording little is known of the last packets; only this much is a loss then.
constexpr double kSureLoss = 0.25;
// An error is worn off in ten seconds, by at most one part in two thousand: nobody hears that.
constexpr double kCorrectionSeconds = 10;
constexpr int kLargestStretch = SoundTiming::kStretchInterval / 2000;
constexpr double kUnnoticed = 0.0005;  // seconds
constexpr double kOffsetSmoothing = 0.02;

}  // namespace

SoundTiming::SoundTiming(int inputRate, int outputRate, bool isMaster)
    : inputRate_(inputRate), outputRate_(outputRate), isMaster_(isMaster) {}

void SoundTiming::begin(double start) {
  // A master's time has gone its own way since the last beginning, and goes on from there.
  if (isMaster_ && position_ > 0) start = soundOffset_ + (start - begun_);
  begun_ += start - start_;
  start_ = soundOffset_ = start;
  isAligned_ = false;
}

void SoundTiming::add(double time, std::int64_t samples) {
  arrived_ += samples;
  packets_.push_back({time, samples, time - static_cast<double>(arrived_) / inputRate_});
}

std::optional<SoundTiming::Step> SoundTiming::next(bool flush) {
  if (packets_.empty()) return {};
  if (!flush && packets_.back().time - packets_.front().time < kLookAhead) return {};
  lateness_ = latenessOfFirst(flush);
  const Packet packet = packets_.front();
  packets_.pop_front();
  // Where the packet's first sample should stand, against where it would.
  const double begins = static_cast<double>(taken_) / inputRate_ + lateness_;
  taken_ += packet.samples;
  const double error = (begins - start_) - static_cast<double>(position_) / outputRate_;
  Step step;
  const bool isJump = !isAligned_ || (!isMaster_ && std::abs(error) > kLargestError);
  if (isJump) {
    if (error > 0)
      step.silence = std::llround(error * outputRate_);
    else
      step.skipped = std::min<std::int64_t>(std::llround(-error * inputRate_), packet.samples);
    isAligned_ = step.skipped < packet.samples;
  } else if (isMaster_) {
    const double offset = begins - static_cast<double>(position_) / outputRate_;
    const bool isLoss = std::abs(offset - soundOffset_) > kLargestError;
    soundOffset_ += (offset - soundOffset_) * (isLoss ? 1 : kOffsetSmoothing);
  } else {
    step.stretch = stretchFor(error);
  }
  return step;
}

// The least of what arrived soon after it: a packet that was held up is followed by ones that were less so.
double SoundTiming::latenessOfFirst(bool flush) const {
  const Packet& first = packets_.front();
  double least = first.lateness;
  for (const Packet& packet : packets_) {
    if (packet.time - first.time > kLookAhead) break;
    least = std::min(least, packet.lateness);
  }
  const bool isWellKnown = packets_.back().time - first.time >= kLookAhead;
  if (flush && isAligned_ && !isWellKnown && least - lateness_ < kSureLoss) return std::min(least, lateness_);
  return least;
}

std::optional<int> SoundTiming::stretchFor(double error) {
  errorSum_ += error;
  ++errorCount_;
  if (position_ - stretchedAt_ < kStretchInterval) return {};
  const double mean = errorSum_ / errorCount_;
  stretchedAt_ = position_;
  errorSum_ = 0;
  errorCount_ = 0;
  const int wanted = std::abs(mean) < kUnnoticed
                         ? 0
                         : static_cast<int>(std::lround(mean / kCorrectionSeconds * kStretchInterval));
  const int stretch = std::clamp(wanted, -kLargestStretch, kLargestStretch);
  // A stretch ends with its interval and is asked for again.
  if (stretch == 0 && stretch_ == 0) return {};
  return stretch_ = stretch;
}

}  // namespace clipwave
