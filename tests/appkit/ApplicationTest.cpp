#include "platform/appkit/Application.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/FakeApplicationShell.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class ApplicationTest : public Test, public ApplicationDelegate {
 protected:
  TerminateReply applicationShouldTerminate() override {
    application.terminate();  // asks no second time
    return TerminateReply::TerminateNow;
  }
  Error willPresentError(const Error& error) override { return error; }
  void openFiles(const std::vector<std::string>&) override {}
  bool applicationShouldTerminateAfterLastWindowClosed() override { return true; }

  TestClock clock;
  std::unique_ptr<RunLoop> loop = makeRunLoop(clock);
  FakeApplicationShell shell;
  Application application{*loop, shell};
};

TEST_F(ApplicationTest, AModalRunHoldsDeferredCallsBackAndQuittingEndsEveryOne) {
  application.setDelegate(this);
  Window preferences, nested;
  bool deferredCall = false;
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ::close(ends[1]);
  // The closed pipe is ready in every turn, as presses on three buttons, one after another, would be.
  int press = 0;
  const auto pressed = [&] {
    switch (press++) {
      case 0:
        loop->performLater([&] { deferredCall = true; });
        return application.runModalForWindow(preferences);
      case 1:
        return application.runModalForWindow(nested);
      default:
        return application.terminate();
    }
  };
  std::vector<std::unique_ptr<DescriptorWatch>> buttons;
  for (int i = 0; i < 3; ++i) {
    buttons.push_back(
        loop->watch(ends[0], RunLoop::Readiness::Readable, pressed, RunLoop::Delivery::DefaultAndModal));
  }
  loop->run();
  ::close(ends[0]);
  EXPECT_TRUE(preferences.isVisible() && nested.isVisible());
  EXPECT_FALSE(deferredCall);
  EXPECT_TRUE(application.isTerminated());
  EXPECT_EQ(loop->mode(), RunLoop::Mode::Default);
}

}  // namespace
}  // namespace clipwave
