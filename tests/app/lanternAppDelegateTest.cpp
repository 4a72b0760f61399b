#include "app/lanternAppDelegate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/appkit/FieldBinding.h"
#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class lanternAppDelegateTest : public ::testing::Test {
 protected:
  Value channelTitle() { return program_.channels().selection().value("vcTitle"); }
  testing::TestProgram program_;
};

TEST_F(lanternAppDelegateTest, TheFirstLaunchMakesTheFolderAndTheFirstSaveTheFile) {
  program_.start();
  EXPECT_FALSE(program_.files.fileExistsAtPath(program_.storeFolder()));
  ManagedObjectContext* context = program_.delegate().managedObjectContext();
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(program_.delegate().managedObjectContext(), context);
  EXPECT_EQ(program_.delegate().windowWillReturnUndoManager(program_.interface().mainWindow),
            &context->undoManager());
  EXPECT_TRUE(program_.files.fileExistsAtPath(program_.storeFolder()));
  EXPECT_FALSE(program_.files.fileExistsAtPath(program_.storePath()));
  program_.delegate().saveAction();
  EXPECT_TRUE(program_.files.fileExistsAtPath(program_.storePath()));
}

TEST_F(lanternAppDelegateTest, AFailedSaveIsShownAndKeepsTheChangesInMemory) {
  program_.launch();
  program_.files.fail("writeAtomically", program_.storePath());
  program_.delegate().saveAction();
  ASSERT_THAT(program_.shell.alerts, SizeIs(1));
  EXPECT_THAT(program_.shell.alerts[0], HasSubstr("The test says no.|OK"));
  EXPECT_TRUE(program_.delegate().managedObjectContext()->hasChanges());
}

TEST_F(lanternAppDelegateTest, ABrokenStoreIsToldOnceStaysAsItIsAndServesAgainWhenItIsMended) {
  program_.launch();
  program_.delegate().saveAction();
  program_.stop();
  const std::string whole = testing::readFile(program_.storePath());
  const std::string broken = whole.substr(0, whole.size() / 2);
  const std::string inFolder = program_.storePath().substr(program_.folder.path().size() + 1);
  program_.folder.write(inFolder, broken);

  program_.launch();
  EXPECT_EQ(program_.delegate().windowWillReturnUndoManager(program_.interface().mainWindow), nullptr);
  ASSERT_THAT(program_.shell.alerts, SizeIs(1));
  EXPECT_THAT(program_.shell.alerts[0], HasSubstr(program_.storePath()));
  EXPECT_THAT(program_.channels().arrangedObjects(), IsEmpty());
  EXPECT_EQ(program_.delegate().applicationShouldTerminate(), TerminateReply::TerminateNow);
  EXPECT_EQ(testing::readFile(program_.storePath()), broken);

  program_.folder.write(inFolder, whole);
  program_.delegate().saveAction();
  EXPECT_THAT(program_.channels().arrangedObjects(), SizeIs(1));
  EXPECT_THAT(program_.shell.alerts, SizeIs(1));
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
  const auto shown = [this](std::size_t count) {
    Error error = cocoaError(kValidationMultipleErrorsError, "many");
    for (std::size_t i = 0; i < count; ++i) {
      error.detailedErrors.push_back(cocoaError(kKeyValueValidationError, std::string(1, "abcd"[i])));
    }
    Error rewritten = program_.delegate().willPresentError(error);
    std::string message = std::exchange(rewritten.localizedDescription, "many");
    EXPECT_EQ(rewritten, error) << "only the message is another";
    return message;
  };
  EXPECT_EQ(shown(2), "2 validation errors have occurred:\na\nb\n");
  EXPECT_EQ(shown(3), "3 validation errors have occurred:\na\nb\nc\n");
  EXPECT_EQ(shown(4), "4 validation errors have occurred.\nThe first 3 are:\na\nb\nc\n");
  for (const Error& other : {cocoaError(1559, "one"), cocoaError(4, "file"), Error{"other", 1560, "x", {}}}) {
    EXPECT_EQ(program_.delegate().willPresentError(other), other);
  }
}

