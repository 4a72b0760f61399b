#include "platform/foundation/RunLoop.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "platform/foundation/DescriptorWatches.h"
#include "platform/foundation/TimerQueue.h"

namespace clipwave {
namespace {

constexpr Seconds kForever{std::numeric_limits<double>::infinity()};

// Rouses a poll() from another thread.
class WakeUp {
 public:
  WakeUp() : descriptor_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
  ~WakeUp() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  WakeUp(const WakeUp&) = delete;
  WakeUp& operator=(const WakeUp&) = delete;

  int descriptor() const { return descriptor_; }
  void send() const { ::eventfd_write(descriptor_, 1); }
  void clear() const {
    eventfd_t count = 0;
    ::eventfd_read(descriptor_, &count);
  }

 private:
  int descriptor_;
};

class PollRunLoop final : public RunLoop {
 public:
  explicit PollRunLoop(Clock& clock) : clock_(clock), queue_(clock, [this] { wakeUp_.send(); }) {}

  const Clock& clock() const override { return clock_; }
  std::shared_ptr<Timer> scheduleTimer(Seconds interval, Function function) override {
    return queue_.scheduleTimer(interval, std::move(function));
  }
  std::shared_ptr<Timer> scheduleRepeatingTimer(Seconds interval, Function function) override {
    return queue_.scheduleRepeatingTimer(interval, std::move(function));
  }
  void performLater(Function function) override { queue_.performLater(std::move(function)); }
  void performFromAnyThread(Function function) override { queue_.performFromAnyThread(std::move(function)); }
  std::unique_ptr<DescriptorWatch> watch(int descriptor, Readiness readiness, Function function,
                                         Delivery delivery) override {
    return watches_.watch(descriptor, readiness, std::move(function), delivery);
  }

  void run() override;
  void stop() override { stopInnermost(Mode::Default); }
  void runModal() override;
  void stopModal() override { stopInnermost(Mode::Modal); }
  Mode mode() const override { return queue_.mode(); }
  bool runOnce(Seconds wait) override;
  bool hasPendingWork() const override { return queue_.hasDue(); }

 private:
  struct Run {
    Mode kind;
    bool stopped = false;
  };

  void runUntilStopped(Mode kind);
  void stopInnermost(Mode kind);
  void waitForWork(Seconds wait);
  bool isRoused(Seconds wait);

  Clock& clock_;
  WakeUp wakeUp_;
  TimerQueue queue_;
  DescriptorWatches watches_;
  std::vector<Run*> runs_;
};

void PollRunLoop::runUntilStopped(Mode kind) {
  Run current{kind};
  runs_.push_back(&current);
  while (!current.stopped) runOnce(kForever);
  runs_.pop_back();
}

void PollRunLoop::run() {
  runUntilStopped(Mode::Default);
}

void PollRunLoop::runModal() {
  queue_.enterModal();
  runUntilStopped(Mode::Modal);
  queue_.leaveModal();
}

void PollRunLoop::stopInnermost(Mode kind) {
  const auto innermost =
      std::find_if(runs_.rbegin(), runs_.rend(), [kind](const Run* run) { return run->kind == kind; });
  if (innermost != runs_.rend()) (*innermost)->stopped = true;
}

bool PollRunLoop::runOnce(Seconds wait) {
  watches_.beginTurn();
  if (wait > Seconds(0) && !queue_.hasDue()) waitForWork(wait);
  const bool called = queue_.runDue();
  return watches_.callReady(mode()) || called;
}

void PollRunLoop::waitForWork(Seconds wait) {
  const Seconds now = clock_.uptime();
  const auto next = queue_.nextFireTime();
  if (next) wait = std::min(wait, std::max(*next - now, Seconds(0)));
  if (clock_.runsByItself()) {
    isRoused(wait);
  } else if (!isRoused(next ? Seconds(0) : wait)) {
    // What is due stays comparable with the time of the clock: now + (next - now) need not be next.
    clock_.advanceTo(next && now + wait >= *next ? *next : now + wait);
  }
}

// Answers whether a descriptor is ready, or another thread has called.
bool PollRunLoop::isRoused(Seconds wait) {
  // Calls of other threads wait during a modal run; asking for them here would only keep it from sleeping.
  if (mode() == Mode::Modal) return watches_.waitForReady(wait, Mode::Modal);
  // What roused an earlier turn, and has been served since.
  wakeUp_.clear();
  return queue_.hasDue() || watches_.waitForReady(wait, Mode::Default, wakeUp_.descriptor());
}

}  // namespace

std::unique_ptr<RunLoop> makeRunLoop(Clock& clock) {
  return std::make_unique<PollRunLoop>(clock);
}

}  // namespace clipwave
