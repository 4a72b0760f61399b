#include "desktop/RecordTable.h"

#include <QMimeData>
#include <QScrollBar>

#include "desktop/ListText.h"
#include "tests/desktop/TableWindow.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

constexpr int kPublish = 0;
constexpr int kTitle = 2;
constexpr int kSize = 5;
constexpr int kTrouble = 6;

class RecordTableTest : public TableWindow {
 protected:
  int topRow() { return episodeTable_.indexAt(QPoint(40, 0)).row(); }
  bool isInSight(int row) {
    return episodeTable_.viewport()->rect().contains(
        episodeTable_.visualRect(episodeTable_.model()->index(row, kTitle)).center());
  }
};

TEST_F(RecordTableTest, ManyChangesAreTakenOverOnceAndWhatIsInSightStaysThere) {
  addNumbered(200);
  QSignalSpy inserted(episodeTable_.model(), &QAbstractItemModel::rowsInserted);
  episodeTable_.verticalScrollBar()->setValue(1003);
  const QString top = text(episodeTable_, topRow(), kTitle);
  for (int i = 0; i < 100; ++i) add("new");
  program_.episodes().setSelectionIndexes({});
  turn();
  EXPECT_EQ(inserted.count(), 1);
  EXPECT_EQ(episodeTable_.model()->rowCount(), 300);
  EXPECT_EQ(text(episodeTable_, topRow(), kTitle), top);
  program_.context().undoManager().disableUndoRegistration();
  for (const std::size_t row : {0, 5, 290}) program_.context().deleteObject(episode(row));
  program_.context().undoManager().enableUndoRegistration();
  // Painted in the middle of it, records that are gone are not looked into.
  episodeTable_.viewport()->repaint();
  turn();
  EXPECT_EQ(text(episodeTable_, topRow(), kTitle), top);
  EXPECT_EQ(episodeTable_.model()->rowCount(), 297);
}

TEST_F(RecordTableTest, TheSelectionIsTheListsOwnAndTheProgramsIsBroughtIntoSight) {
  addNumbered(100);
  click(episodeTable_, 2, kTitle);
  click(episodeTable_, 4, kTitle, Qt::ShiftModifier);
  EXPECT_THAT(selectedEpisodes(), ElementsAre(2, 3, 4));
  QTest::keyClick(&episodeTable_, Qt::Key_Down);
  EXPECT_THAT(selectedEpisodes(), ElementsAre(5));
  program_.episodes().setSelectionIndexes({90});
  turn();
  EXPECT_TRUE(isInSight(90));
  EXPECT_EQ(episodeTable_.selectionModel()->selectedRows().size(), 1);
  QTest::keyClick(&episodeTable_, Qt::Key_A, Qt::ControlModifier);
  EXPECT_THAT(selectedEpisodes(), SizeIs(100));

  class Refusal final : public TableView::Delegate {
   public:
    bool selectionShouldChangeInTableView(TableView&) override { return false; }
    unsigned validateDrop(TableView&, const DraggingInfo&, int, TableDropOperation) override { return 0; }
    bool acceptDrop(TableView&, const DraggingInfo&, int, TableDropOperation) override { return false; }
  } refusal;
  window_.vcastTableView.setDelegate(&refusal);
  click(episodeTable_, topRow() + 1, kTitle);
  turn();
  EXPECT_EQ(episodeTable_.selectionModel()->selectedRows().size(), 100) << "put back where it was refused";
  window_.vcastTableView.setDelegate(nullptr);
}

TEST_F(RecordTableTest, ACheckBoxIsForItsRowAloneAndAnUndoStep) {
  addNumbered(6);
  QSignalSpy opened(&episodeTable_, &RecordTable::recordOpened);
  program_.episodes().setSelectionIndexes({1, 2, 3});
  turn();
  click(episodeTable_, 2, kPublish);
  turn();
  EXPECT_THAT(program_.listed(program_.episodes(), "vcPublish"),
              ElementsAre("YES", "YES", "NO", "YES", "YES", "YES"));
  EXPECT_THAT(selectedEpisodes(), ElementsAre(1, 2, 3));
  EXPECT_EQ(program_.context().undoManager().undoActionName(), "Change of Publish");
  program_.context().undo();
  EXPECT_TRUE(episode(2).value("vcPublish").boolValue());
  const QPoint box = episodeTable_.visualRect(episodeTable_.model()->index(0, kPublish)).center();
  QTest::mouseDClick(episodeTable_.viewport(), Qt::LeftButton, {}, box);
  EXPECT_TRUE(episode(0).value("vcPublish").boolValue()) << "inverted twice";
  EXPECT_EQ(opened.count(), 0);
}

