#include "app/UpdateCheck.h"

#include <gmock/gmock.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

constexpr std::string_view kURL = "http://u.example/version.plist";

std::string list(Value version, Value url = "http://u.example/get?a=%20b") {
  return dataFromPropertyList(Dictionary{{"version", std::move(version)}, {"url", std::move(url)}});
}

class UpdateCheckTest : public Test {
 protected:
  void launch(std::string_view current = "1.5") {
    program_.writeResource("Info", {{"CFBundleVersion", current}});
    program_.writeResource("defaults", {{"shouldCheckForUpdate", true}, {"updateURL", kURL}});
    program_.launch();
  }
  // What is logged when the version list arrives.
  std::vector<std::string> announce(const std::string& list, std::string_view current = "1.5") {
    program_.log.lines.clear();
    program_.urls.data = list;
    launch(current);
    program_.urls.finish();
    return program_.log.lines;
  }
  TestProgram program_;
};

TEST_F(UpdateCheckTest, WhatIsNoLargerNumberIsNoUpdate) {
  for (const std::string& data : {list("1.5"), list("1.49"), list({})})
    EXPECT_THAT(announce(data), ElementsAre("No Updates Available"));
  EXPECT_THAT(announce(list("1.10"), "1.9"), ElementsAre("No Updates Available"));
  EXPECT_THAT(program_.shell.alerts, IsEmpty());
}

TEST_F(UpdateCheckTest, ALargerNumberIsOfferedAsASheetThatLeadsToItsPage) {
  EXPECT_THAT(announce(list("1.51")), IsEmpty());
  EXPECT_THAT(
      program_.shell.alerts,
      ElementsAre("There is an update available!|There is a new version available. Would you like to go "
                  "to http://u.example/get?a=%20b and download it now?|Go to Website/Cancel"));
  EXPECT_EQ(program_.shell.alertSheets.at(0).window, &program_.interface().mainWindow);
  program_.shell.endAlertSheet(Alert::Answer::Default);
  EXPECT_THAT(program_.workspace.calls, ElementsAre("url http://u.example/get?a=%20b"));
}

TEST_F(UpdateCheckTest, WhatCannotBeReadIsPassedOverInSilence) {
  for (const std::string& data : {std::string("<html>no list</html>"), dataFromPropertyList(Array{"9"})})
    EXPECT_THAT(announce(data), IsEmpty()) << data;
  EXPECT_EQ(announce(list("9", {})).size(), 1U) << "a version without its page is only logged";
  launch();
  program_.urls.fail("no route");
  EXPECT_EQ(program_.log.lines.back(), "Cannot check to see if there is an update  Reason:no route");
  EXPECT_THAT(program_.shell.alerts, IsEmpty());
  program_.stop();
  EXPECT_FALSE(program_.urls.isLoading()) << "nobody is there to be called any more";
}

}  // namespace
}  // namespace clipwave
