// The records edited in the fields and lists of the main window.
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimeZone>
#include <cmath>
#include <filesystem>

#include "desktop/LowerArea.h"
#include "tests/desktop/RunningDesktop.h"

namespace clipwave::testing {
namespace {
using namespace ::testing;

namespace fs = std::filesystem;

class Editing : public RunningDesktop {
 protected:
  void SetUp() override {
    start();
    ASSERT_TRUE(dropped("vcastTableView", {home.write("a.mov", "a"), home.write("b.mov", "b")}));
    ASSERT_THAT(titles(episodes()), ElementsAre("b", "a"));
    clickRow("vcastTableView", 0);
  }
  QString text(const char* field) { return find<QLineEdit>(field).text(); }
};

TEST_F(Editing, AnEntryIsTakenHoweverTheUserLeavesIt) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Tab", [&] { press(Qt::Key_Tab); }},
      {"Return", [&] { press(Qt::Key_Return); }},
      {"another field", [&] { click("episodeSubtitleField"); }},
      {"a list", [&] { clickRow("channelTableView", 0); }},
      {"another tab", [&] { press(Qt::Key_3, Qt::AltModifier); }},
      {"Save", [&] { press(Qt::Key_S, Qt::ControlModifier); }},
      {"another episode", [&] {
         clickRow("vcastTableView", 1);
         clickRow("vcastTableView", 0);
       }}};
  for (const auto& [way, leave] : ways) {
    type("titleTextField", way);
    leave();
    if (std::string_view(way) == "another tab") press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(episodeValue("vcTitle"), way);
  }
  type("episodeSummaryField", "Two lines");
  press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_THAT(saved(), HasSubstr("Two lines"));
  type("episodeSubtitleField", "Last words");
  press(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_TRUE(hasQuit());
  EXPECT_THAT(saved(), HasSubstr("Last words"));
}

TEST_F(Editing, EscapeAndUndoTakeBackWhatWasTyped) {
  type("titleTextField", "Wrong");
  press(Qt::Key_Escape);
  EXPECT_EQ(text("titleTextField"), "b");
  type("titleTextField", "New title");
  press(Qt::Key_Return);
  clickRow("vcastTableView", 0);
  EXPECT_EQ(choose("actionUndo"), "Undo Change of Title");
  EXPECT_EQ(text("titleTextField"), "b");
  EXPECT_EQ(choose("actionRedo"), "Redo Change of Title");
  EXPECT_EQ(text("titleTextField"), "New title");
  choose("actionClearMovie");
  EXPECT_TRUE(episodeValue("vcPath").isNull());
  EXPECT_EQ(choose("actionUndo"), "Undo Clear Movie");
  EXPECT_EQ(episodeValue("vcPath"), Value(home / "b.mov"));
}

TEST_F(Editing, AChannelTitleWhoseFolderExistsIsRefusedOnceAndStaysAsTyped) {
  home.makeFolder("Movies/Clipwave/Taken");
  press(Qt::Key_3, Qt::AltModifier);
  for (const auto& leave : std::initializer_list<std::function<void()>>{
           [&] { press(Qt::Key_Tab); }, [&] { clickRow("channelTableView", 0); },
           [&] { press(Qt::Key_S, Qt::ControlModifier); }, [&] { window().close(); }}) {
    type("channelTitleTextField", "Taken");
    answer("OK");
    leave();
    EXPECT_TRUE(until([&] { return allReplied(); }));
    turn();
    EXPECT_THAT(alerts(), ElementsAre(HasSubstr("Taken")));
    EXPECT_EQ(text("channelTitleTextField"), "Taken");
    EXPECT_EQ(channelValue("vcTitle"), "Channel 01");
    EXPECT_TRUE(find("channelTitleTextField").hasFocus());
    EXPECT_FALSE(hasQuit());
  }
  press(Qt::Key_Escape);
  EXPECT_EQ(text("channelTitleTextField"), "Channel 01");
}

TEST_F(Editing, SeveralEpisodesShowWhatTheyShareAndTakeOneEntryTogether) {
  clickRow("vcastTableView", 1, Qt::ShiftModifier);
  auto& title = find<QLineEdit>("titleTextField");
  EXPECT_EQ(title.text(), "");
  EXPECT_EQ(title.placeholderText(), "Several values");
  type("titleTextField", "Both");
  press(Qt::Key_Return);
  EXPECT_THAT(titles(episodes()), ElementsAre("Both", "Both"));
  EXPECT_EQ(title.text(), "Both");
  EXPECT_EQ(title.placeholderText(), "");

  auto& box = find<QCheckBox>("copyEpisodeBox");
  click(box);
  EXPECT_EQ(box.checkState(), Qt::Unchecked);
  clickRow("vcastTableView", 0);
  click(box);
  clickRow("vcastTableView", 1, Qt::ShiftModifier);
  EXPECT_EQ(box.checkState(), Qt::PartiallyChecked);
  choose("actionToggleCopyEpisodes");
  EXPECT_EQ(box.checkState(), Qt::PartiallyChecked) << "each for itself";
  EXPECT_FALSE(episodes().arrangedObjects()[0]->value("vcCopy").boolValue());
  click(box);
  EXPECT_EQ(box.checkState(), Qt::Checked);
  EXPECT_TRUE(episodes().arrangedObjects()[0]->value("vcCopy").boolValue());
}

TEST_F(Editing, ADateIsShownAndTypedInItsEpisodesZone) {
  type("timezoneBox", "Asia/Tokyo");
  press(Qt::Key_Return);
  auto& date = *find("publishDateField").findChild<QDateTimeEdit*>();
  date.setFocus();
  turn();
  const Date before = *episodeValue("vcPublishDate").dateValue();
  press(Qt::Key_Home);
  press(Qt::Key_Up);
  press(Qt::Key_Escape);
  press(Qt::Key_Home);
  press(Qt::Key_Up);
  EXPECT_EQ(*episodeValue("vcPublishDate").dateValue(), before) << "not before it is left";
  click("titleTextField");
  const QDateTime typed(date.date(), date.time(), QTimeZone("Asia/Tokyo"));
  EXPECT_EQ(episodeValue("vcPublishDate").dateValue()->microseconds / 1000, typed.toMSecsSinceEpoch());
  const double days =
      static_cast<double>(typed.toMSecsSinceEpoch() - before.microseconds / 1000) / 86'400'000;
  EXPECT_THAT(std::lround(days), AnyOf(1, Lt(-26))) << "the next day of the month";
  auto& box = *find("publishDateField").findChild<QCheckBox*>();
  clickRow("vcastTableView", 1, Qt::ShiftModifier);
  EXPECT_EQ(box.checkState(), Qt::PartiallyChecked);
  EXPECT_EQ(date.text(), "Several values");
  clickRow("vcastTableView", 0);
  click(box);
  EXPECT_EQ(date.text(), "No date");
  EXPECT_TRUE(episodeValue("vcPublishDate").isNull());
}

TEST_F(Editing, TheMethodOfPublishingDecidesAddressesAndLayout) {
  auto& area = find<LowerArea>("lowerArea");
  auto& method = find<QComboBox>("protocolPopUp");
  ASSERT_EQ(method.count(), 2);
  const QString folder = method.itemText(method.findData(1)), dotMac = method.itemText(method.findData(2));
  const Value path = channelValue("mediaPath");
  answer("Cancel");
  pick("protocolPopUp", dotMac);
  EXPECT_THAT(alerts(), ElementsAre(HasSubstr("No .Mac Account!")));
  EXPECT_EQ(channelValue("protocolTag").integerValue(), 1);
  EXPECT_EQ(method.currentText(), folder);
  const std::string site = home.makeFolder("Site");
  choosePath(site);
  pick("protocolPopUp", folder);
  EXPECT_EQ(channelValue("mediaPath"), site);
  EXPECT_EQ(text("vcURLField"), "http://127.0.0.1/");

  type("vcURLField", "https://example.org/a");
  press(Qt::Key_Return);
  auto& services = desktop().program().services();
  ASSERT_TRUE(services.defaults.setValue("dotMacMemberName", "ann"));
  ASSERT_TRUE(services.defaults.setValue("dotMacAddress", "https://disk.example.org/ann"));
  pick("protocolPopUp", dotMac);
  EXPECT_TRUE(area.coversBand());
  EXPECT_THAT(std::string(channelValue("vcURL").stringValue()), HasSubstr("ann"));
  choosePath("");
  pick("protocolPopUp", folder);
  EXPECT_EQ(channelValue("protocolTag").integerValue(), 2) << "called off";
  EXPECT_EQ(method.currentText(), dotMac);
  EXPECT_TRUE(area.coversBand());
  press(Qt::Key_N, Qt::ControlModifier);
  turn();
  EXPECT_THAT(titles(channels()), SizeIs(2));
  clickRow("channelTableView", 0);
  EXPECT_TRUE(area.coversBand());
  clickRow("channelTableView", 1);
  EXPECT_EQ(area.coversBand(), channelValue("protocolTag").integerValue() == 2);
  press(Qt::Key_Z, Qt::ControlModifier);
  clickRow("channelTableView", 0);
  choose("actionUndo");
  EXPECT_EQ(channelValue("protocolTag").integerValue(), 1) << "one step, with all that the choice has set";
  EXPECT_EQ(channelValue("mediaPath"), site);
  EXPECT_EQ(text("vcURLField"), "https://example.org/a");
  EXPECT_EQ(method.currentText(), folder);
  EXPECT_FALSE(area.coversBand());
}

TEST_F(Editing, AMovieIsChosenInAPanelAndCleared) {
  const std::string other = home.write("other.mp4", "o");
  choosePath("");
  click("chooseMovieButton");
  EXPECT_TRUE(until([&] { return allReplied(); }));
  EXPECT_EQ(episodeValue("vcPath"), Value(home / "b.mov"));
  choosePath(other);
  click("chooseMovieButton");
  EXPECT_TRUE(until([&] { return episodeValue("vcPath") == Value(other); }));
  EXPECT_EQ(episodeValue("vcTitle"), "b");
  click("clearMovieButton");
  EXPECT_TRUE(episodeValue("vcPath").isNull());
  EXPECT_EQ(episodeValue("vcTitle"), "b");
}

TEST_F(Editing, BackspaceAsksWhatBecomesOfTheMovie) {
  clickRow("vcastTableView", 0);
  answer("Cancel");
  press(Qt::Key_Backspace);
  EXPECT_THAT(titles(episodes()), ElementsAre("b", "a"));
  EXPECT_THAT(alerts(), ElementsAre(StartsWith("Trash Video File(s)?|Do you want to move")));
  answer("Trash");
  press(Qt::Key_Backspace);
  EXPECT_THAT(titles(episodes()), ElementsAre("a"));
  EXPECT_FALSE(fs::exists(home / "b.mov"));
  EXPECT_EQ(readFile(home / ".Trash/b.mov"), "b");
  clickRow("vcastTableView", 0);
  answer("Keep");
  press(Qt::Key_Backspace);
  EXPECT_THAT(titles(episodes()), IsEmpty());
  EXPECT_TRUE(fs::exists(home / "a.mov"));
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_THAT(titles(episodes()), ElementsAre("a"));
}

TEST_F(Editing, FilesAreDroppedOnEitherList) {
  EXPECT_FALSE(dropped("vcastTableView", {home / "a.mov", home.write("notes.txt", "n")}));
  EXPECT_FALSE(dropped("channelTableView", {home.write("notes.txt", "n")}));
  EXPECT_TRUE(dropped("channelTableView", {home.write("c.mov", "c")}));
  EXPECT_THAT(titles(channels()), SizeIs(2)) << "between the rows: a new channel";
  EXPECT_THAT(titles(episodes()), ElementsAre("c"));
  auto& table = find<RecordTable>("channelTableView");
  const int first = channels().arrangedObjects()[0]->value("vcTitle") == Value("Channel 01") ? 0 : 1;
  EXPECT_TRUE(drop("channelTableView", table.visualRect(table.model()->index(first, 1)).center(),
                   {QString::fromStdString(home / "c.mov")}));
  EXPECT_THAT(titles(episodes()), SizeIs(3)) << "on a row: into that channel";
}

TEST_F(Editing, ArtworkIsEditedInItsSheet) {
  press(Qt::Key_3, Qt::AltModifier);
  click("editImagesButton");
  ASSERT_EQ(QApplication::activeModalWidget(), shown(state().editImagePropsWindow));
  click("addImageButton");
  type("imageTitleField", "Cover");
  EXPECT_EQ(text("imageTitleField"), "Cover");
  type("imageURLField", "http://example.invalid/cover.png");
  click("revertButton");
  EXPECT_EQ(text("imageURLField"), "") << "the edit in progress goes";
  EXPECT_EQ(text("imageTitleField"), "Cover");
  type("imageURLField", "http://127.0.0.1:1/cover.png");
  click("doneButton");
  EXPECT_FALSE(shown(state().editImagePropsWindow)->isVisible());
  pick("imagePopUp", "Cover");
  ASSERT_NE(channelValue("image").recordValue(), nullptr);
  EXPECT_EQ(channelValue("image").recordValue()->value("url"), "http://127.0.0.1:1/cover.png");
}

}  // namespace
}  // namespace clipwave::testing
