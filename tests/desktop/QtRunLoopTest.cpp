#include "desktop/QtRunLoop.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QTest>
#include <QWidget>

#include "tests/support/RunLoopConformance.h"

namespace clipwave::testing {

INSTANTIATE_TEST_SUITE_P(Qt, RunLoopConformance, ::testing::Values(&makeQtRunLoop));

namespace {

class CountingWidget final : public QWidget {
 public:
  int paints = 0;
  int presses = 0;

 protected:
  void paintEvent(QPaintEvent*) override { ++paints; }
  void mousePressEvent(QMouseEvent*) override { ++presses; }
};

class QtRunLoopChain : public ::testing::TestWithParam<bool> {};

TEST_P(QtRunLoopChain, OfTimersWithoutDelayLeavesInputAndPaintingAlive) {
  SystemClock clock;
  const auto loop = makeQtRunLoop(clock);
  CountingWidget window;
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  window.paints = 0;

  const Pipe alwaysReady;
  if (GetParam()) alwaysReady.put();
  int readyCalls = 0, links = 0, pressesPosted = 0;
  const auto watch = loop->watch(alwaysReady.reading(), RunLoop::Readiness::Readable, [&] { ++readyCalls; });
  std::function<void()> link = [&] {
    // A press that the window has not had by the next link but one would be late.
    EXPECT_GE(window.presses + 2, pressesPosted);
    ++links;
    ++pressesPosted;
    const QPointF at(1, 1);
    QCoreApplication::postEvent(&window, new QMouseEvent(QEvent::MouseButtonPress, at, at, Qt::LeftButton,
                                                         Qt::LeftButton, Qt::NoModifier));
    window.update();
    QTest::qSleep(1);
    loop->scheduleTimer(Seconds(0), link);
  };
  loop->scheduleTimer(Seconds(0), link);
  loop->scheduleTimer(Seconds(0.3), [&] { loop->stop(); });
  loop->run();
  EXPECT_GE(links, 20);
  EXPECT_EQ(readyCalls >= 20, GetParam());
  EXPECT_GE(window.paints, 5);
}

INSTANTIATE_TEST_SUITE_P(BesideAReadyDescriptor, QtRunLoopChain, ::testing::Bool());

TEST(QtRunLoop, TurnsGoOnInALoopOfQtsOwnThatAFunctionRuns) {
  SystemClock clock;
  const auto loop = makeQtRunLoop(clock);
  std::vector<std::string> calls;
  loop->scheduleTimer(Seconds(0), [&] {
    QEventLoop menu;
    loop->scheduleTimer(Seconds(0.02), [&] {
      calls.push_back("in menu");
      menu.quit();
    });
    menu.exec();
    calls.push_back("menu closed");
    loop->stop();
  });
  loop->scheduleTimer(Seconds(0.001), [&] { calls.push_back("waited already"); });
  loop->run();
  EXPECT_THAT(calls, ::testing::ElementsAre("waited already", "in menu", "menu closed"));
}

}  // namespace
}  // namespace clipwave::testing
