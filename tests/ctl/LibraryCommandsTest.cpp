// The commands that show and change the library, run as a user runs them.
#include <gmock/gmock.h>

#include <filesystem>

#include "tests/ctl/CompanionProcess.h"
#include "tests/support/RealMovies.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

namespace fs = std::filesystem;

class Companion : public Test {
 protected:
  // Makes the channel 1, "Channel 01", with the episode 2, "bread".
  void openMovie() { library.done({"open", makeMovie(library.folder, "bread.mov", 2)}); }
  nlohmann::json episode() const { return library.channel().at("children").at(0); }

  const Library library;
};

TEST_F(Companion, OpensAddsEditsAndShowsWhatItKeeps) {
  const std::string bread = makeMovie(library.folder, "bread.mov", 2);
  EXPECT_EQ(library.done({"open", bread}), "Channel 01\n");
  EXPECT_EQ(library.done("new Garden"), "Garden\n");
  library.done({"add", "Garden", bread, makeMovie(library.folder, "roses.MP4")});
  library.done({"set", "Channel 01", "vcTitle=Cooking", "block=1", "mediaPath=/tmp/cooking"});
  library.done("set Cooking/bread vcPublishDate=2009-03-04T02:05:09Z");
  EXPECT_THAT(library.done("channels"),
              AllOf(StartsWith("1\t*\t1\tCooking\t/tmp/cooking\n"), HasSubstr("\t*\t2\tGarden\t")));
  EXPECT_THAT(library.done("show Cooking"),
              AllOf(StartsWith("block: 1\n"), HasSubstr("\n  episode\n"), HasSubstr("\n  vcTitle: bread\n")));
  EXPECT_EQ(library.channel().at("canEditURLs"), true);
  EXPECT_TRUE(library.channel().at("lastBuildDate").is_null());
  EXPECT_EQ(episode().at("vcPublishDate"), "2009-03-04T02:05:09Z");
  EXPECT_EQ(episode().at("size"), fs::file_size(bread));
  // The zone is that of the environment.
  EXPECT_THAT(library.done("feed Cooking"), HasSubstr("<pubDate>Tue, 3 Mar 2009 21:05:09 -0500</pubDate>"));
}

TEST_F(Companion, NeverSavesWhenItOnlyShows) {
  EXPECT_EQ(library.done("show --json"), "{\n  \"channels\": []\n}\n");
  EXPECT_FALSE(fs::exists(library.store()));
  openMovie();
  const std::string before = library.storedBytes();
  // Most of these fill values that were not computed yet.
  for (const char* command : {"channels", "show", "show --json", "feed 1"}) {
    EXPECT_NE(library.done(command), "");
    EXPECT_EQ(library.storedBytes(), before) << command;
  }
}

TEST_F(Companion, SetsAllOfTheValuesOrNone) {
  openMovie();
  library.done("set 1 vcTitle=Cooking vcSubtitle=Bread");
  ASSERT_EQ(episode().at("mediaTimeString"), "00:00:02");
  library.folder.makeFolder("Movies/Clipwave/Taken");
  const std::string before = library.storedBytes();
  const struct {
    const char *record, *assignment, *message;
    int status;
  } refusals[] = {{"1", "lastBuildDate=yesterday", "lastBuildDate takes a date", 2},
                  {"1", "block=yes", "block takes 0 or 1, not \"yes\".", 2},
                  {"1", "nonsense=1", "There is no key nonsense in a Channel.", 2},
                  {"1", "vcTitle=Taken", "This channel name already exists at", 1},
                  {"1/2", "vcPath=/nowhere.mov", "There is no file \"/nowhere.mov\".", 1}};
  for (const auto& [record, assignment, message, status] : refusals)
    EXPECT_THAT(library.run({"set", record, "vcSubtitle=New", assignment, "vcEmail=a@b"}),
                Fails(status, message));
  EXPECT_EQ(library.storedBytes(), before);

  // Another movie is measured anew.
  library.done({"set", "1/2", "vcPath=" + makeMovie(library.folder, "longer.mp4", 5)});
  EXPECT_EQ(episode().at("mediaTimeString"), "00:00:05");
}

