#include "desktop/QtRunLoop.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "platform/foundation/DescriptorWatches.h"
#include "platform/foundation/TimerQueue.h"

namespace clipwave {
namespace {

constexpr double kLongestWait = 24 * 60 * 60 * 1000;  // milliseconds; a QTimer's fit into an int

int millisecondsFor(Seconds time) {
  return static_cast<int>(std::clamp(std::ceil(time.count() * 1000), 0.0, kLongestWait));
}

// Tells the loop's thread that another one has called; any number of calls make one event.
class WakeUp final : public QObject {
 public:
  explicit WakeUp(std::function<void()> roused) : roused_(std::move(roused)) {}
  void send() {
    if (!sent_.exchange(true)) QCoreApplication::postEvent(this, new QEvent(QEvent::User));
  }

 protected:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::User) return QObject::event(event);
    sent_ = false;
    roused_();
    return true;
  }

 private:
  std::function<void()> roused_;
  std::atomic<bool> sent_ = false;
};

// Rouses Qt's loop for a watched descriptor. It rests where its function would not be called: a descriptor
// that stays ready would keep the loop from sleeping.
class Notifier {
 public:
  Notifier(int descriptor, RunLoop::Readiness readiness, bool alsoModal)
      : notifier_(new QSocketNotifier(descriptor, readiness == RunLoop::Readiness::Readable
                                                      ? QSocketNotifier::Read
                                                      : QSocketNotifier::Write)),
        alsoModal_(alsoModal) {}
  // It may be in the middle of telling us.
  ~Notifier() {
    notifier_->setEnabled(false);
    notifier_->disconnect();
    notifier_->deleteLater();
  }
  Notifier(const Notifier&) = delete;
  Notifier& operator=(const Notifier&) = delete;

  QSocketNotifier& notifier() const { return *notifier_; }
  void setBeingCalled(bool isBeingCalled, RunLoop::Mode mode) {
    isBeingCalled_ = isBeingCalled;
    update(mode);
  }
  void update(RunLoop::Mode mode) const {
    notifier_->setEnabled(!isBeingCalled_ && (alsoModal_ || mode == RunLoop::Mode::Default));
  }

 private:
  QSocketNotifier* notifier_;
  bool alsoModal_;
  bool isBeingCalled_ = false;
};

class QtWatch final : public DescriptorWatch {
 public:
  QtWatch(std::unique_ptr<DescriptorWatch> watch, std::shared_ptr<Notifier> notifier)
      : watch_(std::move(watch)), notifier_(std::move(notifier)) {}

 private:
  std::unique_ptr<DescriptorWatch> watch_;
  std::shared_ptr<Notifier> notifier_;
};

// Qt only rouses it; what is called, and in which order, is the queue's and the watches' affair.
class QtRunLoop final : public RunLoop {
 public:
  explicit QtRunLoop(Clock& clock)
      : clock_(clock), wakeUp_([this] { isRoused(); }), queue_(clock, [this] { wakeUp_.send(); }) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { isRoused(); });
  }

  const Clock& clock() const override { return clock_; }
  std::shared_ptr<Timer> scheduleTimer(Seconds interval, Function function) override {
    auto timer = queue_.scheduleTimer(interval, std::move(function));
    arm();
    return timer;
  }
  std::shared_ptr<Timer> scheduleRepeatingTimer(Seconds interval, Function function) override {
    auto timer = queue_.scheduleRepeatingTimer(interval, std::move(function));
    arm();
    return timer;
  }
  void performLater(Function function) override {
    queue_.performLater(std::move(function));
    arm();
  }
  void performFromAnyThread(Function function) override { queue_.performFromAnyThread(std::move(function)); }
  std::unique_ptr<DescriptorWatch> watch(int descriptor, Readiness readiness, Function function,
                                         Delivery delivery) override;

  void run() override { runUntilStopped(Mode::Default); }
  void stop() override { stopInnermost(Mode::Default); }
  void runModal() override;
  void stopModal() override { stopInnermost(Mode::Modal); }
  Mode mode() const override { return queue_.mode(); }
  bool runOnce(Seconds wait) override;
  bool hasPendingWork() const override { return queue_.hasDue(); }

 private:
  struct Run {
    Mode kind;
    QEventLoop loop = QEventLoop();
  };

  void runUntilStopped(Mode kind);
  void stopInnermost(Mode kind);
  void modeChanged();
  void isRoused();
  bool turn();
  void waitForWork(Seconds wait);
  void waitInQt(Seconds longest);
  void advanceClockTo(Seconds latest);
  void arm();

  Clock& clock_;
  WakeUp wakeUp_;
  QTimer timer_;
  TimerQueue queue_;
  DescriptorWatches watches_;
  std::vector<std::weak_ptr<Notifier>> notifiers_;
  std::vector<Run*> runs_;
  // The level of Qt's loops at which runOnce waits: what rouses it there is served by its own turn.
  std::optional<int> waitingLevel_;
  bool wasRoused_ = false;
};

