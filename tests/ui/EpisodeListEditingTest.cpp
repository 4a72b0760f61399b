#include "ui/EpisodeListEditing.h"

#include <gmock/gmock.h>
#include <sys/time.h>

#include <filesystem>

#include "tests/support/TestProgram.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

constexpr auto kOn = TableDropOperation::On;
constexpr auto kAbove = TableDropOperation::Above;

DraggingInfo drag(const std::vector<std::string>& paths) {
  DraggingInfo info;
  info.draggingPasteboard.setPropertyList(Array(paths.begin(), paths.end()), NSFilenamesPboardType);
  return info;
}

class EpisodeListEditingTest : public Test {
 protected:
  std::string movieOf(std::string_view name, std::int64_t modified) {
    const std::string path = program_.makeMovie(name);
    const timeval times[2] = {{modified, 0}, {modified, 0}};
    EXPECT_EQ(::utimes(path.c_str(), times), 0);
    return path;
  }
  std::string selectedChannel() { return std::string(channels_.selection().value("vcTitle").stringValue()); }
  TestProgram program_;
  MainInterface& window_ = program_.launch();
  EpisodeListEditing& editing_ = program_.controller().episodeListEditing();
  ArrayController& episodes_ = program_.episodes();
  ArrayController& channels_ = program_.channels();
};

TEST_F(EpisodeListEditingTest, ADragIsTakenWholeOrNotAtTheTopOfEpisodesAndAnywhereOnChannels) {
  const DraggingInfo good = drag({"/m/1.mov", "/m/2.mp4"});
  EXPECT_EQ(window_.vcastTableView.draggingUpdated(good, 5, kOn), 16U);
  EXPECT_EQ(window_.vcastTableView.dropRow(), 0);
  EXPECT_EQ(window_.vcastTableView.dropOperation(), kAbove);
  // A movie is told by its exact extension or by its content.
  const std::string told = program_.folder.write("LOUD.MOV", std::string("\0\0\0\x08moov", 8));
  EXPECT_EQ(window_.channelTableView.draggingUpdated(drag({told, "/m/1.mov"}), 2, kOn), 0xFFFFFFFFU);
  for (const std::string& no : {program_.folder.write("other.MOV", "text"), std::string("/m/mov")})
    EXPECT_EQ(editing_.validateDrop(window_.vcastTableView, drag({"/m/1.mov", no}), 0, kAbove), 0U) << no;
}

