// The lists of the program in tables that are on the screen, and the two loops turned together.
#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

#include "desktop/LibraryTables.h"
#include "tests/support/TestProgram.h"

namespace clipwave::testing {

class TableWindow : public ::testing::Test {
 protected:
  TableWindow() {
    channelTable_.attach(window_.channelTableView, channelColumns());
    episodeTable_.attach(window_.vcastTableView, episodeColumns(), &facts_);
    for (RecordTable* table : {&channelTable_, &episodeTable_}) {
      table->resize(600, 240);
      table->show();
      EXPECT_TRUE(QTest::qWaitForWindowExposed(table));
    }
    turn();
  }
  void turn() {
    for (int i = 0; i < 3; ++i) {
      program_.turn();
      QCoreApplication::processEvents();
    }
  }
  // Until `holds`, or long enough to be sure that it never will.
  bool waitFor(const std::function<bool()>& holds) {
    return QTest::qWaitFor([&] {
      program_.loop->runOnce(Seconds(0));
      return holds();
    });
  }
  // Episodes without movies: "0" on top, then "1" and so on.
  void addNumbered(int count) {
    for (int i = count - 1; i >= 0; --i) add(std::to_string(i));
    program_.episodes().setSelectionIndexes({});
    turn();
  }
  void add(const std::string& title) {
    ManagedObject* const episode = program_.episodes().newObject();
    program_.episodes().insertObjectAtArrangedObjectIndex(*episode, 0);
    episode->setValue("vcTitle", title);
  }
  static QString text(const RecordTable& table, int row, int column) {
    return table.model()->index(row, column).data().toString();
  }
  static void click(RecordTable& table, int row, int column, Qt::KeyboardModifiers modifiers = {}) {
    const QPoint place = table.visualRect(table.model()->index(row, column)).center();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, modifiers, place);
  }
  static void clickHeader(RecordTable& table, int section) {
    const QHeaderView& head = *table.header();
    QTest::mouseClick(head.viewport(), Qt::LeftButton, {},
                      QPoint(head.sectionViewportPosition(section) + 12, head.height() / 2));
  }
  ManagedObject& episode(std::size_t row) { return *program_.episodes().arrangedObjects().at(row); }
  IndexSet selectedEpisodes() { return program_.episodes().selectionIndexes(); }

  TestProgram program_;
  MainInterface& window_ = program_.launch();
  MovieFacts facts_{*program_.loop, program_.movies};
  RecordTable channelTable_;
  RecordTable episodeTable_;
};

}  // namespace clipwave::testing
