#include "app/lanternAppDelegate.h"

#include <gmock/gmock.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class lanternAppDelegateTest : public Test {
 protected:
  TestProgram program_;
};

TEST_F(lanternAppDelegateTest, ABrokenStoreIsToldOnceStaysAsItIsAndServesAgainWhenItIsMended) {
  program_.launch();
  program_.delegate().saveAction();
  const std::string whole = readFile(program_.storePath());
  const std::string broken = whole.substr(0, whole.size() / 2);
  program_.stop();
  ASSERT_TRUE(program_.files.writeAtomically(broken, program_.storePath()));

  program_.launch();
  EXPECT_EQ(program_.delegate().windowWillReturnUndoManager(program_.interface().mainWindow), nullptr);
  EXPECT_THAT(program_.shell.alerts, ElementsAre(HasSubstr(program_.storePath())));
  EXPECT_THAT(program_.channels().arrangedObjects(), IsEmpty());
  EXPECT_EQ(program_.delegate().applicationShouldTerminate(), TerminateReply::TerminateNow);
  EXPECT_EQ(readFile(program_.storePath()), broken);

  ASSERT_TRUE(program_.files.writeAtomically(whole, program_.storePath()));
  program_.delegate().saveAction();
  EXPECT_THAT(program_.listed(program_.channels()), ElementsAre("Channel 01"));
  EXPECT_EQ(program_.shell.alerts.size(), 1U);
}

TEST_F(lanternAppDelegateTest, WithoutAHomeFolderTheUserIsToldAndTheApplicationEnds) {
  program_.process.home = "";
  program_.launch();
  EXPECT_THAT(program_.shell.alerts, ElementsAre("Alert|Can't find application support folder|Quit"));
  EXPECT_TRUE(program_.application.isTerminated());
  EXPECT_THAT(program_.channels().arrangedObjects(), IsEmpty());
}

TEST_F(lanternAppDelegateTest, SeveralValidationErrorsAreCountedAndTheFirstThreeTold) {
  program_.start();
  const auto shown = [this](std::string_view details) {
    Error error = cocoaError(kValidationMultipleErrorsError, "many");
    for (const char detail : details)
      error.detailedErrors.push_back(cocoaError(1024, std::string(1, detail)));
    return program_.delegate().willPresentError(error).localizedDescription;
  };
  EXPECT_EQ(shown("abc"), "3 validation errors have occurred:\na\nb\nc\n");
  EXPECT_EQ(shown("abcd"), "4 validation errors have occurred.\nThe first 3 are:\na\nb\nc\n");
}

TEST_F(lanternAppDelegateTest, QuittingStaysForARefusedEditAndAsksAboutAFailedSave) {
  program_.launch();
  bool accepts = false;
  TextField& field = program_.interface().channelTitleTextField;
  field.setValidator([&accepts](const TextField&, std::string_view) { return accepts; });
  const FieldBinding edit(field, program_.channels(), "vcTitle", nullptr);
  field.edit("News");
  // Whether the application ends when the user gives these answers.
  const auto quits = [this](std::initializer_list<Alert::Answer> answers) {
    for (const Alert::Answer answer : answers) program_.shell.answerAlert(answer);
    program_.application.terminate();
    return program_.application.isTerminated();
  };
  EXPECT_FALSE(quits({}));
  EXPECT_THAT(program_.shell.alerts, IsEmpty());
  accepts = true;
  program_.files.fail("writeAtomically", program_.storePath());
  EXPECT_FALSE(quits({Alert::Answer::Default, Alert::Answer::Alternate}));
  EXPECT_THAT(program_.shell.alerts,
              ElementsAre(HasSubstr("The test says no."),
                          "|Could not save changes while quitting. Quit anyway?|Quit anyway/Cancel"));
  EXPECT_TRUE(program_.context().hasChanges());
  program_.files.failNothing();
  EXPECT_TRUE(quits({}));
  EXPECT_THAT(readFile(program_.storePath()), HasSubstr("News"));
}

}  // namespace
}  // namespace clipwave
