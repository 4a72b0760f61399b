#include "app/lanternAppDelegate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class lanternAppDelegateTest : public ::testing::Test {
 protected:
  bool storeExists() { return program_.files.fileExistsAtPath(program_.storePath()); }
  UndoManager* undoManager() {
    return program_.delegate().windowWillReturnUndoManager(program_.interface().mainWindow);
  }
  // Begins an edit of the channel's title that is refused for as long as `accepts_` is false.
  FieldBinding beginEdit() {
    TextField& field = program_.interface().channelTitleTextField;
    field.setValidator([this](const TextField&, std::string_view) { return accepts_; });
    return FieldBinding(field, program_.channels(), "vcTitle", nullptr);
  }
  bool accepts_ = false;
  testing::TestProgram program_;
};

TEST_F(lanternAppDelegateTest, TheFirstLaunchMakesTheFolderAndTheFirstSaveTheFile) {
  program_.start();
  const std::string folder = stringByDeletingLastPathComponent(program_.storePath());
  EXPECT_FALSE(program_.files.fileExistsAtPath(folder));
  EXPECT_EQ(undoManager(), &program_.context().undoManager());
  EXPECT_TRUE(program_.files.fileExistsAtPath(folder));
  program_.files.fail("writeAtomically", program_.storePath());
  program_.channels().add();
  program_.delegate().saveAction();
  EXPECT_THAT(program_.shell.alerts, ElementsAre(HasSubstr("The test says no.|OK")));
  EXPECT_TRUE(program_.context().hasChanges());
  EXPECT_FALSE(storeExists());
  program_.files.failNothing();
  program_.delegate().saveAction();
  EXPECT_TRUE(storeExists());
}

TEST_F(lanternAppDelegateTest, ABrokenStoreIsToldOnceStaysAsItIsAndServesAgainWhenItIsMended) {
  program_.launch();
  program_.delegate().saveAction();
  const std::string whole = testing::readFile(program_.storePath());
  const std::string broken = whole.substr(0, whole.size() / 2);
  program_.stop();
  ASSERT_TRUE(program_.files.writeAtomically(broken, program_.storePath()));

  program_.launch();
  EXPECT_EQ(undoManager(), nullptr);
  EXPECT_THAT(program_.shell.alerts, ElementsAre(HasSubstr(program_.storePath())));
  EXPECT_THAT(program_.channels().arrangedObjects(), IsEmpty());
  EXPECT_EQ(program_.delegate().applicationShouldTerminate(), TerminateReply::TerminateNow);
  EXPECT_EQ(testing::readFile(program_.storePath()), broken);

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
    Error rewritten = program_.delegate().willPresentError(error);
    std::string message = std::exchange(rewritten.localizedDescription, "many");
    EXPECT_EQ(rewritten, error) << "only the message is another";
    return message;
  };
  EXPECT_EQ(shown("ab"), "2 validation errors have occurred:\na\nb\n");
  EXPECT_EQ(shown("abc"), "3 validation errors have occurred:\na\nb\nc\n");
  EXPECT_EQ(shown("abcd"), "4 validation errors have occurred.\nThe first 3 are:\na\nb\nc\n");
  for (const Error& other : {cocoaError(1559, "one"), cocoaError(4, "file"), Error{"other", 1560, "x", {}}}) {
    EXPECT_EQ(program_.delegate().willPresentError(other), other);
  }
}

TEST_F(lanternAppDelegateTest, QuittingStaysForARefusedEditAndAsksAboutAFailedSave) {
  program_.launch();
  const FieldBinding edit = beginEdit();
  program_.interface().channelTitleTextField.edit("News");
  // Whether the application ends when the user gives these answers.
  const auto quits = [this](std::initializer_list<Alert::Answer> answers) {
    for (const Alert::Answer answer : answers) program_.shell.answerAlert(answer);
    program_.application.terminate();
    return program_.application.isTerminated();
  };
  EXPECT_FALSE(quits({}));
  EXPECT_THAT(program_.shell.alerts, IsEmpty());
  accepts_ = true;
  program_.files.fail("writeAtomically", program_.storePath());
  EXPECT_FALSE(quits({Alert::Answer::Default, Alert::Answer::Alternate}));
  EXPECT_THAT(program_.shell.alerts,
              ElementsAre(HasSubstr("The test says no."),
                          "|Could not save changes while quitting. Quit anyway?|Quit anyway/Cancel"));
  EXPECT_TRUE(program_.context().hasChanges());
  EXPECT_TRUE(quits({Alert::Answer::Default, Alert::Answer::Default}));
  EXPECT_FALSE(storeExists());
}

TEST_F(lanternAppDelegateTest, QuittingSavesWhatIsBeingEdited) {
  program_.launch();
  accepts_ = true;
  const FieldBinding edit = beginEdit();
  program_.interface().channelTitleTextField.edit("News");
  program_.application.terminate();
  EXPECT_TRUE(program_.application.isTerminated());
  EXPECT_THAT(testing::readFile(program_.storePath()), HasSubstr("News"));
}

TEST_F(lanternAppDelegateTest, OpenedFilesBecomeOneNewChannelWithTheLastFileOnTop) {
  program_.launch();
  ASSERT_TRUE(program_.defaults.setValue("defaultPodcastPrefix", "Show "));
  // An edit that cannot be kept must not keep its channel selected, either.
  const FieldBinding edit = beginEdit();
  program_.interface().channelTitleTextField.edit("refused");
  program_.delegate().openFiles({"/m/trip.day1.mov", "/m/b.mov", "/m/c"});
  program_.turn();
  EXPECT_EQ(program_.channels().arrangedObjects().size(), 2U);
  EXPECT_EQ(program_.channels().selection().value("vcTitle"), Value("Channel 02"));
  EXPECT_THAT(program_.listed(program_.episodes()), ElementsAre("Show c", "Show b", "Show trip.day1"));
  for (ManagedObject* episode : program_.episodes().arrangedObjects()) {
    EXPECT_TRUE(episode->value("vcAuthor").isNull());
    EXPECT_EQ(episode->value("vcPublishDate"), Value(program_.clock.now()));
  }
}

TEST_F(lanternAppDelegateTest, TheInterfaceFindsItsChoicesAndTheHelp) {
  program_.start();
  EXPECT_THAT(program_.delegate().channelNames(),
              ElementsAre(NamedCode{"Summary", "vcSummary"}, NamedCode{"Subtitle", "vcSubtitle"}));
  EXPECT_THAT(program_.delegate().timezones(), Contains("Europe/Berlin"));
  program_.delegate().showHelp();
  EXPECT_THAT(program_.workspace.calls, IsEmpty());
  const std::string help = program_.folder.write("resources/Clipwave Instructions.pdf", "%PDF");
  program_.delegate().showHelp();
  EXPECT_THAT(program_.workspace.calls, ElementsAre("file " + help));
}

}  // namespace
}  // namespace clipwave
