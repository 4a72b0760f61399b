#include "transfer/CopyFiles.h"

#include "tests/support/FakeDotMac.h"
#include "tests/transfer/CopyTest.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class CopyFilesTest : public CopyTest {
 protected:
  bool start(std::optional<std::string> to, const std::vector<std::string>& names = {"a", "b", "c"}) {
    std::vector<CopyEntry> entries;
    for (const std::string& name : names) entries.push_back({folder.write(name, "new " + name), name});
    backEnd = std::make_shared<CopyFiles>(DotMacCopyServices{application, *runLoop, defaults, log, dotMac});
    watched = backEnd;
    return backEnd->copyFiles(entries, to, *this);
  }
  // What was sent since it was last asked for.
  std::vector<std::string> sent() {
    runLoop->runUntilIdle();
    return std::exchange(events, {});
  }

  FakeDotMac dotMac{*runLoop};
  std::weak_ptr<CopyBackEnd> watched;
};

TEST_F(CopyFilesTest, AMembershipThatDoesNotHoldIsExplainedAndNothingIsTouched) {
  dotMac.member.reset();
  for (const auto answer : {Alert::Answer::Alternate, Alert::Answer::Default}) {
    EXPECT_THAT(dotMac.openedPages, IsEmpty());
    shell.answerAlert(answer);
    EXPECT_FALSE(start("/Sites"));
  }
  dotMac.member = "ann";
  dotMac.credentials = kDMNetworkError;
  EXPECT_FALSE(start("/Sites"));
  EXPECT_THAT(sent(), ElementsAre("103 Could not contact to .Mac.  Check your network connection."));
  EXPECT_THAT(log.lines, ElementsAre("transactionHadError", "kDMNetworkError"));
  dotMac.credentials = kDMCredentialsAccepted;
  dotMac.daysLeft = 0;
  EXPECT_FALSE(start("/Sites"));
  backEnd->abort();
  EXPECT_THAT(sent(), IsEmpty());
  EXPECT_THAT(dotMac.openedPages, ElementsAre("sign-up", "renewal"));
  EXPECT_EQ(dotMac.applicationID, "????");
  const std::string noAccount =
      "No .Mac Account!|You have not signed up for .Mac yet or entered your information into the .Mac System "
      "Preference.  Do you want to go to .Mac and sign up?|OK/Cancel";
  EXPECT_THAT(shell.alerts,
              ElementsAre(noAccount, noAccount,
                          ".Mac Account Expired|Your .Mac Account has expired.  You will now be taken to "
                          ".Mac to renew.|OK"));
}

TEST_F(CopyFilesTest, FoldersOfTheDestinationAreMade) {
  EXPECT_FALSE(start("Sites/x")) << "what a path without \"/\" begins with is taken to be there";
  EXPECT_TRUE(start("/Volumes/x//y/", {"a"})) << "a folder like any other on the iDisk";
  EXPECT_THAT(sent(), ElementsAre("a", "completed"));
  EXPECT_EQ(dotMac.disk["/Volumes/x/y/a"], "new a");
}

TEST_F(CopyFilesTest, ExistingFilesOfTheTopLevelAreAskedAboutByTheirBareNames) {
  for (const std::optional<std::string>& top : {std::optional<std::string>(), {""}, {"/"}}) {
    dotMac.disk = {{"/", std::nullopt}, {"/a", "old"}, {"/b", "old"}};
    shell.answerAlert(Alert::Answer::Default);
    shell.answerAlert(Alert::Answer::Alternate);
    EXPECT_TRUE(start(top));
    EXPECT_THAT(sent(), ElementsAre("b", "c", "completed"));
    EXPECT_EQ(*dotMac.disk["/a"] + *dotMac.disk["/b"] + *dotMac.disk["/c"], "oldnew bnew c");
  }
}

TEST_F(CopyFilesTest, ProgressIsReportedEveryHalfSecondOfEachUpload) {
  dotMac.uploadsWait = true;
  ASSERT_TRUE(start({}, {"a", "b"}));
  const auto after = [this](double seconds, std::int64_t transferred, std::int64_t length) {
    dotMac.setProgress(transferred, length);
    clock.tick(Seconds(seconds));
    return sent();
  };
  EXPECT_THAT(after(0.5, 0, 0), ElementsAre("a 0%"));
  EXPECT_THAT(after(0.5, 5'999'999'999, 6'000'000'000), ElementsAre("a 99%"));
  clock.tick(Seconds(0.25));
  dotMac.finishUpload();
  EXPECT_THAT(sent(), ElementsAre("a"));
  EXPECT_THAT(after(0.4375, 1, 2), IsEmpty()) << "the time of each file is its own";
  EXPECT_THAT(after(0.0625, 1, 2), ElementsAre("b 50%"));
  dotMac.finishUpload();
  EXPECT_THAT(sent(), ElementsAre("b", "completed"));
  EXPECT_THAT(after(9, 1, 2), IsEmpty());
  EXPECT_TRUE(watched.expired());
}

TEST_F(CopyFilesTest, AnUploadThatFailsEndsTheCopyOnce) {
  dotMac.failingUploads = {{"/c", kDMInsufficientStorage}};
  ASSERT_TRUE(start({}, {"a", "b", "c", "d"}));
  const auto kept = backEnd;
  EXPECT_THAT(sent(), ElementsAre("a", "b",
                                  "102 iDisk is full.  Delete some files from your iDisk to free up space."));
  kept->abort();
  EXPECT_THAT(sent(), IsEmpty());
  EXPECT_THAT(log.lines, ElementsAre("transactionHadError", "kDMInsufficientStorage"));
}

TEST_F(CopyFilesTest, AbortIsAnsweredFromTheLoopAndNoOtherFileGoesOut) {
  dotMac.uploadsWait = true;
  const auto abort = [this] { std::exchange(backEnd, nullptr)->abort(); };
  ASSERT_TRUE(start({}));
  abort();
  EXPECT_THAT(events, IsEmpty());
  EXPECT_FALSE(dotMac.isUploading());
  EXPECT_THAT(sent(), ElementsAre("aborted"));
  EXPECT_TRUE(watched.expired());

  ASSERT_TRUE(start({}));
  dotMac.finishUpload();  // has arrived, and has not been reported yet
  abort();
  EXPECT_THAT(sent(), ElementsAre("a", "aborted"));
  onFileCopied = abort;
  ASSERT_TRUE(start("/", {"d", "e"}));
  dotMac.finishUpload();
  EXPECT_THAT(sent(), ElementsAre("d", "aborted"));
  EXPECT_FALSE(dotMac.isUploading());
  EXPECT_THAT(log.lines, Each("transactionAborted"));
}

}  // namespace
}  // namespace clipwave
