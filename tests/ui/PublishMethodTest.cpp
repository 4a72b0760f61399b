#include "ui/PublishMethod.h"

#include <gmock/gmock.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class PublishMethodTest : public Test {
 protected:
  // "Channel 01" to "Channel 03", the first two published into folders, the third on the iDisk.
  PublishMethodTest() {
    for (int i = 0; i < 2; ++i) program_.addChannel();
    program_.defaults.setInitialValues(
        {{"dotMacMemberName", "ann"}, {"dotMacAddress", "https://d"}, {"dotMacHomePageURL", "http://pages"}});
    choose({2}, kDotMacMethod);
  }
  void choose(const IndexSet& rows, int tag) {
    program_.channels().setSelectionIndexes(rows);
    popUp_.chooseItemWithTag(tag);
  }
  // Where each channel goes: "tag mediaPath websiteURL vcURL".
  std::vector<std::string> destinations() {
    std::vector<std::string> texts;
    for (ManagedObject* channel : program_.channels().arrangedObjects()) {
      texts.push_back(std::to_string(channel->value("protocolTag").integerValue()));
      for (const char* key : {"mediaPath", "websiteURL", "vcURL"})
        texts.back() += " " + std::string(channel->value(key).stringValue());
    }
    return texts;
  }
  bool isSimple() const { return window_.mainWindow.isSimple(); }

  TestProgram program_;
  MainInterface& window_ = program_.launch();
  PopUpButton& popUp_ = window_.protocolPopUp;
  FakeApplicationShell& shell_ = program_.shell;
  UndoManager& undo_ = program_.context().undoManager();
};

constexpr const char* kChosen = "1 /pub http://127.0.0.1/ http://127.0.0.1/";

TEST_F(PublishMethodTest, AFolderGoesToEverySelectedChannelAndIsTakenBackInOneStep) {
  const auto before = destinations();
  shell_.answerOpenPanel({"/pub"});
  choose({1, 2}, kFolderMethod);
  const OpenPanel& panel = shell_.openPanels.at(0);
  EXPECT_TRUE(!panel.canChooseFiles && panel.canChooseDirectories && panel.canCreateDirectories);
  EXPECT_EQ(panel.message, "Select a folder to publish to:");
  EXPECT_THAT(destinations(), ElementsAre(before[0], kChosen, kChosen));
  undo_.undo();
  EXPECT_EQ(destinations(), before);
  EXPECT_EQ(popUp_.selectedTag(), std::nullopt) << "they differ";
  undo_.redo();
  EXPECT_THAT(destinations(), ElementsAre(before[0], kChosen, kChosen));
  EXPECT_EQ(popUp_.selectedTag(), kFolderMethod);
}

TEST_F(PublishMethodTest, ACancelledPanelTakesTheMethodBackForGoodAndNothingElse) {
  for (const std::size_t row : {2, 0}) {  // of the other method, and of this one already
    ManagedObject& channel = *program_.channels().arrangedObjects()[row];
    const auto before = destinations();
    channel.setValue("vcSubtitle", "in the same pass");
    choose({row}, kFolderMethod);
    EXPECT_EQ(destinations(), before);
    EXPECT_EQ(popUp_.selectedTag(), row == 2 ? kDotMacMethod : kFolderMethod);
    EXPECT_EQ(isSimple(), row == 2);
    EXPECT_FALSE(channel.value("vcSubtitle").isNull() || undo_.canRedo());
    undo_.undo();
    EXPECT_TRUE(channel.value("vcSubtitle").isNull());
    undo_.redo();
  }
}

TEST_F(PublishMethodTest, DotMacGivesEachChannelPathsOfItsTitleAndTheLayoutFollows) {
  ManagedObject& first = *program_.channels().arrangedObjects()[0];
  std::vector<std::string> announced;
  const auto canEdit = first.observe("canEditURLs", [&] { announced.emplace_back("canEditURLs"); });
  const auto icon = first.observe("pathIcon", [&] { announced.emplace_back("pathIcon"); });
  choose({0, 1, 2}, kDotMacMethod);
  std::vector<std::string> expected;
  for (const std::string title : {"Channel 01", "Channel 02", "Channel 03"})
    expected.push_back("2 /Sites/clipwave/" + title + " http://pages/ann http://pages/ann/clipwave/" + title);
  EXPECT_EQ(destinations(), expected);
  EXPECT_TRUE(isSimple());
  EXPECT_THAT(announced, UnorderedElementsAre("canEditURLs", "pathIcon"));
}

TEST_F(PublishMethodTest, WithoutAnAccountItFallsBackToTheFolderAndOffersToSignUp) {
  program_.dotMac.member.reset();
  for (const auto answer : {Alert::Answer::Alternate, Alert::Answer::Default}) {
    auto expected = destinations();
    shell_.answerAlert(answer);
    choose({2}, kDotMacMethod);
    expected[2][0] = '1';
    EXPECT_EQ(destinations(), expected);
    EXPECT_FALSE(isSimple());
    EXPECT_EQ(program_.dotMac.openedPages.size(), answer == Alert::Answer::Default ? 1U : 0U);
  }
  EXPECT_THAT(shell_.alerts, Each(StartsWith("No .Mac Account!|")));
}

TEST_F(PublishMethodTest, WithoutASelectedChannelThereIsNothingToChoose) {
  choose({}, kFolderMethod);
  program_.stop();
  program_.folder.write("home/.local/share/Clipwave/Clipwave.xml", "no library");
  program_.launch().protocolPopUp.chooseItemWithTag(kFolderMethod);
  EXPECT_TRUE(shell_.openPanels.empty());
}

}  // namespace
}  // namespace clipwave