TEST_F(EpisodeListEditingTest, DroppedEpisodesStandOnTopInReverseOrderNamedAndDatedByTheirFiles) {
  program_.addEpisodes({"newest.mov"});
  program_.defaults.setInitialValues({{"defaultPodcastPrefix", "Pod"}});
  const std::string link = program_.folder / "My Talk.v2.mov";
  std::filesystem::create_symlink(movieOf("target", 1'100'000'000), link);
  const std::string file = movieOf("a.mov", 1'200'000'000);
  ASSERT_TRUE(window_.vcastTableView.performDrop(drag({file, link, "/nowhere/gone.mov"}), 1, kOn));
  EXPECT_THAT(program_.listed(episodes_), ElementsAre("Podgone", "PodMy Talk.v2", "Poda", "newest"));
  EXPECT_THAT(episodes_.selectionIndexes(), ElementsAre(0));
  const auto& records = episodes_.arrangedObjects();
  EXPECT_EQ(records[2]->value("vcPath"), Value(file));
  EXPECT_EQ(records[2]->value("vcPublishDate"), Value(Date::fromSeconds(1'200'000'000)));
  EXPECT_EQ(records[1]->value("vcPublishDate"), Value(Date::fromSeconds(1'100'000'000)));
  EXPECT_EQ(records[0]->value("vcPublishDate"), Value(program_.clock.now()));
}

TEST_F(EpisodeListEditingTest, ADropFindsItsChannelByWhereItLands) {
  for (int i = 0; i < 2; ++i) program_.addChannel();
  const DraggingInfo two = drag({"/m/1.mov", "/m/2.mov"});
  ASSERT_TRUE(window_.channelTableView.performDrop(two, 1, kOn));
  EXPECT_EQ(selectedChannel(), "Channel 02");
  EXPECT_THAT(program_.listed(episodes_), ElementsAre("2", "1"));
  channels_.setSelectionIndexes({0, 2});
  ASSERT_TRUE(window_.vcastTableView.performDrop(two, 0, kAbove));
  EXPECT_EQ(selectedChannel(), "Channel 01") << "the first of several";
  for (TableView* table : {&window_.channelTableView, static_cast<TableView*>(&window_.vcastTableView)}) {
    ASSERT_TRUE(table->performDrop(drag({"/m/4.mov"}), 0, kAbove));
    program_.turn();
    EXPECT_THAT(program_.listed(episodes_), ElementsAre("4")) << "in a channel of its own";
    channels_.setSelectionIndexes({});
  }
  EXPECT_EQ(channels_.arrangedObjects().size(), 5U);
}

TEST_F(EpisodeListEditingTest, ADropWhileAnEditRefusesToEndChangesNothing) {
  window_.channelTitleTextField.setValidator([](const TextField&, std::string_view) { return false; });
  const FieldBinding binding(window_.channelTitleTextField, channels_, "vcTitle", nullptr);
  window_.channelTitleTextField.edit("refused");
  EXPECT_FALSE(window_.channelTableView.performDrop(drag({"/m/1.mov"}), 0, kAbove));
  EXPECT_THAT(program_.listed(channels_), ElementsAre("Channel 01"));
  EXPECT_THAT(program_.listed(episodes_), IsEmpty());
}

TEST_F(EpisodeListEditingTest, AChosenMovieGoesToEverySelectedEpisodeAndACancelledPanelChangesNothing) {
  program_.addEpisodes({"1.mov", "2.mov", "3.mov"});
  episodes_.setSelectionIndexes({0, 2});
  const std::vector<std::string> paths = program_.listed(episodes_, "vcPath");
  const std::string chosen = program_.makeMovie("new.mp4", 3072);
  window_.previewPane.play();
  for (const std::vector<std::string>& answer : {std::vector<std::string>(), {chosen}}) {
    editing_.addMovie();
    EXPECT_FALSE(window_.previewPane.isPlaying());
    EXPECT_THAT(program_.shell.openPanels.back().allowedTypes, ElementsAre("mov", "mp4", "'MooV'"));
    EXPECT_EQ(program_.listed(episodes_, "vcPath"), paths);
    program_.shell.endOpenPanelSheet(answer);
  }
  EXPECT_THAT(program_.listed(episodes_, "vcPath"), ElementsAre(chosen, paths[1], chosen));
  EXPECT_THAT(program_.listed(episodes_, "mediaSizeString"), ElementsAre("3.00", "2.00", "3.00"));
}

TEST_F(EpisodeListEditingTest, AClearedMovieLeavesNothingOfItselfAndUndoBringsItBack) {
  program_.addEpisodes({"clip.mov"});
  ManagedObject& episode = *episodes_.arrangedObjects().front();
  const auto shown = [&episode](std::string_view key) { return Value(episode.value(key)); };
  const Value path = shown("vcPath");
  editing_.clearMovie();
  program_.turn();
  EXPECT_EQ(shown("vcTitle"), Value("clip"));
  // The size goes last: clearing its texts computes it anew.
  for (const char* key : {"alias", "movie", "size"}) EXPECT_TRUE(episode.primitiveValue(key).isNull()) << key;
  program_.context().undo();
  EXPECT_EQ(shown("vcPath"), path);
  EXPECT_EQ(shown("mediaSizeString"), Value("2.00"));
}

TEST_F(EpisodeListEditingTest, ImagesAreFoundByTheirLiteralTitle) {
  const char* const title = R"(It's "50\%" * OR 1=1)";
  ManagedObject& image = *window_.imageController.add();
  image.setValue("title", title);
  EXPECT_THAT(editing_.imageObjectForKey(title), Optional(ElementsAre(&image)));
  EXPECT_THAT(editing_.imageObjectForKey("It"), Optional(IsEmpty()));
}

}  // namespace
}  // namespace clipwave