TEST_F(RecordTableTest, AHeaderSortsBothWaysByWhatIsStoredAndNothingSortsByItself) {
  for (const char* title : {"b", "c", "a"}) add(title);
  for (std::size_t row = 0; row < 3; ++row) episode(row).setPrimitiveValue("vcPath", "/nowhere/x.mov");
  const auto titlesAfterClickOn = [&](int section) {
    clickHeader(episodeTable_, section);
    turn();
    return program_.listed(program_.episodes());
  };
  EXPECT_THAT(titlesAfterClickOn(kTitle), ElementsAre("a", "b", "c"));
  EXPECT_THAT(titlesAfterClickOn(kTitle), ElementsAre("c", "b", "a"));
  EXPECT_EQ(episodeTable_.header()->sortIndicatorOrder(), Qt::DescendingOrder);
  EXPECT_THAT(titlesAfterClickOn(kTrouble), ElementsAre("c", "b", "a"));
  EXPECT_EQ(episodeTable_.header()->sortIndicatorSection(), kTitle);
  episode(0).setValue("vcTitle", "0");
  turn();
  EXPECT_EQ(text(episodeTable_, 0, kTitle), "0");
  episode(1).setPrimitiveValue("size", 5000);
  const int before = program_.movies.openings;
  EXPECT_THAT(titlesAfterClickOn(kSize), ElementsAre("b", "0", "a"));
  EXPECT_EQ(program_.movies.openings, before);
}

TEST_F(RecordTableTest, KeysReachTheProgramOrFindATitle) {
  for (const char* title : {"Bread", "Knives", "Knots"}) add(title);
  program_.episodes().setSelectionIndexes({0});
  turn();
  QSignalSpy opened(&episodeTable_, &RecordTable::recordOpened);
  QTest::keyClicks(&episodeTable_, "kni");
  EXPECT_THAT(selectedEpisodes(), ElementsAre(1));
  QTest::keyClick(&episodeTable_, Qt::Key_Return);
  EXPECT_EQ(opened.count(), 1);
  QTest::keyClick(&episodeTable_, Qt::Key_Backspace, Qt::ShiftModifier);
  QTest::keyClick(&episodeTable_, Qt::Key_Delete);
  EXPECT_THAT(program_.shell.alerts, IsEmpty());
  program_.shell.answerAlert(Alert::Answer::Other);
  QTest::keyClick(&episodeTable_, Qt::Key_Backspace);
  EXPECT_THAT(program_.listed(program_.episodes()), ElementsAre("Knots", "Bread"));
  program_.episodes().setSelectionIndexes({});
  QTest::keyClick(&episodeTable_, Qt::Key_Backspace);
  EXPECT_EQ(program_.shell.beeps, 1);
}

TEST_F(RecordTableTest, AContextMenuIsForTheRowUnderThePointer) {
  addNumbered(5);
  QSignalSpy asked(&episodeTable_, &QWidget::customContextMenuRequested);
  const QPoint place = episodeTable_.visualRect(episodeTable_.model()->index(3, kTitle)).center();
  QTest::mouseClick(episodeTable_.viewport(), Qt::RightButton, {}, place);
  QContextMenuEvent menu(QContextMenuEvent::Mouse, place, episodeTable_.viewport()->mapToGlobal(place));
  QCoreApplication::sendEvent(episodeTable_.viewport(), &menu);
  EXPECT_EQ(asked.count(), 1);
  EXPECT_THAT(selectedEpisodes(), ElementsAre(3));
}

TEST_F(RecordTableTest, DraggedFilesAreAnsweredWithALinkAndNeverWithAMove) {
  const QString movie = QString::fromStdString(program_.makeMovie("My talk 100%.mov"));
  const QUrl file = QUrl::fromLocalFile(movie);
  const struct {
    QList<QUrl> urls;
    Qt::DropActions offered;
    Qt::DropAction answer;  // IgnoreAction where it is refused
  } kDrags[] = {
      {{file}, Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, Qt::LinkAction},
      {{file}, Qt::CopyAction, Qt::CopyAction},
      {{file}, Qt::MoveAction | Qt::CopyAction, Qt::CopyAction},
      {{file}, Qt::MoveAction, Qt::IgnoreAction},
      {{file, QUrl("http://example.org/a.mov")}, Qt::CopyAction, Qt::IgnoreAction},
      {{QUrl("file://elsewhere/a.mov")}, Qt::CopyAction, Qt::IgnoreAction},
      {{file, QUrl::fromLocalFile("/tmp/notes.txt")}, Qt::LinkAction, Qt::IgnoreAction},
      {{}, Qt::CopyAction, Qt::IgnoreAction},
  };
  std::size_t taken = 0;
  for (const auto& [urls, offered, answer] : kDrags) {
    QMimeData mime;
    if (urls.isEmpty()) {
      mime.setText("words");
    } else {
      mime.setUrls(urls);
    }
    QWidget* const target = episodeTable_.viewport();
    const QPoint place(50, 50);
    QDragEnterEvent enter(place, offered, &mime, Qt::LeftButton, {});
    QCoreApplication::sendEvent(target, &enter);
    QDragMoveEvent move(place, offered, &mime, Qt::LeftButton, {});
    QCoreApplication::sendEvent(target, &move);
    EXPECT_EQ(move.isAccepted() ? move.dropAction() : Qt::IgnoreAction, answer);
    EXPECT_EQ(window_.vcastTableView.dropRow(), move.isAccepted() ? 0 : -1);
    QDropEvent drop(place, offered, &mime, Qt::LeftButton, {});
    QCoreApplication::sendEvent(target, &drop);
    EXPECT_EQ(drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction, answer);
    taken += answer == Qt::IgnoreAction ? 0 : 1;
    EXPECT_THAT(program_.episodes().arrangedObjects(), SizeIs(taken));
    EXPECT_EQ(window_.vcastTableView.dropRow(), -1);
    turn();
  }
  EXPECT_EQ(episode(0).value("vcPath"), Value(movie.toStdString()));
}

