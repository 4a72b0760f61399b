// What every run loop promises, whatever it waits with. A test program that includes this says which one:
// INSTANTIATE_TEST_SUITE_P(Name, RunLoopConformance, Values(&makeIt)).
#pragma once

#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <thread>

#include "platform/foundation/RunLoop.h"

namespace clipwave::testing {

using MakeRunLoop = std::unique_ptr<RunLoop> (*)(Clock&);

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

// Over a clock that is turned by hand, but where threads are about.
class RunLoopConformance : public ::testing::TestWithParam<MakeRunLoop> {
 protected:
  RunLoop::Function note(std::string what) {
    return [this, what = std::move(what)] { calls.push_back(what); };
  }

  std::unique_ptr<DescriptorWatch> watch(const Pipe& pipe, RunLoop::Function function,
                                         RunLoop::Delivery delivery = RunLoop::Delivery::DefaultOnly) {
    return loop->watch(pipe.reading(), RunLoop::Readiness::Readable, std::move(function), delivery);
  }

  TestClock clock;
  std::unique_ptr<RunLoop> loop = GetParam()(clock);
  std::vector<std::string> calls;
};

TEST_P(RunLoopConformance, ATurnCallsDeferredCallsThenDueTimersThenDescriptorsAndWhatTheyScheduleWaits) {
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
  EXPECT_THAT(calls, ::testing::IsEmpty());
  EXPECT_TRUE(loop->runOnce(Seconds(100)));
  EXPECT_THAT(calls, ::testing::ElementsAre("deferred", "timer", "descriptor"));
  EXPECT_TRUE(loop->hasPendingWork());
  calls.clear();
  loop->runOnce(Seconds(0));
  EXPECT_THAT(calls, ::testing::ElementsAre("second deferred", "second timer", "third timer"));
  EXPECT_FALSE(loop->hasPendingWork());
}

TEST_P(RunLoopConformance, ATimerReleasesWhatItHoldsOnceItIsInvalid) {
  auto held = std::make_shared<int>(1);
  const std::weak_ptr<int> watching = held;
  std::shared_ptr<Timer> timer;
  timer = loop->scheduleRepeatingTimer(Seconds(1), [&, held = std::move(held)] {
    timer->invalidate();
    calls.push_back(watching.expired() ? "released" : "held");
  });
  loop->runOnce(Seconds(5));
  EXPECT_THAT(calls, ::testing::ElementsAre("held"));
  EXPECT_TRUE(watching.expired());
  // A timer that an earlier call of the same turn has ended does not fire.
  std::shared_ptr<Timer> second;
  loop->scheduleTimer(Seconds(0), [&] { second->invalidate(); });
  second = loop->scheduleTimer(Seconds(0), note("second"));
  loop->runOnce(Seconds(0));
  EXPECT_THAT(calls, ::testing::ElementsAre("held"));
  const auto last = loop->scheduleTimer(Seconds(1), note("never"));
  loop.reset();
  last->invalidate();
}

TEST_P(RunLoopConformance, AModalRunDeliversOnlyWatchesMadeForIt) {
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
  EXPECT_THAT(calls, ::testing::ElementsAre("modal"));
  EXPECT_EQ(loop->mode(), RunLoop::Mode::Default);
  loop->runOnce(Seconds(0));
  EXPECT_THAT(calls, ::testing::ElementsAre("modal", "deferred", "thread", "timer", "ordinary"));
}

TEST_P(RunLoopConformance, AWatchEndsWhenItIsDestroyedAlsoInsideACallOfTheSameTurn) {
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
  EXPECT_THAT(calls, ::testing::ElementsAre("first"));
}

TEST_P(RunLoopConformance, WhatANestedTurnHasServedIsNotServedAgain) {
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
  EXPECT_THAT(calls, ::testing::ElementsAre("first", "second"));
  calls.clear();
  clock.tick(Seconds(1));
  loop->runOnce(Seconds(0));
  EXPECT_THAT(calls, ::testing::ElementsAre("timer begins", "timer ends"));
}

TEST_P(RunLoopConformance, AStopEndsTheInnermostRunOfItsKindAndLaterTimersComeByTheClock) {
  loop->scheduleTimer(Seconds(3600), [this] {
    calls.push_back("outer");
    loop->scheduleTimer(Seconds(0), [this] {
      calls.push_back("inner");
      loop->stop();
    });
    loop->run();
    calls.push_back("inner ended");
    Pipe pipe;
    pipe.put();
    const auto ready = watch(
        pipe,
        [this, &pipe] {
          pipe.take();
          loop->stop();  // of the run that the modal one stands in
          calls.push_back("modal");
          loop->stopModal();
        },
        RunLoop::Delivery::DefaultAndModal);
    loop->runModal();
    calls.push_back("modal ended");
  });
  loop->scheduleTimer(Seconds(7200), note("too late"));
  loop->run();
  EXPECT_THAT(calls, ::testing::ElementsAre("outer", "inner", "inner ended", "modal", "modal ended"));
  EXPECT_EQ(clock.uptime(), Seconds(3600));
}

TEST_P(RunLoopConformance, CallsFromOtherThreadsWakeItAndKeepTheirOrder) {
  SystemClock system;
  const auto threaded = GetParam()(system);
  const auto here = std::this_thread::get_id();
  std::vector<int> numbers;
  Seconds waited{0};
  std::thread other([&] {
    for (int number = 0; number < 1000; ++number) {
      threaded->performFromAnyThread([&, number] {
        if (std::this_thread::get_id() == here) numbers.push_back(number);
      });
      if (number % 100 == 0) std::this_thread::sleep_for(Seconds(0.002));
    }
  });
  const Seconds start = system.uptime();
  threaded->scheduleTimer(Seconds(0.03), [&] { waited = system.uptime() - start; });
  while (numbers.size() < 1000 || waited == Seconds(0)) threaded->runOnce(Seconds(1));
  other.join();
  EXPECT_GE(waited, Seconds(0.03));
  ASSERT_EQ(numbers.size(), 1000u);
  EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
}

}  // namespace clipwave::testing
