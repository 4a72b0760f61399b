// Importing a feed of 10,000 items from a file, from its bytes to the channel in the list.
#include <libxml/parser.h>

#include <fstream>

#include "bench/BenchProgram.h"
#include "bench/Measure.h"
#include "platform/foundation/URLs.h"
#include "publish/FeedDocument.h"

namespace clipwave::bench {
namespace {

constexpr int kRounds = 9;

// The path of a feed as Clipwave writes it.
std::string writeFeed(BenchProgram& bench, const std::string& folder, int episodes) {
  auto* channel = static_cast<Channel*>(bench.context().insertNewObject(kChannelEntity));
  bench.runLoop().runUntilIdle();
  for (int e = 0; e < episodes; ++e) {
    ManagedObject* episode = bench.context().insertNewObject(kVodcastEntity);
    fillEpisode(*episode, e);
    episode->setValue("parent", channel);
  }
  const std::string path = folder + "/feed" + std::to_string(episodes) + ".xml";
  std::ofstream(path, std::ios::binary)
      << makeFeedDocument(*channel, sortedEpisodes(*channel), bench.controller().feedTables())
             .prettyPrinted();
  return path;
}

// Seconds of an import; the channel is taken away again outside of the time.
double import(BenchProgram& bench, const std::string& path) {
  Channel* channel = nullptr;
  const double seconds =
      secondsOf([&] { channel = bench.controller().feedImport().importRSSWithURL(fileURLWithPath(path)); });
  if (channel == nullptr) std::abort();
  bench.runLoop().runUntilIdle();
  bench.context().undoManager().undo();
  bench.context().undoManager().removeAllActions();
  return seconds;
}

double read(const std::string& path) {
  return secondsOf([&] { xmlFreeDoc(xmlReadFile(path.c_str(), nullptr, 0)); });
}

int run() {
  BenchHome home;
  std::string large;
  std::string small;
  {
    BenchProgram bench;
    bench.context().undoManager().disableUndoRegistration();
    large = writeFeed(bench, home.path(), 10'000);
    small = writeFeed(bench, home.path(), 1'000);
  }
  BenchProgram bench;
  std::printf("Import: 10000 items, %.1f MB\n", static_cast<double>(std::filesystem::file_size(large)) / 1e6);
  report("import of 10,000 items", "xmlReadFile",
         compareSeconds(
             kRounds, [&] { return import(bench, large); }, [&] { return read(large); }),
         "<= 5");
  report("import of 10,000 items", "import of 1,000",
         compareSeconds(
             kRounds, [&] { return import(bench, large); }, [&] { return import(bench, small); }),
         "<= 12");
  return 0;
}

}  // namespace
}  // namespace clipwave::bench

int main() {
  return clipwave::bench::run();
}
