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
    for (const auto& [key, value] : {std::pair("dotMacMemberName", "ann"),
                                     {"dotMacAddress", "https://d/"},
                                     {"dotMacHomePageURL", "http://pages"}})
      (void)program_.defaults.setValue(key, value);
    program_.channels().setSelectionIndexes({2});
    popUp_.chooseItemWithTag(kDotMacMethod);
    program_.turn();
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
  program_.channels().setSelectionIndexes({1, 2});
  EXPECT_EQ(popUp_.selectedTag(), std::nullopt);
  const auto before = destinations();
  shell_.answerOpenPanel({"/pub"});
  popUp_.chooseItemWithTag(kFolderMethod);
  const OpenPanel& panel = shell_.openPanels.at(0);
  EXPECT_TRUE(!panel.canChooseFiles && panel.canChooseDirectories && panel.canCreateDirectories);
  EXPECT_EQ(panel.message, "Select a folder to publish to:");
  EXPECT_THAT(destinations(), ElementsAre(before[0], kChosen, kChosen));
  program_.turn();
  undo_.undo();
  EXPECT_EQ(destinations(), before);
  EXPECT_EQ(popUp_.selectedTag(), std::nullopt);
  undo_.redo();
  EXPECT_THAT(destinations(), ElementsAre(before[0], kChosen, kChosen));
  EXPECT_EQ(popUp_.selectedTag(), kFolderMethod);
  // The same method again is another folder.
  shell_.answerOpenPanel({"/pub"});
  program_.channels().setSelectionIndexes({0});
  popUp_.chooseItemWithTag(kFolderMethod);
  EXPECT_THAT(destinations(), Each(kChosen));
}

TEST_F(PublishMethodTest, ACancelledPanelTakesTheMethodBackForGoodAndNothingElse) {
  for (const std::size_t row : {2, 0}) {  // of the other method, and of this one already
    program_.channels().setSelectionIndex(row);
    ManagedObject& channel = *program_.channels().selectedObjects().front();
    const auto before = destinations();
    const bool wasSimple = isSimple();
    channel.setValue("vcSubtitle", "in the same pass");
    popUp_.chooseItemWithTag(kFolderMethod);
    EXPECT_EQ(destinations(), before);
    EXPECT_EQ(popUp_.selectedTag(), row == 2 ? kDotMacMethod : kFolderMethod);
    EXPECT_EQ(isSimple(), wasSimple);
    EXPECT_EQ(channel.value("vcSubtitle"), Value("in the same pass"));
    EXPECT_FALSE(undo_.canRedo());
    undo_.undo();
    EXPECT_TRUE(channel.value("vcSubtitle").isNull());
    undo_.redo();
  }
}

TEST_F(PublishMethodTest, DotMacGivesEachChannelPathsOfItsTitleAndTheLayoutFollows) {
  program_.channels().setSelectionIndexes({0, 1, 2});
  ManagedObject& first = *program_.channels().arrangedObjects()[0];
  std::vector<std::string> announced;
  const auto canEdit = first.observe("canEditURLs", [&] { announced.emplace_back("canEditURLs"); });
  const auto icon = first.observe("pathIcon", [&] { announced.emplace_back("pathIcon"); });
  ASSERT_FALSE(isSimple());
  popUp_.chooseItemWithTag(kDotMacMethod);
  std::vector<std::string> expected;
  for (const std::string title : {"Channel 01", "Channel 02", "Channel 03"})
    expected.push_back("2 /Sites/clipwave/" + title + " http://pages/ann http://pages/ann/clipwave/" + title);
  EXPECT_EQ(destinations(), expected);
  EXPECT_TRUE(isSimple());
  EXPECT_THAT(announced, UnorderedElementsAre("canEditURLs", "pathIcon"));
  EXPECT_FALSE(first.value("canEditURLs").boolValue());
  EXPECT_EQ(first.value("pathIcon"), Value("dotmaclogo"));
  EXPECT_TRUE(shell_.alerts.empty());
}

TEST_F(PublishMethodTest, WithoutAnAccountItFallsBackToTheFolderAndOffersToSignUp) {
  program_.dotMac.member.reset();
  for (const auto answer : {Alert::Answer::Alternate, Alert::Answer::Default}) {
    auto expected = destinations();
    shell_.answerAlert(answer);
    popUp_.chooseItemWithTag(kDotMacMethod);
    expected[2][0] = '1';
    EXPECT_EQ(destinations(), expected);
    EXPECT_EQ(popUp_.selectedTag(), kFolderMethod);
    EXPECT_FALSE(isSimple());
    EXPECT_EQ(program_.dotMac.openedPages.size(), answer == Alert::Answer::Default ? 1U : 0U);
  }
  EXPECT_THAT(
      shell_.alerts,
      Each("No .Mac Account!|You have not signed up for .Mac yet or entered your information into the "
           ".Mac System Preference.  Do you want to go to .Mac and sign up?|OK/Cancel"));
  EXPECT_EQ(shell_.alertDetails.at(0).style, Alert::Style::Critical);
}

TEST_F(PublishMethodTest, WithoutASelectedChannelThereIsNothingToChoose) {
  program_.channels().setSelectionIndexes({});
  popUp_.chooseItemWithTag(kFolderMethod);
  program_.stop();
  program_.folder.write("home/.local/share/Clipwave/Clipwave.xml", "no library");
  program_.launch().protocolPopUp.chooseItemWithTag(kFolderMethod);
  EXPECT_TRUE(shell_.openPanels.empty());
}

}  // namespace
}  // namespace clipwave
