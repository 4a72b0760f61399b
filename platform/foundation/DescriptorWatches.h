// The descriptors that a run loop watches: which of them are ready, and their calls. Shared by the run loops,
// this room's and the desktop's.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/foundation/RunLoop.h"

namespace clipwave {

// Asks by poll(), so that a run loop that waits by other means answers alike. Main thread only.
class DescriptorWatches {
 public:
  DescriptorWatches();
  ~DescriptorWatches();
  DescriptorWatches(const DescriptorWatches&) = delete;
  DescriptorWatches& operator=(const DescriptorWatches&) = delete;

  // As in RunLoop.
  std::unique_ptr<DescriptorWatch> watch(int descriptor, RunLoop::Readiness readiness,
                                         RunLoop::Function function, RunLoop::Delivery delivery);
  // Waits up to `longest` until a descriptor that is delivered in `mode` is ready, or `wakeUp` (none: -1) is
  // readable. Answers whether one is.
  bool waitForReady(Seconds longest, RunLoop::Mode mode, int wakeUp = -1);
  // To be called when a turn begins: an outer turn, inside of which it runs, then drops what it knows.
  void beginTurn() { ++turn_; }
  // Calls the functions of those that are ready and delivered in `mode`. Answers whether anything was called.
  bool callReady(RunLoop::Mode mode);

 private:
  struct Watched;
  class Watch;
  struct Polled;

  Polled askedInMode(RunLoop::Mode mode);

  std::vector<std::shared_ptr<Watched>> watched_;
  std::uint64_t turn_ = 0;
};

}  // namespace clipwave
