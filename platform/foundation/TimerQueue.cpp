#include "platform/foundation/TimerQueue.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace clipwave {
namespace {

// A repeating timer of no interval would be due for ever.
constexpr Seconds kShortestInterval{0.0001};

}  // namespace

// Waiting timers by the time they fire; those of the same time in the order of their scheduling.
struct TimerQueue::Timers {
  using Key = std::pair<Seconds, std::uint64_t>;
  std::map<Key, std::shared_ptr<Entry>> waiting;
  std::uint64_t nextNumber = 0;
};

// A timer may outlive the queue, so it holds the waiting ones weakly.
class TimerQueue::Entry final : public Timer {
 public:
  Entry(const std::shared_ptr<Timers>& timers, Seconds interval, Function function)
      : timers_(timers), interval_(interval), function_(std::make_shared<Function>(std::move(function))) {}

  bool isValid() const override { return function_ != nullptr; }
  void invalidate() override {
    // Dropping the function may bring about the end of whoever holds this timer: it goes last.
    const auto dropped = std::exchange(function_, nullptr);
    const auto timers = timers_.lock();
    if (!timers) return;
    const auto node = timers->waiting.extract(key_);  // no node while its function is being called
  }

  void wait(const std::shared_ptr<Entry>& self, Timers& timers, Seconds until) {
    key_ = {until, timers.nextNumber++};
    timers.waiting.emplace(key_, self);
  }
  void stopWaiting(Timers& timers) { timers.waiting.erase(key_); }
  Seconds fireTime() const { return key_.first; }
  Seconds interval() const { return interval_; }
  bool repeats() const { return interval_ > Seconds(0); }
  std::shared_ptr<Function> function() const { return function_; }

 private:
  std::weak_ptr<Timers> timers_;
  Timers::Key key_{};
  Seconds interval_;
  std::shared_ptr<Function> function_;  // none: invalid
};

TimerQueue::TimerQueue(const Clock& clock, Function wake)
    : clock_(clock), wake_(std::move(wake)), timers_(std::make_shared<Timers>()) {}

TimerQueue::~TimerQueue() {
  while (!timers_->waiting.empty()) {
    const auto timer = timers_->waiting.begin()->second;
    timer->invalidate();
  }
}

std::shared_ptr<Timer> TimerQueue::schedule(Seconds delay, Seconds interval, Function function) {
  auto timer = std::make_shared<Entry>(timers_, interval, std::move(function));
  timer->wait(timer, *timers_, clock_.uptime() + std::max(delay, Seconds(0)));
  return timer;
}

std::shared_ptr<Timer> TimerQueue::scheduleTimer(Seconds interval, Function function) {
  return schedule(interval, Seconds(0), std::move(function));
}

std::shared_ptr<Timer> TimerQueue::scheduleRepeatingTimer(Seconds interval, Function function) {
  interval = std::max(interval, kShortestInterval);
  return schedule(interval, interval, std::move(function));
}

void TimerQueue::performLater(Function function) {
  deferred_.push_back({nextDeferred_++, std::move(function)});
}

void TimerQueue::performFromAnyThread(Function function) {
  {
    const std::lock_guard lock(mutex_);
    callsFromThreads_.push_back(std::move(function));
  }
  wake_();
}

void TimerQueue::takeCallsFromThreads() {
  std::vector<Function> calls;
  {
    const std::lock_guard lock(mutex_);
    calls.swap(callsFromThreads_);
  }
  for (Function& call : calls) performLater(std::move(call));
}

bool TimerQueue::runDue() {
  if (mode() == RunLoop::Mode::Modal) return false;
  takeCallsFromThreads();
  const Seconds start = clock_.uptime();
  std::vector<std::shared_ptr<Entry>> due;
  for (const auto& [key, timer] : timers_->waiting) {
    if (key.first > start) break;
    due.push_back(timer);
  }
  bool called = runDeferred(nextDeferred_);
  for (const auto& timer : due) called |= fire(timer, start);
  return called;
}

bool TimerQueue::runDeferred(std::uint64_t before) {
  bool called = false;
  while (!deferred_.empty() && deferred_.front().number < before) {
    const Function function = std::move(deferred_.front().function);
    deferred_.pop_front();
    function();
    called = true;
  }
  return called;
}

// Asks here, not when the pass began: an earlier call may have ended the timer, or have run the loop itself.
bool TimerQueue::fire(const std::shared_ptr<Entry>& timer, Seconds passStart) {
  if (!timer->isValid() || timer->fireTime() > passStart) return false;
  const std::shared_ptr<Function> function = timer->function();
  const Seconds fireTime = timer->fireTime();
  // It does not wait while it is called, so that a loop run inside its function does not call it again.
  timer->stopWaiting(*timers_);
  if (!timer->repeats()) timer->invalidate();
  (*function)();
  if (timer->isValid()) {
    const Seconds now = clock_.uptime();
    const double passed = std::floor((now - fireTime) / timer->interval());
    Seconds next = fireTime + timer->interval() * (passed + 1);
    if (next <= now) next += timer->interval();  // the division was rounded down
    timer->wait(timer, *timers_, next);
  }
  return true;
}

bool TimerQueue::hasDue() const {
  if (mode() == RunLoop::Mode::Modal) return false;
  if (!deferred_.empty()) return true;
  if (!timers_->waiting.empty() && timers_->waiting.begin()->first.first <= clock_.uptime()) return true;
  const std::lock_guard lock(mutex_);
  return !callsFromThreads_.empty();
}

std::optional<Seconds> TimerQueue::nextFireTime() const {
  if (mode() == RunLoop::Mode::Modal || timers_->waiting.empty()) return std::nullopt;
  return timers_->waiting.begin()->first.first;
}

}  // namespace clipwave
