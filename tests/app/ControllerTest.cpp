#include "app/Controller.h"

#include <gmock/gmock.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class ControllerTest : public Test {
 protected:
  void happened(const std::string& what) { events_.push_back(what); }
  void postRecordings() {
    // Seen in what comes of them: the sheet's name field is disabled, an episode is made.
    TextField& name = program_.controller().recordHandOff().recordWindowController().filenameTextField();
    name.setEnabled(true);
    program_.notifications.post("recordingStarted");
    if (!name.isEnabled()) happened("recording started");
    const auto episodes = program_.episodes().arrangedObjects().size();
    program_.notifications.post("movieCreated", {}, {{"path", "/x/Movie1.mov"}});
    if (program_.episodes().arrangedObjects().size() != episodes) happened("new movie");
  }
  Responder* focus() { return program_.interface().mainWindow.firstResponder(); }

  std::vector<std::string> events_;
  TestProgram program_;
};

TEST_F(ControllerTest, StartUpGoesStepByStepInItsOrder) {
  program_.writeResource("defaults", {{"shouldCheckForUpdate", true}, {"updateURL", "http://u.example/v"}});
  for (const char* name : {"vcmappings", "channelmappings"}) program_.writeResource(name, {});
  Controller& controller = program_.start();
  TableView& table = program_.interface().channelTableView;
  ScrollView& pane = program_.interface().advancedOptionsRSSScrollView;
  pane.setDocumentSize({300, 900});
  controller.publishRun().setIsCopying(true);
  // Each step is seen in what it touches; the two recording notifications tell which is observed by then.
  program_.files.onAccess = [this](std::string_view operation, std::string_view path) {
    if (operation == "contentsAtPath") happened(lastPathComponent(path));
    return std::nullopt;
  };
  const auto tableChanged = table.observe([&] {
    const bool isAdded = !program_.channels().arrangedObjects().empty();
    const char* what = isAdded ? "first channel" : "drags";
    if (events_.back() != what) happened(what);
    if (!isAdded) postRecordings();
  });
  program_.urls.onLoad = [&] { happened("update check"); };
  const auto scrolled = pane.observe([&] {
    happened(pane.scrolledTo() == Point{0, 900} ? "scrolled" : "scrolled elsewhere");
    postRecordings();
    EXPECT_TRUE(controller.publishRun().isCopying());
  });
  controller.awakeFromNib();
  EXPECT_THAT(events_,
              ElementsAre("vcmappings.plist", "channelmappings.plist", "drags", "recording started",
                          "update check", "scrolled", "recording started", "Clipwave.xml", "first channel"));
  EXPECT_FALSE(controller.publishRun().isCopying());
  postRecordings();
  EXPECT_EQ(events_.back(), "new movie");
}

TEST_F(ControllerTest, AChannelOfTheDotMacMethodGoesToTheIDiskUntilTheProgramEnds) {
  program_.launch();
  program_.dotMac.uploadsWait = true;
  program_.addChannel().setValue("protocolTag", 2);
  program_.channels().arrangedObjects().front()->setValue("vcPublish", false);
  program_.interface().publishButton.performClick();
  program_.turn();
  EXPECT_TRUE(program_.dotMac.isUploading());
  program_.stop();
  EXPECT_FALSE(program_.dotMac.isUploading());
}

TEST_F(ControllerTest, AnEmptyLibraryGetsOneChannelAndTheFocusLandsInItsTitle) {
  program_.start().awakeFromNib();
  EXPECT_EQ(focus(), &program_.interface().channelTitleTextField);
  EXPECT_TRUE(program_.channels().selection().value("vcTitle").isNull());
  program_.turn();
  EXPECT_EQ(program_.channels().selection().value("vcTitle"), Value("Channel 01"));
  EXPECT_EQ(program_.channels().selection().value("vcAuthor"), Value("Alex Example"));
  program_.interface().mainWindow.makeFirstResponder(nullptr);
  program_.addChannel();
  EXPECT_EQ(focus(), &program_.interface().mainWindow) << "only the first change moves the focus";

  program_.delegate().saveAction();
  program_.launch();
  EXPECT_THAT(program_.listed(program_.channels()), ElementsAre("Channel 01", "Channel 02"));
  EXPECT_EQ(focus(), &program_.interface().mainWindow);
  EXPECT_THAT(program_.urls.loads, IsEmpty()) << "the check was not asked for";
}

TEST_F(ControllerTest, TheWindowFollowsTheSelectionAndTheMethodUntilTheControllerGoes) {
  MainWindow& window = program_.launch().mainWindow;
  View& lowerView = program_.interface().lowerView;
  const Rect advanced{{10, 74}, {600, 240}};
  lowerView.setFrame(advanced);
  program_.addChannel().setValue("protocolTag", 2);
  for (int times = 0; times < 2; ++times) program_.notifications.post(kProtocolDidChange);
  EXPECT_TRUE(window.isSimple());
  EXPECT_EQ(lowerView.frame(), (Rect{{10, 74}, {600, 282}}));
  program_.channels().setSelectionIndex(0);
  EXPECT_FALSE(window.isSimple());
  EXPECT_EQ(lowerView.frame(), advanced);
  program_.stop();
  // Whom these would call is gone.
  for (const auto name : {kProtocolDidChange, kRecordingStarted, kMovieCreated})
    program_.notifications.post(name);
}

}  // namespace
}  // namespace clipwave