TEST_F(lanternAppDelegateTest, QuittingCommitsThePendingEditAndSavesOrStaysWhenItIsRefused) {
  program_.launch();
  TextField& field = program_.interface().channelTitleTextField;
  const FieldBinding binding(field, program_.channels(), "vcTitle", nullptr);
  bool accepts = false;
  field.setValidator([&accepts](const TextField&, std::string_view) { return accepts; });
  field.edit("News");
  program_.application.terminate();
  EXPECT_FALSE(program_.application.isTerminated());
  EXPECT_THAT(program_.shell.alerts, IsEmpty());
  EXPECT_FALSE(program_.files.fileExistsAtPath(program_.storePath()));

  accepts = true;
  program_.application.terminate();
  EXPECT_TRUE(program_.application.isTerminated());
  EXPECT_THAT(testing::readFile(program_.storePath()), HasSubstr("News"));
}

TEST_F(lanternAppDelegateTest, QuittingAsksWhenTheSaveFails) {
  program_.launch();
  program_.files.fail("writeAtomically", program_.storePath());
  program_.shell.answerAlert(Alert::Answer::Default);    // the error
  program_.shell.answerAlert(Alert::Answer::Alternate);  // the question
  program_.application.terminate();
  EXPECT_FALSE(program_.application.isTerminated());
  EXPECT_TRUE(program_.delegate().managedObjectContext()->hasChanges());
  ASSERT_THAT(program_.shell.alerts, SizeIs(2));
  EXPECT_EQ(program_.shell.alerts[1],
            "|Could not save changes while quitting. Quit anyway?|Quit anyway/Cancel");

  program_.shell.answerAlert(Alert::Answer::Default);
  program_.shell.answerAlert(Alert::Answer::Default);
  program_.application.terminate();
  EXPECT_TRUE(program_.application.isTerminated());
  EXPECT_FALSE(program_.files.fileExistsAtPath(program_.storePath()));
}

TEST_F(lanternAppDelegateTest, OpenedFilesBecomeOneNewChannelWithTheLastFileOnTop) {
  program_.launch();
  ASSERT_TRUE(program_.defaults.setValue("defaultPodcastPrefix", "Show "));
  // An edit that cannot be kept must not keep its channel, either.
  TextField& field = program_.interface().channelTitleTextField;
  const FieldBinding binding(field, program_.channels(), "vcTitle", nullptr);
  field.setValidator([](const TextField&, std::string_view) { return false; });
  field.edit("refused");

  program_.delegate().openFiles({"/m/trip.day1.mov", "/m/b.mov", "/m/c"});
  program_.loop->runUntilIdle();
  EXPECT_EQ(program_.channels().arrangedObjects().size(), 2U);
  EXPECT_EQ(channelTitle(), Value("Channel 02"));
  std::vector<std::string> titles;
  for (ManagedObject* episode : program_.episodes().arrangedObjects()) {
    titles.emplace_back(episode->value("vcTitle").stringValue());
    EXPECT_TRUE(episode->value("vcAuthor").isNull());
    EXPECT_EQ(episode->value("vcPublishDate"), Value(program_.clock.now()));
  }
  EXPECT_THAT(titles, ElementsAre("Show c", "Show b", "Show trip.day1"));
  program_.delegate().openFiles({});
  program_.loop->runUntilIdle();
  EXPECT_EQ(channelTitle(), Value("Channel 03"));
}

TEST_F(lanternAppDelegateTest, TheInterfaceFindsItsChoicesAndTheHelp) {
  program_.start();
  EXPECT_THAT(program_.delegate().channelNames(),
              ElementsAre(NamedCode{"Summary", "vcSummary"}, NamedCode{"Subtitle", "vcSubtitle"}));
  EXPECT_THAT(program_.delegate().timezones(), ::testing::Contains("Europe/Berlin"));
  program_.delegate().showHelp();
  EXPECT_THAT(program_.workspace.calls, IsEmpty());
  const std::string help = program_.folder.write("resources/Clipwave Instructions.pdf", "%PDF");
  program_.delegate().showHelp();
  EXPECT_THAT(program_.workspace.calls, ElementsAre("file " + help));
}

}  // namespace
}  // namespace clipwave
