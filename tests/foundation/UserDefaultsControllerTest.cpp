#include "platform/foundation/UserDefaultsController.h"

#include <gmock/gmock.h>

#include "tests/support/FakeFileManager.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class UserDefaultsControllerTest : public Test {
 protected:
  TemporaryFolder folder;
  FakeFileManager files;
  const std::string path = folder / "config/Clipwave/defaults.plist";
};

TEST_F(UserDefaultsControllerTest, AFailedWriteKeepsTheOldValueEverywhereAndTellsNobody) {
  UserDefaultsController defaults(files, path);
  ASSERT_TRUE(defaults.setValue("author", "Alex"));
  const std::string before = readFile(path);
  int told = 0;
  const auto observation = defaults.observe("author", [&] { ++told; });
  files.fail("writeAtomically", path);
  EXPECT_EQ(defaults.setValue("author", "Kim").error(), FakeFileManager::anyError());
  EXPECT_EQ(defaults.string("author"), "Alex");
  EXPECT_EQ(readFile(path), before);
  EXPECT_EQ(told, 0);
  files.failNothing();
  EXPECT_TRUE(defaults.setValue("author", "Kim"));
  EXPECT_EQ(told, 1);
}

TEST_F(UserDefaultsControllerTest, AFileThatCannotBeReadIsReportedAndNeverWrittenOver) {
  for (const char* content : {"", "no property list", "<plist version=\"1.0\"><array/></plist>"}) {
    folder.write("config/Clipwave/defaults.plist", content);
    UserDefaultsController defaults(files, path);
    EXPECT_THAT(defaults.loadError().value().localizedDescription, HasSubstr(path)) << content;
    EXPECT_FALSE(defaults.setValue("author", "Kim").ok());
    EXPECT_EQ(readFile(path), content);
  }
}

TEST_F(UserDefaultsControllerTest, ObserversHearOfChangesOfTheValueThatCounts) {
  UserDefaultsController defaults(files, path);
  std::vector<std::string> heard;
  const auto observation = defaults.observe("key", [&] { heard.push_back(defaults.string("key")); });
  defaults.setInitialValues({{"key", "initial"}, {"other", 1}});
  EXPECT_TRUE(defaults.setValue("key", "initial"));
  EXPECT_TRUE(defaults.setValue("key", "mine"));
  defaults.setInitialValues({{"key", "hidden behind mine"}});
  EXPECT_TRUE(defaults.setValue("key", Value()));
  ASSERT_TRUE(UserDefaultsController(files, path).setValue("key", "another process's"));
  EXPECT_TRUE(defaults.setValue("other", 2)) << "and keeps what is no business of its own";
  EXPECT_THAT(heard, ElementsAre("initial", "mine", "hidden behind mine", "another process's"));
}

}  // namespace
}  // namespace clipwave
