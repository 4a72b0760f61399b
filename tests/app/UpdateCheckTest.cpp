#include "app/UpdateCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::string_view kURL = "http://u.example/version.plist";

class UpdateCheckTest : public ::testing::Test {
 protected:
  // The version list arrives; `current` is the running version.
  void announce(const std::string& list, const char* current = "1.5") {
    program_.log.lines.clear();
    program_.writeResource("Info", {{"CFBundleVersion", current}});
    program_.writeResource("defaults", {{"shouldCheckForUpdate", true}, {"updateURL", kURL}});
    program_.launch();
    program_.urls.data = list;
    program_.urls.finish();
  }
  static std::string list(Value version, Value url = "http://u.example/get?a=%20b") {
    return dataFromPropertyList(Dictionary{{"version", std::move(version)}, {"url", std::move(url)}});
  }
  testing::TestProgram program_;
};

TEST_F(UpdateCheckTest, NothingIsOfferedThatIsNoLargerNumber) {
  for (const std::string& data : {list("1.5"), list(1.5), list("1.49"), list({})}) {
    announce(data);
    EXPECT_THAT(program_.log.lines, ElementsAre("No Updates Available"));
  }
  announce(list("1.10"), "1.9");
  EXPECT_THAT(program_.log.lines, ElementsAre("No Updates Available"));
  EXPECT_THAT(program_.shell.alerts, IsEmpty());
  EXPECT_EQ(program_.urls.reads, program_.urls.loads);
}

TEST_F(UpdateCheckTest, ALargerNumberIsOfferedAsASheetThatLeadsToItsPage) {
  announce(list("1.51"));
  EXPECT_THAT(
      program_.shell.alerts,
      ElementsAre("There is an update available!|There is a new version available. Would you like to go "
                  "to http://u.example/get?a=%20b and download it now?|Go to Website/Cancel"));
  EXPECT_EQ(program_.shell.alertSheets.front().window, &program_.interface().mainWindow);
  program_.shell.endAlertSheet(Alert::Answer::Alternate);
  EXPECT_THAT(program_.workspace.calls, IsEmpty());

  announce(list(2));
  program_.shell.endAlertSheet(Alert::Answer::Default);
  EXPECT_THAT(program_.workspace.calls, ElementsAre("url http://u.example/get?a=%20b"));
}

TEST_F(UpdateCheckTest, WhatCannotBeReadIsPassedOverInSilence) {
  for (const std::string& data : {std::string("<html>no list</html>"), list("9", "http://u.example/ä"),
                                  dataFromPropertyList(Array{"9"}), std::string()}) {
    announce(data);
    EXPECT_THAT(program_.log.lines, IsEmpty()) << data;
  }
  announce(list("9", {}));
  EXPECT_EQ(program_.log.lines.size(), 1U) << "a version without its page is only logged";
  EXPECT_THAT(program_.shell.alerts, IsEmpty());
}

TEST_F(UpdateCheckTest, AFailedLoadIsOnlyLogged) {
  program_.writeResource("defaults", {{"shouldCheckForUpdate", true}, {"updateURL", kURL}});
  program_.launch();
  EXPECT_THAT(program_.urls.loads, ElementsAre(kURL));
  program_.urls.fail("no route");
  EXPECT_THAT(program_.log.lines, ElementsAre("Cannot check to see if there is an update  Reason:no route"));
  EXPECT_THAT(program_.shell.alerts, IsEmpty());
  EXPECT_THAT(program_.urls.reads, IsEmpty());
}

}  // namespace
}  // namespace clipwave