TEST_F(Companion, FindsRecordsByTitleOrIdAndAsksBackWhereSeveralAreMeant) {
  const std::string movie = makeMovie(library.folder, "bread.mov");
  library.done({"open", movie, movie});
  library.done("set 1 vcTitle=A/B");
  EXPECT_THAT(library.run("set A/B/bread block=1"),
              Fails(1, "More than one episode is titled \"bread\". Name it by its id: 2 3"));
  library.done("new A/B");
  const std::string several = "More than one channel is titled \"A/B\". Name it by its id: 1 4";
  EXPECT_THAT(library.run("feed A/B"), Fails(1, several));
  EXPECT_THAT(library.run("show A"), Fails(1, "There is no channel \"A\"."));
}

TEST_F(Companion, TellsWrongUsageFromFailure) {
  for (const char* command : {"", "bake", "--loud", "channels x", "set a", "publish --keep --replace"}) {
    const Outcome outcome = library.run(command);
    EXPECT_THAT(outcome, Fails(2, "clipwavectl: ")) << command;
    EXPECT_EQ(outcome.out, "");
  }
  EXPECT_THAT(library.run("open nowhere.mov"), Fails(1, "There is no file"));
  EXPECT_THAT(library.run({"open", library.folder.write("notes.txt", "x")}), Fails(1, "is not a movie file"));
  EXPECT_FALSE(fs::exists(library.store()));
}

TEST_F(Companion, LeavesALibraryAloneThatItCannotReadOrSave) {
  library.done("new Cooking");
  const std::string whole = library.storedBytes();
  const Outcome unsaved = library.run("set Cooking vcSubtitle=Bread", 1);
  EXPECT_THAT(unsaved, Fails(1, "The library at " + library.store() + " cannot be saved. "));
  EXPECT_EQ(library.storedBytes(), whole);

  std::string newer = whole;
  newer.replace(newer.find("library version=\"1"), 18, "library version=\"2");
  for (const std::string& bytes :
       {whole.substr(0, whole.size() / 2), std::string("no XML"), std::string(), newer}) {
    library.folder.write("data/Clipwave/Clipwave.xml", bytes);
    for (const char* command : {"channels", "new Garden", "publish"}) {
      EXPECT_THAT(library.run(command),
                  Fails(1, "The library at " + library.store() + " cannot be opened. "));
    }
    EXPECT_EQ(library.storedBytes(), bytes);
  }
  EXPECT_THAT(library.run("show"), Fails(1, "newer version of this application"));
}

TEST_F(Companion, ShowsSetsAndResetsUserDefaults) {
  EXPECT_THAT(library.done("defaults"), HasSubstr("\nnoConfirm=0\n"));
  library.done("defaults noConfirm=1 minsplitview=90 defaultFilename=show");
  EXPECT_EQ(library.done("defaults noConfirm minsplitview"), "1\n90\n");
  library.done("new");
  EXPECT_EQ(library.channel().at("filename"), "show01.xml");

  const std::string file = library.folder / "config/Clipwave/defaults.plist";
  const std::string before = readFile(file);
  for (const std::string wrong : {"noConfirm=yes", "minsplitview=nan", "noconfirm=1", "noconfirm"})
    EXPECT_THAT(library.run({"defaults", "defaultFilename=x", wrong}), Fails(2, wrong.substr(0, 8)));
  EXPECT_EQ(readFile(file), before);
  library.folder.write("config/Clipwave/defaults.plist", "<plist");
  for (const char* command : {"defaults noConfirm=1", "publish"})
    EXPECT_THAT(library.run(command), Fails(1, file));
  EXPECT_EQ(readFile(file), "<plist");
}

}  // namespace
}  // namespace clipwave
