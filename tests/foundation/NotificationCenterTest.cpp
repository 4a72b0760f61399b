#include "platform/foundation/NotificationCenter.h"

#include <gmock/gmock.h>

#include "platform/foundation/Log.h"

namespace clipwave {
namespace {
using namespace ::testing;

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