TEST_F(RecordTableTest, ADropOnChannelsIsOnARowOrBetweenRows) {
  for (int i = 0; i < 2; ++i) program_.addChannel();
  turn();
  QMimeData mime;
  mime.setUrls({QUrl::fromLocalFile("/m/1.mov")});
  const QRect row = channelTable_.visualRect(channelTable_.model()->index(1, 1));
  const struct {
    int y;
    int row;
    TableDropOperation operation;
  } kPlaces[] = {{row.top() + 1, 1, TableDropOperation::Above},
                 {row.center().y(), 1, TableDropOperation::On},
                 {row.bottom(), 2, TableDropOperation::Above},
                 {channelTable_.viewport()->height() - 30, 3, TableDropOperation::Above}};
  QDragEnterEvent enter(row.center(), Qt::LinkAction, &mime, Qt::LeftButton, {});
  QCoreApplication::sendEvent(channelTable_.viewport(), &enter);
  for (const auto& place : kPlaces) {
    QDragMoveEvent move(QPoint(row.center().x(), place.y), Qt::LinkAction, &mime, Qt::LeftButton, {});
    QCoreApplication::sendEvent(channelTable_.viewport(), &move);
    EXPECT_EQ(window_.channelTableView.dropRow(), place.row) << place.y;
    EXPECT_EQ(window_.channelTableView.dropOperation(), place.operation) << place.y;
  }
  QDragLeaveEvent leave;
  QCoreApplication::sendEvent(channelTable_.viewport(), &leave);
  EXPECT_EQ(window_.channelTableView.dropRow(), -1);
}

TEST_F(RecordTableTest, ANarrowTableGivesUpSizesThenDurationsForItsTitles) {
  for (const auto& [width, shown] : {std::pair(600, 7), {400, 6}, {250, 5}, {600, 7}}) {
    episodeTable_.resize(width, 240);
    turn();
    EXPECT_EQ(7 - episodeTable_.header()->hiddenSectionCount(), shown) << width;
    EXPECT_EQ(episodeTable_.isColumnHidden(kSize), shown < 7) << width;
  }
}

TEST(ListText, ReadsAsPeopleWriteIt) {
  const QLocale english(QLocale::English, QLocale::UnitedKingdom);
  EXPECT_EQ(dayText(Date::fromSeconds(1'795'348'800), english), "22 Nov 2026");
  EXPECT_EQ(dayText(Date::fromSeconds(1'795'348'800), QLocale("de_DE")), "22. Nov. 2026");
  EXPECT_EQ(dayText(Date::fromSeconds(1'795'348'800), QLocale("en_US")), "Nov 22, 2026");
  const std::pair<const char*, const char*> kDurations[] = {{"00:12:31", "12:31"},
                                                            {"00:08:02", "08:02"},
                                                            {"01:02:03", "1:02:03"},
                                                            {"100:00:01", "100:00:01"},
                                                            {"12:31", "12:31"}};
  for (const auto& [stored, shown] : kDurations) EXPECT_EQ(shortDurationText(stored), shown);
  const std::pair<std::int64_t, const char*> kSizes[] = {
      {325'058'560, "310 MB"}, {1'503'238'553, "1.4 GB"}, {5'368'709'120, "5.0 GB"}, {512, "512 bytes"}};
  for (const auto& [bytes, shown] : kSizes) EXPECT_EQ(shortSizeText(bytes, english), shown);
}

}  // namespace
}  // namespace clipwave
