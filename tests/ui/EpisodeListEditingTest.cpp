#include "ui/EpisodeListEditing.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <unistd.h>

#include <filesystem>

#include "platform/appkit/FieldBinding.h"
#include "tests/support/LibraryWindow.h"

namespace clipwave {
namespace {

using testing::dragOfFiles;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto kOn = TableDropOperation::On;
constexpr auto kAbove = TableDropOperation::Above;

class EpisodeListEditingTest : public ::testing::Test {
 protected:
  std::string file(std::string_view name, std::int64_t modified = 1'200'000'000) {
    const std::string path = window_.host.makeFile(name, 2048, 5);
    const timeval times[2] = {{modified, 0}, {modified, 0}};
    EXPECT_EQ(::utimes(path.c_str(), times), 0);
    return path;
  }
  std::vector<std::string> episodeTitles() { return window_.titles(window_.episodes); }
  std::vector<std::string> channelTitles() { return window_.titles(window_.channels); }
  Value selectedChannelTitle() { return window_.channels.selection().value("vcTitle"); }
  // What each listed record has under a key.
  static std::vector<bool> flags(const ArrayController& list, std::string_view key) {
    std::vector<bool> flags;
    for (ManagedObject* record : list.arrangedObjects()) flags.push_back(record->value(key).boolValue());
    return flags;
  }

