#include "platform/foundation/RunLoop.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>
#include <vector>

#include "platform/foundation/TimerQueue.h"

namespace clipwave {
namespace {

constexpr Seconds kForever{std::numeric_limits<double>::infinity()};
constexpr double kLongestWait = 24 * 60 * 60;  // seconds; keeps the conversion below in range

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

// Shared between the loop and the caller's watch: whichever goes first, the other finds it marked.
struct WatchedDescriptor {
  int descriptor;
  short events;
  bool alsoModal;
  bool isBeingCalled = false;
  std::shared_ptr<RunLoop::Function> function;  // none: no longer watched
};

class Watch final : public DescriptorWatch {
 public:
  explicit Watch(std::shared_ptr<WatchedDescriptor> watched) : watched_(std::move(watched)) {}
  ~Watch() override { watched_->function = nullptr; }

 private:
  std::shared_ptr<WatchedDescriptor> watched_;
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
                                         Delivery delivery) override;

  void run() override;
  void stop() override { stopInnermost(Mode::Default); }
  void runModal() override;
  void stopModal() override { stopInnermost(Mode::Modal); }
  Mode mode() const override { return queue_.mode(); }
  bool runOnce(Seconds wait) override;
  bool hasPendingWork() const override { return queue_.hasDue(); }

 private:
  using Ready = std::vector<std::shared_ptr<WatchedDescriptor>>;
  struct Run {
    Mode kind;
    bool stopped = false;
  };

  void runUntilStopped(Mode kind);
  void stopInnermost(Mode kind);
  void waitForWork(Seconds wait);
  bool pollOnce(Seconds wait, Ready* ready);
  bool callReady();

  Clock& clock_;
  WakeUp wakeUp_;
  TimerQueue queue_;
  std::vector<std::shared_ptr<WatchedDescriptor>> watched_;
  std::vector<Run*> runs_;
  std::uint64_t turn_ = 0;
};

std::unique_ptr<DescriptorWatch> PollRunLoop::watch(int descriptor, Readiness readiness, Function function,
                                                    Delivery delivery) {
  auto watched = std::make_shared<WatchedDescriptor>();
  watched->descriptor = descriptor;
  watched->events = readiness == Readiness::Readable ? POLLIN : POLLOUT;
  watched->alsoModal = delivery == Delivery::DefaultAndModal;
  watched->function = std::make_shared<Function>(std::move(function));
  watched_.push_back(watched);
  return std::make_unique<Watch>(std::move(watched));
}

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
  ++turn_;
  if (wait > Seconds(0) && !queue_.hasDue()) waitForWork(wait);
  const bool called = queue_.runDue();
  return callReady() || called;
}

void PollRunLoop::waitForWork(Seconds wait) {
  const Seconds now = clock_.uptime();
  const auto next = queue_.nextFireTime();
  if (next) wait = std::min(wait, std::max(*next - now, Seconds(0)));
  if (clock_.runsByItself()) {
    pollOnce(wait, nullptr);
  } else if (!pollOnce(next ? Seconds(0) : wait, nullptr)) {
    // What is due stays comparable with the time of the clock: now + (next - now) need not be next.
    clock_.advanceTo(next && now + wait >= *next ? *next : now + wait);
  }
}

// Answers whether a descriptor is ready, or another thread has called; `ready` receives the former.
bool PollRunLoop::pollOnce(Seconds wait, Ready* ready) {
  std::erase_if(watched_, [](const auto& watched) { return watched->function == nullptr; });
  const bool isModal = mode() == Mode::Modal;
  std::vector<pollfd> polled;
  Ready asked;
  for (const auto& watched : watched_) {
    if (watched->isBeingCalled || (isModal && !watched->alsoModal)) continue;
    polled.push_back({watched->descriptor, watched->events, 0});
    asked.push_back(watched);
  }
  // Calls of other threads wait during a modal run; asking for them here would only keep it from sleeping.
  if (!isModal) polled.push_back({wakeUp_.descriptor(), POLLIN, 0});

  const double seconds = std::min(wait.count(), kLongestWait);
  timespec timeout{static_cast<time_t>(seconds), 0};
  timeout.tv_nsec = std::min(999'999'999L, std::lround(std::ceil((seconds - std::floor(seconds)) * 1e9)));
  if (::ppoll(polled.data(), polled.size(), &timeout, nullptr) <= 0) return false;
  if (!isModal && polled.back().revents != 0) wakeUp_.clear();
  if (ready == nullptr) return true;
  for (std::size_t i = 0; i < asked.size(); ++i) {
    if (polled[i].revents != 0) ready->push_back(asked[i]);
  }
  return true;
}

bool PollRunLoop::callReady() {
  if (watched_.empty()) return false;
  Ready ready;
  pollOnce(Seconds(0), &ready);
  const std::uint64_t thisTurn = turn_;
  bool called = false;
  for (const auto& watched : ready) {
    // A turn that ran inside a call has looked at the descriptors anew: what we know of the rest is stale.
    if (turn_ != thisTurn) break;
    const auto function = watched->function;
    if (!function) continue;
    watched->isBeingCalled = true;
    (*function)();
    watched->isBeingCalled = false;
    called = true;
  }
  return called;
}

}  // namespace

std::unique_ptr<RunLoop> makeRunLoop(Clock& clock) {
  return std::make_unique<PollRunLoop>(clock);
}

}  // namespace clipwave
