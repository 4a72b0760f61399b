#include "platform/foundation/RunLoop.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <thread>

namespace clipwave {
namespace {
using namespace ::testing;

class Pipe {
 public:
  Pipe() { EXPECT_EQ(::pipe(ends_.data()), 0); }
  ~Pipe() {
    ::close(ends_[0]);
    closeWriting();
  }
  int reading() const { return ends_[0]; }
  void put() const { EXPECT_EQ(::write(ends_[1], "x", 1), 1); }
  void take() const {
    char byte = 0;
    EXPECT_EQ(::read(ends_[0], &byte, 1), 1);
  }
  void closeWriting() {
    if (ends_[1] >= 0) ::close(ends_[1]);
    ends_[1] = -1;
  }

 private:
  std::array<int, 2> ends_{};
};

class RunLoopTest : public Test {
 protected:
  RunLoop::Function note(std::string what) {
    return [this, what = std::move(what)] { calls.push_back(what); };
  }

  std::unique_ptr<DescriptorWatch> watch(const Pipe& pipe, RunLoop::Function function,
                                         RunLoop::Delivery delivery = RunLoop::Delivery::DefaultOnly) {
    return loop->watch(pipe.reading(), RunLoop::Readiness::Readable, std::move(function), delivery);
  }

  TestClock clock;
  std::unique_ptr<RunLoop> loop = makeRunLoop(clock);
  std::vector<std::string> calls;
};

TEST_F(RunLoopTest, ATurnCallsDeferredCallsThenDueTimersThenDescriptorsAndWhatTheyScheduleWaits) {
  const Pipe pipe;
  pipe.put();
  const auto ready = watch(pipe, [&] {
    calls.push_back("descriptor");
    pipe.take();
  });
  loop->scheduleTimer(Seconds(60), note("not due"));
  loop->scheduleTimer(Seconds(0), [this] {
    calls.push_back("timer");
    loop->scheduleTimer(Seconds(0), note("third timer"));
  });
  loop->performLater([this] {
    calls.push_back("deferred");
    loop->performLater(note("second deferred"));
    loop->scheduleTimer(Seconds(0), note("second timer"));
  });
  EXPECT_THAT(calls, IsEmpty());
  EXPECT_TRUE(loop->runOnce(Seconds(100)));
  EXPECT_THAT(calls, ElementsAre("deferred", "timer", "descriptor"));
  EXPECT_TRUE(loop->hasPendingWork());
  calls.clear();
  loop->runOnce(Seconds(0));
  EXPECT_THAT(calls, ElementsAre("second deferred", "second timer", "third timer"));
  EXPECT_FALSE(loop->hasPendingWork());
}

TEST_F(RunLoopTest, ATimerReleasesWhatItHoldsOnceItIsInvalid) {
  auto held = std::make_shared<int>(1);
  const std::weak_ptr<int> watching = held;
  std::shared_ptr<Timer> timer;
  timer = loop->scheduleRepeatingTimer(Seconds(1), [&, held = std::move(held)] {
    timer->invalidate();
    calls.push_back(watching.expired() ? "released" : "held");
  });
  loop->runOnce(Seconds(5));
  EXPECT_THAT(calls, ElementsAre("held"));
  EXPECT_TRUE(watching.expired());
  // A timer that an earlier call of the same turn has ended does not fire.
  std::shared_ptr<Timer> second;
  loop->scheduleTimer(Seconds(0), [&] { second->invalidate(); });
  second = loop->scheduleTimer(Seconds(0), note("second"));
  loop->runOnce(Seconds(0));
  EXPECT_THAT(calls, ElementsAre("held"));
  const auto last = loop->scheduleTimer(Seconds(1), note("never"));
  loop.reset();
  last->invalidate();
}

TEST_F(RunLoopTest, AModalRunDeliversOnlyWatchesMadeForIt) {
  const Pipe ordinary, modal;
  ordinary.put();
  modal.put();
  const auto first = watch(ordinary, note("ordinary"));
  const auto second = watch(
      modal,
      [&] {
        calls.push_back(loop->mode() == RunLoop::Mode::Modal ? "modal" : "not modal");
        EXPECT_FALSE(loop->hasPendingWork());
        modal.take();
        loop->stopModal();
      },
      RunLoop::Delivery::DefaultAndModal);
  loop->scheduleTimer(Seconds(0), note("timer"));
  loop->performLater(note("deferred"));
  loop->performFromAnyThread(note("thread"));
  loop->runModal();
  EXPECT_THAT(calls, ElementsAre("modal"));
  EXPECT_EQ(loop->mode(), RunLoop::Mode::Default);
  loop->runOnce(Seconds(0));
  EXPECT_THAT(calls, ElementsAre("modal", "deferred", "thread", "timer", "ordinary"));
}

TEST_F(RunLoopTest, AWatchEndsWhenItIsDestroyedAlsoInsideACallOfTheSameTurn) {
  Pipe one, two;
  one.put();
  two.closeWriting();  // the end of the stream counts as ready
  std::unique_ptr<DescriptorWatch> first, second;
  first = watch(one, [&] {
    calls.push_back("first");
    first.reset();
    second.reset();
  });
  second = watch(two, note("second"));
  loop->runOnce(Seconds(0));
  loop->runOnce(Seconds(0));
  EXPECT_THAT(calls, ElementsAre("first"));
}

TEST_F(RunLoopTest, WhatANestedTurnHasServedIsNotServedAgain) {
  const Pipe one, two;
  one.put();
  two.put();
  loop->scheduleRepeatingTimer(Seconds(1), [this] {
    calls.push_back("timer begins");
    loop->runOnce(Seconds(0));
    calls.push_back("timer ends");
  });
  const auto first = watch(one, [&] {
    calls.push_back("first");
    loop->runOnce(Seconds(0));
    one.take();
  });
  const auto second = watch(two, [&] {
    calls.push_back("second");
    two.take();  // would block for ever the second time
  });
  loop->runOnce(Seconds(0));
  EXPECT_THAT(calls, ElementsAre("first", "second"));
  calls.clear();
  clock.tick(Seconds(1));
  loop->runOnce(Seconds(0));
  EXPECT_THAT(calls, ElementsAre("timer begins", "timer ends"));
}

TEST(RunLoop, CallsFromOtherThreadsWakeItAndKeepTheirOrder) {
  SystemClock clock;
  const auto loop = makeRunLoop(clock);
  const auto here = std::this_thread::get_id();
  std::vector<int> numbers;
  Seconds waited{0};
  std::thread other([&] {
    for (int number = 0; number < 1000; ++number) {
      loop->performFromAnyThread([&, number] {
        if (std::this_thread::get_id() == here) numbers.push_back(number);
      });
      if (number % 100 == 0) std::this_thread::sleep_for(Seconds(0.002));
    }
  });
  const Seconds start = clock.uptime();
  loop->scheduleTimer(Seconds(0.03), [&] { waited = clock.uptime() - start; });
  while (numbers.size() < 1000 || waited == Seconds(0)) loop->runOnce(Seconds(1));
  other.join();
  EXPECT_GE(waited, Seconds(0.03));
  ASSERT_EQ(numbers.size(), 1000u);
  EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
}

}  // namespace
}  // namespace clipwave