  testing::LibraryWindow window_;
  EpisodeListEditing& editing_ = window_.editing;
  ArrayController& episodes_ = window_.episodes;
  ArrayController& channels_ = window_.channels;
};

TEST_F(EpisodeListEditingTest, AMovieIsToldByItsExactExtensionOrByItsContent) {
  const std::string quickTime(
      "\0\0\0\x14"
      "ftypqt  \0\0\0\0qt  ",
      20);
  EXPECT_TRUE(editing_.isMovieFile("/nowhere/a.b.mov"));
  EXPECT_TRUE(editing_.isMovieFile(window_.host.folder.write("plain", quickTime)));
  EXPECT_TRUE(editing_.isMovieFile(window_.host.folder.write("LOUD.MOV", quickTime)));
  EXPECT_FALSE(editing_.isMovieFile(window_.host.folder.write("other.MOV", "text")));
  EXPECT_FALSE(editing_.isMovieFile("/nowhere/mov"));
  EXPECT_THAT(editing_.movieFileTypes(), ElementsAre("mov", "mp4", "'MooV'"));
}

TEST_F(EpisodeListEditingTest, OneUnsuitableFileRefusesTheWholeDragOnBothTables) {
  window_.addChannel("News");
  const DraggingInfo mixed = dragOfFiles({file("clip.mov"), file("notes.txt")});
  for (TableView* table : {static_cast<TableView*>(&window_.episodeTable), &window_.channelTable}) {
    EXPECT_EQ(table->draggingUpdated(mixed, 0, kOn), 0U);
    EXPECT_FALSE(table->performDrop(mixed, 0, kOn));
  }
  EXPECT_THAT(episodeTitles(), IsEmpty());
}

TEST_F(EpisodeListEditingTest, EpisodesAreDroppedAtTheTopAndChannelsTakeThemWhereTheyAre) {
  const DraggingInfo drag = dragOfFiles({file("clip.mov"), file("clip.mp4")});
  EXPECT_EQ(window_.episodeTable.draggingUpdated(drag, 5, kOn), 16U);
  EXPECT_EQ(window_.episodeTable.dropRow(), 0);
  EXPECT_EQ(window_.episodeTable.dropOperation(), kAbove);
  EXPECT_EQ(window_.channelTable.draggingUpdated(drag, 2, kOn), 0xFFFFFFFFU);
  EXPECT_EQ(window_.channelTable.dropRow(), 2);
  EXPECT_EQ(window_.channelTable.dropOperation(), kOn);
}

TEST_F(EpisodeListEditingTest, DroppedEpisodesStandOnTopInReverseOrderNamedAndDatedByTheirFiles) {
  ManagedObject& channel = window_.addChannel("News");
  window_.addChannel("Other");
  channels_.setSelectedObjects({&channel});
  window_.addEpisode("newest.mov");
  window_.host.userDefaults.setInitialValues({{"defaultPodcastPrefix", "Pod"}});
  const std::string target = file("target.bin", 1'100'000'000);
  const std::string link = window_.host.folder / "My Talk.v2.mov";
  std::filesystem::create_symlink(target, link);

  ASSERT_TRUE(
      window_.episodeTable.performDrop(dragOfFiles({file("a.mov"), link, "/nowhere/gone.mov"}), 1, kOn));
  EXPECT_THAT(episodeTitles(), ElementsAre("Podgone", "PodMy Talk.v2", "Poda", "newest"));
  EXPECT_THAT(episodes_.selectionIndexes(), ElementsAre(0));
  EXPECT_EQ(channel.relatedObjects("children").size(), 4U);
  const auto& listed = episodes_.arrangedObjects();
  EXPECT_EQ(listed[2]->value("vcPublishDate"), Value(Date::fromSeconds(1'200'000'000)));
  EXPECT_EQ(listed[1]->value("vcPublishDate"), Value(Date::fromSeconds(1'100'000'000)));
  EXPECT_EQ(listed[0]->value("vcPublishDate"), Value(window_.host.testClock.now()));
  EXPECT_EQ(listed[0]->value("vcPath"), Value("/nowhere/gone.mov"));
}

TEST_F(EpisodeListEditingTest, ADropOnAChannelRowSelectsThatChannelAndTheSameRowOfItsEpisodes) {
  for (const char* title : {"A", "B", "C"}) window_.addChannel(title);
  channels_.setSelectionIndex(0);
  const DraggingInfo drag = dragOfFiles({file("1.mov"), file("2.mov"), file("3.mov")});
  ASSERT_TRUE(window_.channelTable.performDrop(drag, 2, kOn));
  EXPECT_EQ(selectedChannelTitle(), Value("C"));
  EXPECT_THAT(episodeTitles(), ElementsAre("3", "2", "1"));
  EXPECT_THAT(episodes_.selectionIndexes(), ElementsAre(2));

  ASSERT_TRUE(editing_.acceptDrop(window_.channelTable, drag, -1, kOn));
  EXPECT_EQ(selectedChannelTitle(), Value("A"));
  EXPECT_THAT(episodes_.selectionIndexes(), ElementsAre(0));
}

TEST_F(EpisodeListEditingTest, ADropBetweenChannelsOrWithNoneSelectedMakesAChannel) {
  ASSERT_TRUE(window_.episodeTable.performDrop(dragOfFiles({file("1.mov")}), 0, kAbove));
  window_.host.turn();
  EXPECT_THAT(channelTitles(), ElementsAre("Channel 01"));
  EXPECT_THAT(episodeTitles(), ElementsAre("1"));
  EXPECT_TRUE(episodes_.selection().value("vcAuthor").isNull()) << "the channel's defaults come later";

  ASSERT_TRUE(window_.channelTable.performDrop(dragOfFiles({file("2.mov")}), 0, kAbove));
  window_.host.turn();
  EXPECT_EQ(selectedChannelTitle(), Value("Channel 02"));
  EXPECT_THAT(episodeTitles(), ElementsAre("2"));
  EXPECT_EQ(channels_.arrangedObjects().size(), 2U);
}

TEST_F(EpisodeListEditingTest, WithSeveralChannelsSelectedTheFirstTakesTheDrop) {
  for (const char* title : {"A", "B", "C"}) window_.addChannel(title);
  channels_.setSelectionIndexes({1, 2});
  ASSERT_TRUE(window_.episodeTable.performDrop(dragOfFiles({file("1.mov")}), 0, kAbove));
  EXPECT_EQ(selectedChannelTitle(), Value("B"));
  EXPECT_THAT(episodeTitles(), ElementsAre("1"));
}

TEST_F(EpisodeListEditingTest, ADropWithoutLinksOrFileNamesChangesNothing) {
  DraggingInfo drag = dragOfFiles({file("1.mov")});
  drag.draggingSourceOperationMask = NSDragOperationEvery & ~NSDragOperationLink;
  EXPECT_FALSE(window_.channelTable.performDrop(drag, 0, kAbove));
  EXPECT_FALSE(editing_.acceptDrop(window_.episodeTable, DraggingInfo(), 0, kAbove));
  EXPECT_THAT(channelTitles(), IsEmpty());
  EXPECT_FALSE(window_.host.context->hasChanges());
}

TEST_F(EpisodeListEditingTest, ADropMakesNoChannelWhileAnEditIsRefusedAndAsksOnlyOnce) {
  window_.addChannel("News");
  TextField field;
  int asked = 0;
  field.setValidator([&asked](const TextField&, std::string_view) { return ++asked == 0; });
  const FieldBinding binding(field, channels_, "vcTitle", nullptr);
  field.edit("Old");
  EXPECT_FALSE(window_.channelTable.performDrop(dragOfFiles({file("1.mov")}), 0, kAbove));
  EXPECT_THAT(channelTitles(), ElementsAre("News"));
  EXPECT_EQ(asked, 1);
}

TEST_F(EpisodeListEditingTest, AChosenMovieGoesToEverySelectedEpisodeAndACancelledPanelChangesNothing) {
  window_.addChannel("News");
  for (const char* name : {"1.mov", "2.mov", "3.mov"}) window_.addEpisode(name);
  episodes_.setSelectionIndexes({0, 2});
  const auto paths = [this] {
    std::vector<std::string> names;
    for (auto* episode : episodes_.arrangedObjects()) {
      names.push_back(lastPathComponent(episode->value("vcPath").stringValue()));
    }
    return names;
  };
  window_.preview.play();
  editing_.addMovie();
  EXPECT_FALSE(window_.preview.isPlaying());
  ASSERT_EQ(window_.shell.openPanelSheets.size(), 1U);
  const OpenPanel& panel = window_.shell.openPanels.front();
  EXPECT_EQ(window_.shell.openPanelSheets.front().window, &window_.mainWindow);
  EXPECT_THAT(panel.allowedTypes, ElementsAre("mov", "mp4", "'MooV'"));
  EXPECT_FALSE(panel.allowsMultipleSelection || panel.canChooseDirectories);
  window_.shell.endOpenPanelSheet({});
  EXPECT_THAT(paths(), ElementsAre("3.mov", "2.mov", "1.mov"));

  episodes_.selection().value("mediaSizeString");
  editing_.addMovie();
  window_.shell.endOpenPanelSheet({window_.host.makeFile("new.mp4", 3072, 7)});
  EXPECT_THAT(paths(), ElementsAre("new.mp4", "2.mov", "new.mp4"));
  EXPECT_THAT(episodeTitles(), ElementsAre("3", "2", "1"));
  EXPECT_EQ(episodes_.selection().value("mediaSizeString"), Value("3.00")) << "measured anew";
  EXPECT_EQ(episodes_.selection().value("mediaTimeString"), Value("00:00:07"));
}

TEST_F(EpisodeListEditingTest, AClearedMovieLeavesNothingOfItselfAndUndoBringsItBack) {
  window_.addChannel("News");
  ManagedObject& episode = window_.addEpisode("clip.mov");
  const auto shown = [&episode] {
    std::vector<Value> values;
    for (const char* key :
         {"vcPath", "mediaSizeString", "mediaSizeUnit", "mediaTimeString", "size", "movieInfo"}) {
      values.push_back(episode.value(key));
    }
    return values;
  };
  const std::vector<Value> before = shown();
  const Value date = episode.value("vcPublishDate");
  window_.host.turn();
  window_.preview.play();
  editing_.clearMovie();
  window_.host.turn();

  EXPECT_FALSE(window_.preview.isPlaying());
  // The size is cleared last: clearing its texts computes it anew.
  for (const char* key : {"alias", "vcPath", "movie", "mediaTimeString", "size"}) {
    EXPECT_TRUE(episode.primitiveValue(key).isNull()) << key;
  }
  EXPECT_THAT(shown(), ElementsAre(Value(), Value(""), Value(), Value(), Value(0), Value("")));
  EXPECT_EQ(episode.value("vcTitle"), Value("clip"));
  EXPECT_EQ(episode.value("vcPublishDate"), date);
  window_.host.context->undo();
  EXPECT_EQ(shown(), before);
}

TEST_F(EpisodeListEditingTest, TogglingSwitchesEachSelectedRecordOnItsOwn) {
  window_.addChannel("A");
  window_.addChannel("B").setValue("vcPublish", Value());
  for (const char* name : {"1.mov", "2.mov", "3.mov"}) window_.addEpisode(name);
  episodes_.arrangedObjects()[1]->setValue("vcPublish", false);
  episodes_.setSelectionIndexes({0, 1});
  editing_.toggleSelectedOnPublishVodcasts();
  EXPECT_THAT(flags(episodes_, "vcPublish"), ElementsAre(false, true, true));
  EXPECT_THAT(flags(episodes_, "vcCopy"), ElementsAre(true, true, true));
  editing_.toggleSelectedOnCopyVodcasts();
  EXPECT_THAT(flags(episodes_, "vcCopy"), ElementsAre(false, false, true));
  EXPECT_EQ(episodes_.arrangedObjects()[0]->primitiveValue("vcCopy"), Value(false));
  channels_.setSelectionIndexes({0, 1});
  editing_.toggleSelectedOnPublishChannel();
  EXPECT_THAT(flags(channels_, "vcPublish"), ElementsAre(false, true));
}

TEST_F(EpisodeListEditingTest, AnyChangeOfSelectionPausesThePreview) {
  window_.addChannel("A");
  window_.preview.play();
  EXPECT_TRUE(window_.channelTable.selectRowIndexes({0}));
  EXPECT_FALSE(window_.preview.isPlaying());
}

TEST_F(EpisodeListEditingTest, ImagesAreFoundByTheirLiteralTitle) {
  const char* const title = R"(It's "50\%" * OR 1=1)";
  Image& image = window_.host.newImage("http://a.example/1.png");
  image.setValue("title", title);
  window_.host.newImage("http://a.example/2.png").setValue("title", "It");
  EXPECT_THAT(editing_.imageObjectForKey(title), ::testing::Optional(ElementsAre(&image)));
  EXPECT_THAT(editing_.imageObjectForKey("it"), ::testing::Optional(IsEmpty()));
  window_.images.setManagedObjectContext(nullptr);
  EXPECT_EQ(editing_.imageObjectForKey("It"), std::nullopt);
}

TEST_F(EpisodeListEditingTest, TheImageSheetRevertsThePendingEditAndStaysUntilItIsClosed) {
  window_.host.newImage("http://a.example/1.png").setValue("title", "Logo");
  window_.images.fetch();
  TextField field;
  const FieldBinding binding(field, window_.images, "title", nullptr);
  editing_.editImageProps();
  EXPECT_EQ(window_.mainWindow.attachedSheet(), &window_.imageWindow);
  field.edit("Other");
  editing_.revertImageChanges();
  EXPECT_EQ(field.stringValue(), "Logo");
  EXPECT_TRUE(window_.imageWindow.isVisible());
  editing_.closeEditImagePropsSheet();
  EXPECT_FALSE(window_.imageWindow.isVisible());
  EXPECT_EQ(window_.mainWindow.attachedSheet(), nullptr);
  EXPECT_EQ(window_.images.selection().value("title"), Value("Logo"));
}

TEST_F(EpisodeListEditingTest, ThePreferencesHoldTheApplicationUntilTheyAreDismissed) {
  const int always = ::open("/dev/null", O_RDONLY);
  auto dismissing = window_.host.loop->watch(
      always, RunLoop::Readiness::Readable,
      [this] {
        EXPECT_TRUE(window_.prefWindow.isVisible());
        EXPECT_EQ(window_.host.loop->mode(), RunLoop::Mode::Modal);
        editing_.dismissPrefs();
      },
      RunLoop::Delivery::DefaultAndModal);
  editing_.showPrefs();
  EXPECT_FALSE(window_.prefWindow.isVisible());
  EXPECT_EQ(window_.host.loop->mode(), RunLoop::Mode::Default);
  dismissing.reset();
  ::close(always);
}

TEST_F(EpisodeListEditingTest, OnlyOneSharedMovieIsOpened) {
  window_.addChannel("News");
  editing_.openMediaInQuicktime();
  window_.addEpisode("1.mov");
  window_.addEpisode("2.mov");
  window_.addEpisode("2.mov");
  episodes_.setSelectionIndexes({0, 2});
  editing_.openMediaInQuicktime();
  EXPECT_THAT(window_.workspace.calls, IsEmpty());
  episodes_.setSelectionIndexes({0, 1});
  editing_.openMediaInQuicktime();
  EXPECT_THAT(window_.workspace.calls,
              ElementsAre("file " + (window_.host.folder / "2.mov") + " with QuickTime Player"));
}

}  // namespace
}  // namespace clipwave
