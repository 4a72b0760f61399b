#include "platform/foundation/NotificationCenter.h"

#include <gmock/gmock.h>

#include "platform/foundation/Log.h"

namespace clipwave {
namespace {

using ::testing::ElementsAre;

TEST(NotificationCenter, ReachesTheObserversOfANameInTheirOrder) {
  NotificationCenter center;
  std::vector<std::string> heard;
  const auto first = center.observe("movieCreated", [&](const Notification& notification) {
    heard.push_back("1 " + std::string(notification.userInfo.at("path").stringValue()));
  });
  auto second = center.observe("movieCreated", [&](const Notification&) { heard.push_back("2"); });
  center.post("recordingStarted");
  center.post("movieCreated", {}, {{"path", "/a.mov"}});
  second.cancel();
  center.post("movieCreated", {}, {{"path", "/b.mov"}});
  EXPECT_THAT(heard, ElementsAre("1 /a.mov", "2", "1 /b.mov"));
}

TEST(Observers, MayEndAndBeginObservationsWhileTheyAreCalled) {
  auto observers = std::make_unique<Observers<>>();
  std::vector<std::string> heard;
  Observation first, second, late;
  first = observers->add([&] {
    heard.push_back("first");
    first.cancel();
    second.cancel();
    late = observers->add([&] {
      heard.push_back("late");
      observers.reset();
    });
  });
  second = observers->add([&] { heard.push_back("second"); });
  observers->call();
  EXPECT_THAT(heard, ElementsAre("first"));
  observers->call();
  EXPECT_THAT(heard, ElementsAre("first", "late"));
  EXPECT_EQ(observers, nullptr);
}

TEST(StandardErrorLog, MakesControlCharactersVisibleAndKeepsEveryOtherLetter) {
  StandardErrorLog log("clipwave");
  ::testing::internal::CaptureStderr();
  log.write("Caf\u00e9\nfake: \x1b[2J \u009b1m\x7f");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "clipwave: Caf\u00e9\\nfake: \\x1b[2J \\x9b1m\\x7f\n");
}

}  // namespace
}  // namespace clipwave
