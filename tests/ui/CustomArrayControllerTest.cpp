#include "ui/CustomArrayController.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/LibraryWindow.h"

namespace clipwave {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CustomArrayControllerTest : public ::testing::Test {
 protected:
  CustomArrayControllerTest() {
    window_.addChannel("News");
    for (const char* name : {"three.mov", "two.mov", "clip.mov"}) window_.addEpisode(name);
    window_.host.turn();
  }
  void remove(const IndexSet& rows, Alert::Answer answer) {
    window_.shell.answerAlert(answer);
    window_.episodes.removeObjectsAtArrangedObjectIndexes(rows);
    EXPECT_EQ(window_.shell.alerts.front(),
              "Trash Video File(s)?|Do you want to move the movie(s) for this podcast to the trash or keep "
              "them in their current location?|Trash/Cancel/Keep");
    EXPECT_EQ(window_.shell.alertDetails.front().style, Alert::Style::Critical);
  }
  bool exists(const std::string& path) { return window_.host.fileManager.fileExistsAtPath(path); }
  std::string trashed(std::string_view name) { return window_.host.home() + "/.Trash/" + std::string(name); }
  std::string file(std::string_view name) { return window_.host.folder / name; }

  testing::LibraryWindow window_;
};

TEST_F(CustomArrayControllerTest, TrashMovesTheMoviesAndTheEpisodesComeBackInOneUndoStep) {
  remove({0, 2}, Alert::Answer::Default);
  EXPECT_THAT(window_.titles(window_.episodes), ElementsAre("two"));
  EXPECT_TRUE(exists(trashed("clip.mov")) && exists(trashed("three.mov")) && exists(file("two.mov")));
  EXPECT_FALSE(exists(file("clip.mov")) || exists(file("three.mov")));
  EXPECT_EQ(window_.host.context->countOfEntity(kVodcastEntity), 1U);

  window_.host.context->undo();
  EXPECT_EQ(window_.host.context->countOfEntity(kVodcastEntity), 3U);
  EXPECT_EQ(window_.episodes.arrangedObjects().size(), 3U);
}

TEST_F(CustomArrayControllerTest, KeepLeavesTheMoviesAndCancelLeavesEverything) {
  remove({0}, Alert::Answer::Alternate);
  EXPECT_THAT(window_.titles(window_.episodes), ElementsAre("clip", "two", "three"));
  remove({0}, Alert::Answer::Other);
  EXPECT_THAT(window_.titles(window_.episodes), ElementsAre("two", "three"));
  EXPECT_TRUE(exists(file("clip.mov")));
  EXPECT_FALSE(exists(trashed("")));
}

TEST_F(CustomArrayControllerTest, ATakenNameInTheTrashGetsTheFirstFreeNumberAtItsEnd) {
  window_.host.folder.write("home/.Trash/clip.mov", "older");
  std::filesystem::create_symlink("/nowhere", trashed("clip.mov-1"));
  remove({0}, Alert::Answer::Default);
  EXPECT_EQ(testing::readFile(trashed("clip.mov")), "older");
  EXPECT_EQ(testing::readFile(trashed("clip.mov-2")).size(), 2048U);
}

TEST_F(CustomArrayControllerTest, EpisodesGoAlsoWhenTheirMoviesAreMissingOrCannotBeMoved) {
  ASSERT_TRUE(window_.host.fileManager.removeFileAtPath(file("clip.mov")));
  window_.host.fileManager.fail("movePath", file("two.mov"));
  remove({0, 1, 2}, Alert::Answer::Default);

  ASSERT_EQ(window_.shell.alerts.size(), 2U);
  EXPECT_EQ(window_.shell.alerts.back(), "Error Moving File|There was a problem moving the file " +
                                             trashed("two.mov") + " movie to the trash.|OK");
  EXPECT_TRUE(exists(file("two.mov")) && exists(trashed("three.mov")));
  EXPECT_THAT(window_.episodes.arrangedObjects(), IsEmpty());
  EXPECT_EQ(window_.host.context->countOfEntity(kVodcastEntity), 0U);
}

}  // namespace
}  // namespace clipwave
