#include "desktop/DesktopShell.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <filesystem>

#include "desktop/QtRunLoop.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {
namespace {
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

const std::string kMovie(
    "\0\0\0\x14"
    "ftypqt  \0\0\0\0qt  ",
    20);

class DesktopShellTest : public ::testing::Test {
 protected:
  // Does `act` to the dialog that comes up next, once it has been shown.
  template <typename Act>
  void whenShown(Act act) {
    QTimer::singleShot(0, &guard_, [this, act] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !QTest::qWaitForWindowActive(dialog)) return whenShown(act);
      act(*dialog);
    });
  }
  // A dialog that a fault leaves open must not stop the tests.
  void SetUp() override {
    QTimer::singleShot(8000, &guard_, [this] {
      ADD_FAILURE() << "a dialog stayed open";
      loop->stopModal();
    });
  }
  static void click(QDialog& dialog, const QString& title) {
    for (auto* button : dialog.findChildren<QAbstractButton*>())
      if (button->text() == title) return QTest::mouseClick(button, Qt::LeftButton);
    ADD_FAILURE() << "no button " << title.toStdString();
  }
  static void press(QDialog& dialog, Qt::Key key) { QTest::keyClick(&dialog, key); }
  // Types a name and presses Return; answers what the dialog then objects to.
  static std::string choose(QDialog& dialog, const QString& name) {
    auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
    edit->setFocus();
    edit->setText(name);
    QMetaObject::invokeMethod(&dialog, "accept");
    const auto* objection = dialog.findChild<QLabel*>("openPanelObjection");
    return objection->isVisible() ? objection->text().toStdString() : "";
  }
  static QStringList listed(QDialog& dialog) {
    const auto* list = dialog.findChild<QListView*>("listView");
    EXPECT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) > 0; }));
    QStringList names;
    for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row)
      names << list->model()->index(row, 0, list->rootIndex()).data().toString();
    return names;
  }

  SystemClock clock;
  std::unique_ptr<RunLoop> loop = makeQtRunLoop(clock);
  std::unique_ptr<FileManager> files = makeFileManager();
  std::optional<DesktopShell> shell{std::in_place, *loop, *files};
  Window window;

 private:
  QObject guard_;
};

TEST_F(DesktopShellTest, AnAlertShowsItsTextsAsTheyAreAndReturnsTheButtonInModalMode) {
  Alert alert{.title = "<b>A & B</b>",
              .message = "100 % of <i>it</i>\n&amp;",
              .defaultButton = "Keep & go",
              .alternateButton = "Replace",
              .otherButton = "Cancel",
              .checkBox = AlertCheckBox{.title = "Apply to all", .origin = {}}};
  QStringList texts, titles;
  bool timerFired = false;
  loop->scheduleTimer(Seconds(0), [&] { timerFired = true; });
  whenShown([&](QDialog& dialog) {
    EXPECT_EQ(loop->mode(), RunLoop::Mode::Modal);
    EXPECT_EQ(dialog.windowTitle(), "Clipwave");
    for (const auto* text : dialog.findChildren<QTextEdit*>()) texts << text->toPlainText();
    for (const auto* button : dialog.findChildren<QPushButton*>()) titles << button->text();
    QTest::mouseClick(dialog.findChild<QCheckBox*>(), Qt::LeftButton, {}, QPoint(8, 8));
    QTest::qWait(20);
    click(dialog, "Replace");
  });
  EXPECT_EQ(shell->runAlert(alert), Alert::Answer::Alternate);
  EXPECT_FALSE(timerFired);
  EXPECT_EQ(loop->mode(), RunLoop::Mode::Default);
  EXPECT_TRUE(alert.checkBox->isOn);
  EXPECT_THAT(texts, ElementsAre("<b>A & B</b>", "100 % of <i>it</i>\n&amp;"));
  EXPECT_THAT(titles, ElementsAre("Keep && go", "Replace", "Cancel"));
}

TEST_F(DesktopShellTest, EscapeAndTheCloseButtonCancelAndNeverAnswerAQuestionByAccident) {
  struct Case {
    const char *first, *second, *third;
    std::optional<Alert::Answer> dismissed;  // none: it stays
  };
  const Case cases[] = {{"OK", "", "", Alert::Answer::Default},
                        {"Quit", "", "", {}},
                        {"Quit anyway", "Cancel", "", Alert::Answer::Alternate},
                        {"Trash", "Cancel", "Keep", Alert::Answer::Alternate},
                        {"Keep", "Replace", "Cancel", Alert::Answer::Other},
                        {"Yes", "No", "", {}}};
  for (const Case& each : cases) {
    for (const bool byKey : {true, false}) {
      Alert alert{.title = "",
                  .message = "?",
                  .defaultButton = each.first,
                  .alternateButton = each.second,
                  .otherButton = each.third};
      bool stayed = false;
      whenShown([&](QDialog& dialog) {
        byKey ? press(dialog, Qt::Key_Escape) : static_cast<void>(dialog.close());
        stayed = dialog.isVisible();
        if (stayed) press(dialog, Qt::Key_Return);
      });
      EXPECT_EQ(shell->runAlert(alert), each.dismissed.value_or(Alert::Answer::Default)) << each.first;
      EXPECT_EQ(stayed, !each.dismissed) << each.first;
    }
  }
}

TEST_F(DesktopShellTest, ALongAlertWrapsAndKeepsWithinTheScreen) {
  const std::string path = "/" + std::string(300, 'x');
  std::string lines;
  for (int line = 0; line < 300; ++line) lines += "line\n";
  for (const std::string& message : {path, lines}) {
    Alert alert{.title = message, .message = message};
    whenShown([&](QDialog& dialog) {
      EXPECT_LE(dialog.height(), dialog.screen()->availableSize().height());
      EXPECT_LE(dialog.width(), dialog.screen()->availableSize().width() * 3 / 4);
      for (const auto* text : dialog.findChildren<QTextEdit*>())
        EXPECT_LE(text->document()->idealWidth(), text->viewport()->width());
      press(dialog, Qt::Key_Return);
    });
    shell->runAlert(alert);
  }
}