std::unique_ptr<DescriptorWatch> QtRunLoop::watch(int descriptor, Readiness readiness, Function function,
                                                  Delivery delivery) {
  const auto notifier =
      std::make_shared<Notifier>(descriptor, readiness, delivery == Delivery::DefaultAndModal);
  QObject::connect(&notifier->notifier(), &QSocketNotifier::activated, &timer_, [this] { isRoused(); });
  notifier->update(mode());
  std::erase_if(notifiers_, [](const auto& other) { return other.expired(); });
  notifiers_.push_back(notifier);
  auto call = [this, weak = std::weak_ptr(notifier), function = std::move(function)] {
    if (const auto calling = weak.lock()) calling->setBeingCalled(true, mode());
    function();
    if (const auto calling = weak.lock()) calling->setBeingCalled(false, mode());
  };
  return std::make_unique<QtWatch>(watches_.watch(descriptor, readiness, std::move(call), delivery),
                                   notifier);
}

void QtRunLoop::runUntilStopped(Mode kind) {
  Run current{kind};
  runs_.push_back(&current);
  arm();
  current.loop.exec();
  std::erase(runs_, &current);
}

void QtRunLoop::runModal() {
  queue_.enterModal();
  modeChanged();
  runUntilStopped(Mode::Modal);
  queue_.leaveModal();
  modeChanged();
}

void QtRunLoop::modeChanged() {
  for (const auto& weak : notifiers_)
    if (const auto notifier = weak.lock()) notifier->update(mode());
  arm();
}

void QtRunLoop::stopInnermost(Mode kind) {
  const auto innermost =
      std::find_if(runs_.rbegin(), runs_.rend(), [kind](const Run* run) { return run->kind == kind; });
  if (innermost != runs_.rend()) (*innermost)->loop.quit();
}

// Has Qt call us when the next thing is due. A timer without delay comes after input and painting.
void QtRunLoop::arm() {
  const auto next = queue_.nextFireTime();
  if (queue_.hasDue() || (next && !clock_.runsByItself())) {
    if (!timer_.isActive() || timer_.interval() > 0) timer_.start(0);
  } else if (next) {
    timer_.start(millisecondsFor(*next - clock_.uptime()));
  } else {
    timer_.stop();
  }
}

void QtRunLoop::isRoused() {
  wasRoused_ = true;
  if (waitingLevel_ == QThread::currentThread()->loopLevel()) return;
  if (!clock_.runsByItself() && !queue_.hasDue() && !watches_.waitForReady(Seconds(0), mode()))
    advanceClockTo(Seconds(std::numeric_limits<double>::infinity()));
  watches_.beginTurn();
  turn();
}

bool QtRunLoop::turn() {
  // What is called may run a loop of Qt's own, and the work that is left has to rouse that one as well.
  timer_.stop();
  arm();
  const bool called = queue_.runDue();
  const bool calledReady = watches_.callReady(mode());
  arm();
  return called || calledReady;
}

bool QtRunLoop::runOnce(Seconds wait) {
  watches_.beginTurn();
  const auto outer = std::exchange(waitingLevel_, QThread::currentThread()->loopLevel());
  QCoreApplication::processEvents();
  if (wait > Seconds(0)) waitForWork(wait);
  waitingLevel_ = outer;
  return turn();
}

void QtRunLoop::waitForWork(Seconds wait) {
  if (queue_.hasDue() || watches_.waitForReady(Seconds(0), mode())) return;
  const auto next = queue_.nextFireTime();
  const Seconds latest = clock_.uptime() + wait;
  if (clock_.runsByItself()) {
    waitInQt(wait);
  } else {
    if (!next) waitInQt(wait);
    if (!queue_.hasDue() && !watches_.waitForReady(Seconds(0), mode())) advanceClockTo(latest);
  }
}

// Waits until something of ours is due or `longest` has passed, and delivers Qt's events meanwhile.
void QtRunLoop::waitInQt(Seconds longest) {
  const QDeadlineTimer end(millisecondsFor(longest), Qt::PreciseTimer);
  wasRoused_ = false;
  while (!wasRoused_ && !queue_.hasDue() && !end.hasExpired()) {
    arm();
    const auto rest = static_cast<int>(end.remainingTime());
    if (!timer_.isActive() || timer_.remainingTime() > rest) timer_.start(rest);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

// To the next timer, unless `latest` comes first.
void QtRunLoop::advanceClockTo(Seconds latest) {
  const auto next = queue_.nextFireTime();
  if (next && *next <= latest) latest = *next;
  if (std::isfinite(latest.count())) clock_.advanceTo(latest);
}

}  // namespace

std::unique_ptr<RunLoop> makeQtRunLoop(Clock& clock) {
  return std::make_unique<QtRunLoop>(clock);
}

}  // namespace clipwave
