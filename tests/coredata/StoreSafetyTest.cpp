#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include "platform/coredata/XMLStore.h"
#include "tests/coredata/TestLibrary.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class StoreSafetyTest : public LibraryTest {
 protected:
  // Runs `work` in a process of its own; it never returns to the test.
  template <class Work>
  static pid_t fork(Work work) {
    const pid_t child = ::fork();
    if (child != 0) return child;
    work();
    ::_exit(0);
  }
  static void kill(pid_t child) {
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
  }
};

TEST_F(StoreSafetyTest, AnotherProcessHoldsTheStoreUntilItDiesHoweverThatHappens) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = fork([&] {
    if (tryToOpen() && ::write(ready[1], "x", 1) == 1)
      for (;;) ::pause();
  });
  char byte = 0;
  ASSERT_EQ(::read(ready[0], &byte, 1), 1);
  EXPECT_EQ(
      tryToOpen().error(),
      cocoaError(kFileLockingError, "The library at " + path + " cannot be opened. It is open elsewhere."));
  kill(child);
  ASSERT_TRUE(tryToOpen().ok());
  // The rename of a save must not let anybody in.
  ASSERT_TRUE(context->save().ok());
  PersistentStoreCoordinator second(model, files);
  EXPECT_FALSE(second.addPersistentStore(NSXMLStoreType, path).ok());
  ::close(ready[0]);
  ::close(ready[1]);
}

TEST_F(StoreSafetyTest, AnOpeningThatFailedHoldsNoLock) {
  folder.write("Clipwave.xml", "<library");
  EXPECT_FALSE(tryToOpen().ok());
  folder.write("Clipwave.xml", "<library version=\"1.0\" next=\"1\"/>");
  EXPECT_TRUE(tryToOpen().ok());
  context.reset();
  // What cannot be read is no empty library.
  files.fail("contentsAtPath", path, cocoaError(kFileReadNoPermissionError, "Not for you."));
  EXPECT_EQ(tryToOpen().error(), cocoaError(kFileReadNoPermissionError,
                                            "The library at " + path + " cannot be opened. Not for you."));
}

// The child gives all records the number of the save and reports each save that has returned. Whenever it is
// killed, the file must hold one whole save, and none older than the last that was reported.
TEST_F(StoreSafetyTest, AProcessKilledAtAnyInstantLeavesTheLastSaveWhole) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> microseconds(0, 8000);
  open();
  for (int i = 0; i < 300; ++i) insert("Channel", "0");
  ASSERT_TRUE(context->save().ok());
  context.reset();
  int stored = 0;
  for (int kills = 0; kills < 200; ++kills) {
    int reports[2];
    ASSERT_EQ(::pipe2(reports, O_CLOEXEC), 0);
    const pid_t child = fork([&] {
      if (!tryToOpen()) return;
      const auto channels = fetch({.entityName = "Channel"});
      for (int number = stored + 1;; ++number) {
        for (ManagedObject* channel : channels) channel->setValue("vcTitle", std::to_string(number));
        if (!context->save() || ::write(reports[1], &number, sizeof number) != sizeof number) return;
      }
    });
    ::close(reports[1]);
    // From the first save on, so that the kill meets a process that is saving, however slow the machine.
    int reported = 0;
    ASSERT_EQ(::read(reports[0], &reported, sizeof reported), static_cast<ssize_t>(sizeof reported));
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
    kill(child);
    for (int number = 0; ::read(reports[0], &number, sizeof number) == sizeof number;) reported = number;
    ::close(reports[0]);

    const Result<void> opened = tryToOpen();
    ASSERT_TRUE(opened.ok()) << opened.error().localizedDescription;
    const auto channels = fetch({.entityName = "Channel"});
    ASSERT_EQ(channels.size(), 300U);
    stored = static_cast<int>(channels[0]->value("vcTitle").integerValue());
    for (ManagedObject* channel : channels) ASSERT_EQ(channel->value("vcTitle").integerValue(), stored);
    ASSERT_TRUE(stored == reported || stored == reported + 1) << stored << " after " << reported;
    // The next opener clears away what the killed save had begun.
    const auto left = files.directoryContentsAtPath(folder.path());
    ASSERT_EQ(std::count_if(left->begin(), left->end(),
                            [](const std::string& name) { return name.starts_with(kSideFilePrefix); }),
              0);
    context.reset();
  }
}

}  // namespace
}  // namespace clipwave
