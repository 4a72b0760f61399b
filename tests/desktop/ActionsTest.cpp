// The program's commands as the user gives them, through menus, keys and buttons, over the real platform.
#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <filesystem>

#include "tests/desktop/RunningDesktop.h"
#include "tests/support/LoopbackServer.h"

namespace clipwave::testing {
namespace {
using namespace ::testing;

constexpr const char* kFeed =
    "<?xml version='1.0'?><rss><channel><title>Old show</title><item><title>One</title></item>"
    "<item><title>Two</title></item></channel></rss>";

class Actions : public RunningDesktop {
 protected:
  std::string clipboard() { return QApplication::clipboard()->text().toStdString(); }
};

TEST_F(Actions, AFirstStartPutsTheCursorIntoTheTitleOfItsChannel) {
  start();
  EXPECT_THAT(titles(channels()), ElementsAre("Channel 01"));
  EXPECT_TRUE(find("channelTitleTextField").hasFocus());
  EXPECT_EQ(find<QTabWidget>("lowerTabs").currentWidget()->objectName(), "channelPage");
  QTest::keyClicks(QApplication::focusWidget(), "Cooking");
  press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_THAT(saved(), HasSubstr("Cooking"));
  end();
  start();
  EXPECT_THAT(titles(channels()), ElementsAre("Cooking"));
  EXPECT_FALSE(find("channelTitleTextField").hasFocus());
}

TEST_F(Actions, ClosingTheWindowSavesAndQuits) {
  start();
  press(Qt::Key_N, Qt::ControlModifier);
  window().close();
  turn();
  EXPECT_TRUE(hasQuit());
  EXPECT_THAT(saved(), HasSubstr("Channel 02"));
}

TEST_F(Actions, AFailureToSaveIsToldAndAskedAboutOnTheWayOut) {
  start();
  std::filesystem::remove_all(home / "data/Clipwave");
  home.write("data/Clipwave", "no folder");
  answer("OK");
  press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_THAT(alerts(), SizeIs(1));
  answer("OK");
  answer("Cancel");
  press(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_THAT(alerts(), ElementsAre(_, "|Could not save changes while quitting. Quit anyway?"));
  EXPECT_FALSE(hasQuit());
  answer("OK");
  answer("Quit anyway");
  window().close();
  turn();
  EXPECT_TRUE(hasQuit());
}

TEST_F(Actions, PreferencesTakeGoodEntriesAndHoldTheProgramMeanwhile) {
  start();
  int ticks = 0;
  const auto timer = desktop().runLoop().scheduleRepeatingTimer(Seconds(0.01), [&] { ++ticks; });
  const auto& defaults = desktop().program().services().defaults;
  reply([&](QDialog& dialog) {
    const int before = ticks;
    QTest::qWait(100);
    EXPECT_EQ(ticks, before) << "timers wait";
    type("defaultPodcastPrefixField", "Pod ");
    click("noConfirmBox");
    const std::pair<const char*, const char*> bad[] = {{"minsplitField", "wide"},
                                                       {"dotMacAddressField", "http://disk.example.org/ann"},
                                                       {"passwordField", "secret"}};
    for (const auto& [field, text] : bad) {
      type(field, text);
      answer("OK");
      clickButton(dialog, "Done");
      EXPECT_TRUE(dialog.isVisible()) << field;
      EXPECT_EQ(find<QLineEdit>(field).text(), text) << "as typed";
      turn();
      press(Qt::Key_Escape);
      EXPECT_TRUE(dialog.isVisible()) << "Escape ends the edit first";
      EXPECT_EQ(find<QLineEdit>(field).text(), text == std::string("wide") ? "120" : "");
    }
    type("updateURLField", "ftp://example.org");
    clickButton(dialog, "Done");
    EXPECT_TRUE(dialog.isVisible()) << "refused without a word";
    press(Qt::Key_Escape);
    type("minsplitField", "90");
    clickButton(dialog, "Done");
    EXPECT_FALSE(dialog.isVisible());
  });
  choose("actionPreferences");
  EXPECT_TRUE(until([&] { return allReplied() && ticks > 0; }));
  EXPECT_THAT(alerts(), ElementsAre(HasSubstr("Please enter a number"), HasSubstr("Over plain http"),
                                    HasSubstr("server and the member name")));
  EXPECT_EQ(defaults.string("defaultPodcastPrefix"), "Pod ");
  EXPECT_TRUE(defaults.boolean("noConfirm"));
  EXPECT_EQ(defaults.value("minsplitview").doubleValue(), 90);
  EXPECT_TRUE(dropped("vcastTableView", {home.write("a.mov", "a")}));
  EXPECT_THAT(titles(episodes()), ElementsAre("Pod a"));
}

TEST_F(Actions, AFeedIsImportedFromAFileAndFromAnAddress) {
  LoopbackServer server;
  server.answer("/feed.xml", httpResponse(200, kFeed));
  server.answer("/page", httpResponse(200, "<html><body/></html>"));
  start();
  choosePath(home.write("feed.xml", kFeed));
  choose("actionImportFile");
  ASSERT_TRUE(until([&] { return titles(channels()).size() == 2; }));
  EXPECT_THAT(titles(episodes()), UnorderedElementsAre("One", "Two"));
  QWidget* sheet = shown(state().rssFeedWindow);
  for (const auto& [address, message] : std::initializer_list<std::pair<std::string, std::string>>{
           {server.url("/page"), "Error loading URL!|Invalid RSS feed."},
           {"no address", "Error loading URL!|Invalid RSS feed."},
           {server.url("/feed.xml"), ""}}) {
    choose("actionImportURL");
    ASSERT_TRUE(sheet->isVisible());
    type("rssURLBox", QString::fromStdString(address));
    if (!message.empty())
      reply([](QDialog& dialog) {
        const QCursor* cursor = QApplication::overrideCursor();
        EXPECT_TRUE(cursor != nullptr && cursor->shape() == Qt::ArrowCursor);
        clickButton(dialog, "OK");
      });
    press(Qt::Key_Return);
    EXPECT_TRUE(until([&] { return !sheet->isVisible() && allReplied(); }));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(alerts(), message.empty() ? std::vector<std::string>() : std::vector{message}) << address;
  }
  EXPECT_THAT(titles(channels()), SizeIs(3));
  choose("actionImportURL");
  turn();
  press(Qt::Key_Escape);
  EXPECT_FALSE(sheet->isVisible());
}

TEST_F(Actions, AddressesThatArriveAreImportedOnceNothingIsInTheirWay) {
  LoopbackServer server;
  server.answer("/feed.xml", httpResponse(200, kFeed));
  answer("OK");
  start({"itpc" + server.url("/feed.xml").substr(4), "pcast://", home.write("a.mov", "a")});
  ASSERT_TRUE(until([&] { return allReplied(); }));
  EXPECT_THAT(alerts(), ElementsAre("Error loading URL!|Invalid RSS feed."));
  EXPECT_THAT(titles(channels()), UnorderedElementsAre("Channel 01", "Channel 02", "Old show"));
  choose("actionImportURL");
  Arrivals arrivals(desktop().program());
  arrivals.take({server.url("/feed.xml")});
  until([] { return false; }, 500);
  EXPECT_EQ(titles(channels()).size(), 3U) << "the sheet holds it up";
  press(Qt::Key_Escape);
  EXPECT_TRUE(until([&] { return titles(channels()).size() == 4; }));
}

TEST_F(Actions, SubscriptionLinksAreLeftAloneUntilTheUserAsks) {
  const EnvironmentVariable systems("XDG_DATA_DIRS", (home / "systems").c_str());
  const EnvironmentVariable session("XDG_CURRENT_DESKTOP", "X:Y");
  const auto list = [&] { return readFile(home / "config/mimeapps.list"); };
  start();
  reply([&](QDialog& dialog) {
    auto& box = find<QCheckBox>("opensSubscriptionsBox");
    answer("OK");
    click(box);
    EXPECT_FALSE(box.isChecked()) << "without its entry there is nothing that the desktop could start";
    EXPECT_EQ(list(), "");
    home.write("data/applications/clipwave-subscribe.desktop", "[Desktop Entry]\n");
    for (const bool isOn : {true, false, true, false}) {
      click(box);
      EXPECT_EQ(box.isChecked(), isOn);
      for (const char* scheme : {"itpc", "pcast"}) {
        const std::string line = std::string("x-scheme-handler/") + scheme + "=clipwave-subscribe.desktop;\n";
        EXPECT_EQ(list().find(line) != std::string::npos, isOn) << scheme;
      }
    }
    // Only what is asked behind the list that speaks of the first scheme cannot be read.
    home.makeFolder("config/y-mimeapps.list");
    home.write("config/x-mimeapps.list", "[Default Applications]\nx-scheme-handler/itpc=own.desktop\n");
    answer("OK");
    click(box);
    EXPECT_FALSE(box.isChecked());
    EXPECT_THAT(readFile(home / "config/x-mimeapps.list"), Not(HasSubstr("clipwave-subscribe")));
    clickButton(dialog, "Done");
  });
  choose("actionPreferences");
  EXPECT_TRUE(until([&] { return allReplied(); }));
  EXPECT_THAT(alerts(), ElementsAre(HasSubstr("has to be installed"), HasSubstr("y-mimeapps.list")));
}

TEST_F(Actions, AnUpdateIsOfferedOnASheetThatLeadsToItsPage) {
  LoopbackServer server;
  const std::string list =
      dataFromPropertyList(Dictionary{{"version", "999"}, {"url", "http://example.org/get"}});
  server.answer("/versions", httpResponse(200, list));
  set({{"shouldCheckForUpdate", true}, {"updateURL", server.url("/versions")}});
  answer("Go to Website");
  start();
  EXPECT_TRUE(until([&] { return opened() == "http://example.org/get\n"; })) << opened();
  EXPECT_THAT(alerts(), ElementsAre(HasSubstr("There is an update available!")));
}

TEST_F(Actions, HelpAndTheAboutWindowOpen) {
  start();
  auto& help = *window().findChild<QAction*>("actionHelp");
#ifdef CLIPWAVE_HELP
  EXPECT_TRUE(help.isEnabled());
  press(Qt::Key_F1);
  EXPECT_TRUE(until([&] { return opened().ends_with("Clipwave Instructions.pdf\n"); }));
#else
  EXPECT_FALSE(help.isEnabled()) << "there is no document to open";
#endif
  choose("actionAbout");
  QWidget* about = shown(desktop().program().controller().aboutWindowController().window());
  ASSERT_TRUE(about->isVisible());
  EXPECT_TRUE(until([&] { return QApplication::activeWindow() == about; }));
  press(Qt::Key_Escape);
  EXPECT_FALSE(about->isVisible());
}

TEST_F(Actions, DeletingAChannelAsksAndCanBeUndone) {
  start();
  press(Qt::Key_N, Qt::ControlModifier);
  clickRow("channelTableView", 0);
  answer("Cancel");
  choose("actionDeleteChannels");
  EXPECT_THAT(titles(channels()), SizeIs(2));
  answer("Delete");
  choose("actionDeleteChannels");
  EXPECT_THAT(titles(channels()), SizeIs(1));
  EXPECT_THAT(alerts(), Each(StartsWith("Delete the channel “Channel 0")));
  EXPECT_EQ(choose("actionUndo"), "Undo Delete Channel");
  EXPECT_THAT(titles(channels()), SizeIs(2));
  choose("actionTogglePublishChannel");
  EXPECT_EQ(choose("actionUndo"), "Undo Change of Publish");
}

TEST_F(Actions, PublishingWithThePlaceholderAddressIsRefusedOnASheet) {
  start();
  const std::string site = home.makeFolder("Site");
  choosePath(site);
  pick("protocolPopUp", "Folder");
  answer("OK");
  click("publishButton");
  EXPECT_TRUE(until([&] { return allReplied(); }));
  EXPECT_THAT(alerts(), ElementsAre(StartsWith("Bad URLs|")));
  EXPECT_TRUE(std::filesystem::is_empty(site));
}

}  // namespace
}  // namespace clipwave::testing
