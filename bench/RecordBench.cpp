// Single records: the cost of one more channel, of reading an episode's path, and of a library whose movies
// are gone.
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "bench/BenchProgram.h"
#include "bench/Measure.h"

namespace clipwave::bench {
namespace {

void addChannel(BenchProgram& bench) {
  bench.controller().channelController().add();
  bench.runLoop().runUntilIdle();
}

// The cost of one channel after `count` others, as the median of several, in one library that grows.
void channelCost() {
  BenchHome home;
  BenchProgram bench;
  const auto costFrom = [&](int count) {
    while (bench.context().countOfEntity(kChannelEntity) < static_cast<std::size_t>(count)) addChannel(bench);
    std::vector<double> seconds;
    for (int i = 0; i < 15; ++i) seconds.push_back(secondsOf([&] { addChannel(bench); }));
    return median(seconds);
  };
  const double few = costFrom(100);
  const double many = costFrom(10'000);
  report("the 10,001st channel with its defaults", "the 101st", {many, few, many / few}, "<= 3");
}

void pathCost() {
  BenchHome home;
  BenchProgram bench;
  const std::string path = home.path() + "/clip.mov";
  std::ofstream(path) << "movie";
  ManagedObject* episode = bench.context().insertNewObject(kVodcastEntity);
  episode->setValue("vcPath", path);
  constexpr int kReads = 100'000;
  report("100,000 readings of vcPath, the file in its place", "as many calls of stat",
         compare(
             7,
             [&] {
               for (int i = 0; i < kReads; ++i) (void)episode->value("vcPath");
             },
             [&] {
               struct stat facts {};
               for (int i = 0; i < kReads; ++i) (void)::stat(path.c_str(), &facts);
             }),
         "<= 5");
}

void missingMovies() {
  BenchHome home;
  BenchProgram bench;
  constexpr int kEpisodes = 10'000;
  const std::string folder = home.path() + "/Movies";
  std::filesystem::create_directory(folder);
  ManagedObject* channel = bench.context().insertNewObject(kChannelEntity);
  std::vector<ManagedObject*> episodes;
  for (int i = 0; i < kEpisodes; ++i) {
    const std::string path = folder + "/clip" + std::to_string(i) + ".mov";
    std::ofstream(path) << i;
    ManagedObject* episode = bench.context().insertNewObject(kVodcastEntity);
    episode->setValue("vcPath", path);
    episode->setValue("parent", channel);
    episodes.push_back(episode);
  }
  std::filesystem::remove_all(folder);
  const double seconds = secondsOf([&] {
    for (ManagedObject* episode : episodes) {
      for (const char* key :
           {"vcTitle", "vcPublishDate", "vcPath", "movie", "mediaTimeString", "mediaSizeString",
            "mediaSizeUnit", "size", "movieInfo", "mediaURL", "mediaFilename", "mediaFullURL"}) {
        (void)episode->value(key);
      }
    }
  });
  std::printf("%-58s %8.2f s   (aim <= 2 s)\n", "10,000 episodes listed whose movies are all missing",
              seconds);
}

}  // namespace
}  // namespace clipwave::bench

int main() {
  clipwave::bench::channelCost();
  clipwave::bench::pathCost();
  clipwave::bench::missingMovies();
  return 0;
}
