// Recordings from the command line, of the pattern that needs no camera.
#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <thread>

#include "tests/ctl/CompanionProcess.h"
#include "tests/support/RealMovies.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

namespace fs = std::filesystem;

class Record : public Test {
 protected:
  void SetUp() override {
    library.done("new Cooking");
    library.done("defaults captureDevice=test-pattern");
  }
  std::string movie(const std::string& name) const {
    return library.folder / ("Movies/Clipwave/Cooking/" + name);
  }
  static double secondsOf(const std::string& path) {
    return std::atof(probeMovie(path, "format=duration").c_str());
  }
  // Lets a recording of a minute go on until its file has that many bytes.
  static void waitForBytes(const std::string& path, std::uintmax_t bytes) {
    for (int turns = 0; turns < 600; ++turns) {
      std::error_code missing;
      const auto size = fs::file_size(path, missing);
      if (!missing && size > bytes) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    FAIL() << path << " does not grow";
  }

  const Library library;
};

TEST_F(Record, MakesAMovieThatPlaysAndAnEpisodeOfIt) {
  const Outcome recorded = library.run("record Cooking --seconds 2 --name Interview");
  EXPECT_THAT(recorded, Exits(0));
  EXPECT_EQ(recorded.out, movie("Interview.mov") + "\n");
  EXPECT_EQ(recorded.err, "");
  EXPECT_EQ(probeMovie(movie("Interview.mov"),
                       "stream=codec_name,codec_tag_string,sample_rate,channels,width,height,r_frame_rate"),
            "mpeg4,mp4v,320,240,15/1\naac,mp4a,48000,2,0/0\n");
  EXPECT_NEAR(secondsOf(movie("Interview.mov")), 2, 0.3);
  EXPECT_TRUE(canBePlayed(movie("Interview.mov")));
  const auto episode = library.channel().at("children").at(0);
  EXPECT_EQ(episode.at("vcTitle"), "Interview");
  EXPECT_EQ(episode.at("vcPath"), movie("Interview.mov"));
  EXPECT_EQ(episode.at("mediaTimeString"), "00:00:02");

  EXPECT_THAT(library.run("record Cooking --seconds 1 --name Interview"),
              Fails(1, "“Interview” exists already."));
  for (const char* wrong : {"record Cooking --seconds 0", "record Cooking --seconds 1s",
                            "record Cooking --name x", "record Cooking --seconds 1 --name a/b"})
    EXPECT_THAT(library.run(wrong), Exits(2)) << wrong;
  EXPECT_EQ(library.channel().at("children").size(), 1U);
}

TEST_F(Record, KeepsWhatThereIsWhenItIsInterruptedKilledOrTheDiskIsFull) {
  const std::string command = "record Cooking --seconds 60";
  CompanionProcess interrupted(library.folder, command.c_str(), -1, library.folder / "one");
  waitForBytes(movie("Movie1.mov"), 150'000);
  interrupted.interrupt();
  EXPECT_THAT(interrupted.wait(), Exits(0));
  EXPECT_GT(secondsOf(movie("Movie1.mov")), 1);

  CompanionProcess killed(library.folder, command.c_str(), -1, library.folder / "two");
  waitForBytes(movie("Movie2.mov"), 150'000);
  killed.interrupt(SIGKILL);
  EXPECT_THAT(killed.wait(), Exits(128 + SIGKILL));
  EXPECT_GT(secondsOf(movie("Movie2.mov")), 1);
  EXPECT_TRUE(canBePlayed(movie("Movie2.mov")));

  const Outcome full = library.run(command.c_str(), 300);
  EXPECT_THAT(full, Fails(1, "Recording Error: An error has occurred while recording."));
  EXPECT_EQ(full.out, movie("Movie3.mov") + "\n");
  EXPECT_TRUE(canBePlayed(movie("Movie3.mov")));
  const auto episodes = library.channel().at("children");
  ASSERT_EQ(episodes.size(), 2U) << "of the killed one nobody lived to make an episode";
  std::vector<std::string> titles;
  for (const auto& episode : episodes) titles.push_back(episode.at("vcTitle"));
  EXPECT_THAT(titles, UnorderedElementsAre("Movie1", "Movie3"));
}

}  // namespace
}  // namespace clipwave
