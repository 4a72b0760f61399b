#include "ui/CustomArrayController.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class CustomArrayControllerTest : public Test {
 protected:
  CustomArrayControllerTest() {
    program_.launch();
    program_.addEpisodes({"3.mov", "2.mov", "1.mov"});
  }
  // The titles that are left after the user answered.
  std::vector<std::string> remove(const IndexSet& rows, Alert::Answer answer) {
    program_.shell.answerAlert(answer);
    program_.episodes().removeObjectsAtArrangedObjectIndexes(rows);
    EXPECT_EQ(program_.shell.alerts.front(),
              "Trash Video File(s)?|Do you want to move the movie(s) for this podcast to the trash or keep "
              "them in their current location?|Trash/Cancel/Keep");
    return program_.listed(program_.episodes());
  }
  bool exists(const std::string& name) { return program_.files.fileExistsAtPath(program_.folder / name); }
  TestProgram program_;
};

TEST_F(CustomArrayControllerTest, TrashMovesTheMoviesKeepLeavesThemAndOneUndoStepBringsTheEpisodesBack) {
  EXPECT_THAT(remove({0}, Alert::Answer::Alternate), ElementsAre("1", "2", "3"));
  EXPECT_THAT(remove({0, 2}, Alert::Answer::Default), ElementsAre("2"));
  EXPECT_TRUE(exists("home/.Trash/1.mov") && exists("home/.Trash/3.mov"));
  EXPECT_FALSE(exists("1.mov") || exists("3.mov"));
  program_.context().undo();
  EXPECT_EQ(program_.listed(program_.episodes()).size(), 3U);
  EXPECT_EQ(remove({0, 1, 2}, Alert::Answer::Other).size(), 0U);
  EXPECT_TRUE(exists("2.mov"));
}

TEST_F(CustomArrayControllerTest, ATakenNameInTheTrashGetsTheFirstFreeNumberAtItsEnd) {
  const std::string trashed = program_.folder.write("home/.Trash/1.mov", "older");
  std::filesystem::create_symlink("/nowhere", trashed + "-1");
  addEpisodeFromFile(program_.episodes(), "", program_.folder / "1.mov");
  remove({0, 1}, Alert::Answer::Default);
  EXPECT_EQ(readFile(trashed), "older");
  EXPECT_EQ(readFile(trashed + "-2").size(), 2048U) << "once, though two episodes share it";
}

TEST_F(CustomArrayControllerTest, EpisodesGoAlsoWhenTheirMoviesAreMissingOrCannotBeMoved) {
  ASSERT_TRUE(program_.files.removeFileAtPath(program_.folder / "1.mov"));
  program_.files.fail("movePath", program_.folder / "2.mov");
  EXPECT_THAT(remove({0, 1, 2}, Alert::Answer::Default), ElementsAre());
  ASSERT_EQ(program_.shell.alerts.size(), 2U);
  EXPECT_EQ(program_.shell.alerts.back(), "Error Moving File|There was a problem moving the file " +
                                              program_.process.home + "/.Trash/2.mov movie to the trash.|OK");
  EXPECT_TRUE(exists("2.mov") && exists("home/.Trash/3.mov"));
}

TEST_F(CustomArrayControllerTest, TheDeleteKeyRemovesTheSelectedRowsOrBeepsAndEveryOtherKeyIsTheTablesOwn) {
  CustomTableView& table = program_.interface().vcastTableView;
  table.selectRowIndexes({0, 2});
  EXPECT_FALSE(table.keyDown({127, KeyEvent::Command}));
  program_.shell.answerAlert(Alert::Answer::Other);
  EXPECT_TRUE(table.keyDown({127, 0}));
  EXPECT_THAT(program_.listed(program_.episodes()), ElementsAre("2"));
  table.selectRowIndexes({});
  EXPECT_TRUE(table.keyDown({127, 0}));
  EXPECT_EQ(program_.shell.beeps, 1);
}

}  // namespace
}  // namespace clipwave