TEST_F(DesktopShellTest, ASheetLetsTheLoopGoOnAndAnswersFromItOnce) {
  QWidget parent;
  parent.show();
  shell->setWidgetOfWindow([&](const Window&) { return &parent; });
  std::vector<Alert::Answer> answers;
  shell->beginAlertSheet({.title = "", .message = "?", .alternateButton = "Cancel"}, window,
                         [&](Alert::Answer answer) { answers.push_back(answer); });
  whenShown([&](QDialog& dialog) {
    EXPECT_EQ(dialog.parentWidget(), &parent);
    EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
    EXPECT_EQ(loop->mode(), RunLoop::Mode::Default);
    click(dialog, "Cancel");
    EXPECT_THAT(answers, IsEmpty());
    loop->scheduleTimer(Seconds(0.05), [this] { loop->stop(); });
  });
  loop->run();
  EXPECT_THAT(answers, ElementsAre(Alert::Answer::Alternate));
}

TEST_F(DesktopShellTest, ASheetWhoseParentOrShellEndsIsNoTrouble) {
  auto parent = std::make_unique<QWidget>();
  parent->show();
  shell->setWidgetOfWindow([&](const Window&) { return parent.get(); });
  int answers = 0;
  const auto begin = [&] {
    shell->beginAlertSheet({.title = "", .message = "?"}, window, [&](Alert::Answer) { ++answers; });
    shell->beginOpenPanelSheet({}, window, [&](const OpenPanelAnswer& paths) { answers += paths.empty(); });
  };
  begin();
  parent.reset();
  loop->runUntilIdle();
  EXPECT_EQ(answers, 2);
  begin();
  shell.reset();
  loop->runUntilIdle();
  EXPECT_EQ(answers, 2);
}

TEST_F(DesktopShellTest, AnAlertWhoseRunIsEndedOverItsHeadChangesNothing) {
  Alert alert{.title = "",
              .message = "?",
              .defaultButton = "Trash",
              .alternateButton = "Cancel",
              .otherButton = "Keep"};
  whenShown([this](QDialog&) { loop->stopModal(); });
  EXPECT_EQ(shell->runAlert(alert), Alert::Answer::Alternate);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(DesktopShellTest, AnOpenPanelTakesOnlyWhatItAllows) {
  const TemporaryFolder folder;
  folder.write("a.mov", "x");
  folder.write("B.MOV", "x");
  folder.write("notes.txt", "x");
  folder.write("untold", kMovie);
  folder.write("untold text", "x");
  folder.write("old.dat", kMovie);
  folder.makeFolder("inner");
  OpenPanel panel{
      .allowsMultipleSelection = true, .directory = folder.path(), .allowedTypes = {"mov", "'MooV'"}};
  whenShown([&](QDialog& dialog) {
    EXPECT_THAT(listed(dialog), UnorderedElementsAre("a.mov", "untold", "inner"));
    EXPECT_EQ(choose(dialog, "notes.txt"), "“notes.txt” is not a movie that can be used here.");
    EXPECT_EQ(choose(dialog, "B.MOV"), "“B.MOV” is not a movie that can be used here.");
    EXPECT_EQ(choose(dialog, "none.mov"), "“none.mov” does not exist.");
    EXPECT_EQ(choose(dialog, "\"a.mov\" \"notes.txt\""), "“notes.txt” is not a movie that can be used here.");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(choose(dialog, "\"a.mov\" \"old.dat\""), "");
  });
  EXPECT_THAT(shell->runOpenPanel(panel), ElementsAre(folder / "a.mov", folder / "old.dat"));

  // Another panel of the kind goes on there.
  panel.directory.clear();
  whenShown([&](QDialog& dialog) { choose(dialog, "a.mov"); });
  EXPECT_THAT(shell->runOpenPanel(panel), ElementsAre(folder / "a.mov"));
}

TEST_F(DesktopShellTest, AnOpenPanelLeavesNamesAsTheyAreAndChoosesFoldersOnlyWhereAsked) {
  const TemporaryFolder folder;
  for (const std::string name : {"100% #1 ü 日本.mov", "say \"hi\".mov", " spaced .mov"}) {
    folder.write(name, "x");
    whenShown([&](QDialog& dialog) {
      auto* list = dialog.findChild<QListView*>("listView");
      ASSERT_EQ(listed(dialog).size(), 1);
      const QModelIndex file = list->model()->index(0, 0, list->rootIndex());
      QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(file).center());
      click(dialog, "Choose");
    });
    EXPECT_THAT(shell->runOpenPanel({.message = "Which?", .prompt = "Choose", .directory = folder.path()}),
                ElementsAre(folder / name));
    std::filesystem::remove(folder / name);
  }
  const std::string inner = folder.makeFolder("50% in");
  folder.write("file", "x");
  whenShown([&](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("openPanelMessage")->text(), "Select a folder:");
    EXPECT_THAT(listed(dialog), ElementsAre("50% in"));
    EXPECT_EQ(choose(dialog, "file"), "“file” is not a folder.");
    choose(dialog, "50% in");
  });
  EXPECT_THAT(shell->runOpenPanel({.canChooseFiles = false,
                                   .canChooseDirectories = true,
                                   .canCreateDirectories = true,
                                   .message = "Select a folder:",
                                   .directory = folder.path()}),
              ElementsAre(inner));
}

}  // namespace
}  // namespace clipwave::testing
