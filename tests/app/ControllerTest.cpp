#include "app/Controller.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

class ControllerTest : public ::testing::Test, public RecordingObserver {
 protected:
  void recordingStarted(const Notification&) override { happened("recording started"); }
  void newMovie(const Notification&) override { happened("new movie"); }
  void happened(const std::string& what) { events_.push_back(what); }
  Responder* focus() { return program_.interface().mainWindow.firstResponder(); }

  std::vector<std::string> events_;
  testing::TestProgram program_;
};

TEST_F(ControllerTest, StartUpGoesStepByStepInItsOrder) {
  program_.writeResource("defaults", {{"shouldCheckForUpdate", true}, {"updateURL", "http://u.example/v"}});
  for (const char* name : {"vcmappings", "channelmappings"}) program_.writeResource(name, {});
  Controller& controller = program_.start().controller();
  MainInterface& interface = program_.interface();
  ScrollView& pane = interface.advancedOptionsRSSScrollView;
  pane.setDocumentSize({300, 900});
  controller.publishRun().setIsCopying(true);
  controller.setRecordingObserver(this);
  // Each step is seen in what it touches; the two recording notifications tell which is observed by then.
  const auto postRecordings = [this] {
    program_.notifications.post("recordingStarted");
    program_.notifications.post("movieCreated");
  };
  program_.files.onAccess = [this](std::string_view operation, std::string_view path) {
    if (operation == "contentsAtPath") happened(lastPathComponent(path));
    return std::nullopt;
  };
  const auto tableChanged = interface.channelTableView.observe([&] {
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
  program_.notifications.post("movieCreated");
  EXPECT_EQ(events_.back(), "new movie");
}

TEST_F(ControllerTest, AnEmptyLibraryGetsOneChannelAndTheFocusLandsInItsTitle) {
  program_.start().controller().awakeFromNib();
  EXPECT_THAT(program_.channels().arrangedObjects(), SizeIs(1));
  EXPECT_TRUE(program_.channels().selection().value("vcTitle").isNull());
  EXPECT_EQ(focus(), &program_.interface().channelTitleTextField);
  EXPECT_FALSE(program_.controller().addedNewChannel());
  program_.loop->runUntilIdle();
  EXPECT_THAT(program_.channels().arrangedObjects(), SizeIs(1));
  EXPECT_EQ(program_.channels().selection().value("vcTitle"), Value("Channel 01"));

  program_.interface().mainWindow.makeFirstResponder(nullptr);
  program_.channels().add();
  EXPECT_EQ(focus(), &program_.interface().mainWindow);
  program_.loop->runUntilIdle();
  program_.delegate().saveAction();
  program_.launch();
  EXPECT_THAT(program_.channels().arrangedObjects(), SizeIs(2)) << "a library with channels gets none";
  EXPECT_EQ(focus(), &program_.interface().mainWindow);
  EXPECT_THAT(program_.urls.loads, IsEmpty());
}

TEST_F(ControllerTest, TheAuthorIsTheUserAndWithoutTheResourceThereAreNoInitialValues) {
  program_.start();
  EXPECT_EQ(program_.defaults.string("defaultAuthor"), "Alex Example");
  EXPECT_EQ(program_.defaults.string("defaultFilename"), "show");
  ASSERT_TRUE(program_.defaults.setValue("defaultAuthor", "Pen Name"));
  program_.start();
  EXPECT_EQ(program_.defaults.string("defaultAuthor"), "Pen Name");

  program_.defaults.setInitialValues({});
  ASSERT_TRUE(program_.files.removeFileAtPath(program_.folder / "resources/defaults.plist"));
  program_.start();
  EXPECT_THAT(program_.defaults.initialValues(), IsEmpty());
}

TEST_F(ControllerTest, TheLaterDocumentTypeWinsAndCaseCounts) {
  const auto type = [](Array extensions, Value mimeType) {
    return Dictionary{{"CFBundleTypeExtensions", std::move(extensions)},
                      {"CFBundleTypeMIMETypes", std::move(mimeType)}};
  };
  program_.writeResource("vcmappings", {{"title", "vcTitle"}});
  program_.writeResource(
      "Info", {{"CFBundleDocumentTypes", Array{type({"mov", "mp4"}, "video/quicktime"), Dictionary(),
                                               type({"mp4", "MOV"}, Array{"video/mp4", "video/x"})}}});
  program_.launch();
  EXPECT_THAT(
      program_.controller().types(),
      ElementsAre(Pair("MOV", "video/mp4"), Pair("mov", "video/quicktime"), Pair("mp4", "video/mp4")));
  EXPECT_THAT(program_.controller().vodcastMappings(), ElementsAre(Pair("title", "vcTitle")));
  EXPECT_THAT(program_.controller().channelMappings(), IsEmpty());
}

TEST_F(ControllerTest, TheWindowFollowsTheSelectionAndTheMethodUntilTheControllerGoes) {
  program_.launch();
  MainWindow& window = program_.interface().mainWindow;
  ManagedObject& mac = *program_.channels().add();
  program_.loop->runUntilIdle();
  mac.setValue("protocolTag", 2);
  EXPECT_FALSE(window.isSimple());
  program_.notifications.post(kProtocolDidChange);
  EXPECT_TRUE(window.isSimple());
  program_.channels().setSelectionIndex(1);
  EXPECT_FALSE(window.isSimple());
  program_.controller().setRecordingObserver(this);
  program_.stop();
  for (const std::string_view name : {kProtocolDidChange, std::string_view("movieCreated")}) {
    program_.notifications.post(name);
  }
  EXPECT_THAT(events_, IsEmpty());
}

TEST_F(ControllerTest, TheAboutWindowIsMadeOnceAndComesToTheFront) {
  WindowController& about = program_.start().controller().aboutWindowController();
  EXPECT_EQ(about.windowNibName(), "About");
  program_.controller().showAboutWindow();
  EXPECT_TRUE(about.window().isKeyWindow());
  EXPECT_EQ(&program_.controller().aboutWindowController(), &about);
}

TEST_F(ControllerTest, RefusedTitlesAreToldInTheWordsOfTheStringsTable) {
  program_.writeResource("vcTitle", {{"The channel's movie folder cannot be named \"%@\". Please select a "
                                      "different channel name.",
                                      "Nicht %@!"}});
  program_.launch();
  const Validation answer = program_.channels().selection().commitValue("vcTitle", "..");
  ASSERT_TRUE(answer.error);
  EXPECT_EQ(answer.error->localizedDescription, "Nicht ..!");
}

}  // namespace
}  // namespace clipwave
