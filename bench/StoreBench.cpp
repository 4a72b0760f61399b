// A library of 100 channels with 1,000 episodes each: opening it, saving it, and the memory that an opened
// one takes.
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>

#include "bench/BenchProgram.h"
#include "bench/Measure.h"
#include "platform/coredata/PersistentStoreCoordinator.h"
#include "platform/coredata/XMLStore.h"

namespace clipwave::bench {
namespace {

constexpr int kChannels = 100;
constexpr int kEpisodes = 1000;
constexpr int kRounds = 7;

void makeLibrary(BenchProgram& bench) {
  ManagedObjectContext& context = bench.context();
  context.undoManager().disableUndoRegistration();
  for (int c = 0; c < kChannels; ++c) {
    ManagedObject* channel = context.insertNewObject(kChannelEntity);
    channel->setPrimitiveValue("vcTitle", "Channel of the week " + std::to_string(c));
    channel->setPrimitiveValue("vcURL", "http://podcasts.clipwave.example/" + std::to_string(c));
    for (int e = 0; e < kEpisodes; ++e) {
      ManagedObject* episode = context.insertNewObject(kVodcastEntity);
      fillEpisode(*episode, c * kEpisodes + e);
      episode->setPrimitiveValue("vcPath", "/home/ann/Movies/cooking/week " + std::to_string(e) + ".mov");
      episode->setPrimitiveValue("alias", Value::data(std::string(72, 'a')));
      episode->setValue("parent", channel);
    }
  }
  context.undoManager().enableUndoRegistration();
}

// Peak memory of a process of its own that runs `function`, in bytes beyond what it starts with.
long peakMemoryOf(const std::function<void()>& function) {
  int pipeEnds[2];
  if (::pipe(pipeEnds) != 0) std::abort();
  const pid_t child = ::fork();
  if (child == 0) {
    rusage before{};
    rusage after{};
    ::getrusage(RUSAGE_SELF, &before);
    function();
    ::getrusage(RUSAGE_SELF, &after);
    const long bytes = (after.ru_maxrss - before.ru_maxrss) * 1024;
    if (::write(pipeEnds[1], &bytes, sizeof bytes) != sizeof bytes) std::abort();
    ::_exit(0);
  }
  long bytes = 0;
  if (::read(pipeEnds[0], &bytes, sizeof bytes) != sizeof bytes) std::abort();
  ::waitpid(child, nullptr, 0);
  ::close(pipeEnds[0]);
  ::close(pipeEnds[1]);
  return bytes;
}

void saving(const std::string& path, double fileSize) {
  BenchProgram bench;
  StoreContent content;
  content.nextObjectID = 1;
  for (const std::string_view entity : {kChannelEntity, kVodcastEntity}) {
    for (ManagedObject* object : *bench.context().executeFetchRequest({std::string(entity)})) {
      content.objects.push_back(object->shared_from_this());
    }
  }
  xmlDocPtr tree = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_HUGE);
  const auto toMemory = [&] {
    xmlChar* text = nullptr;
    int length = 0;
    xmlDocDumpMemoryEnc(tree, &text, &length, "UTF-8");
    xmlFree(text);
  };
  report("serialising the library", "libxml2 serialising an equal tree",
         compare(
             kRounds, [&] { (void)XMLStore::write(content, static_cast<std::size_t>(fileSize)); }, toMemory),
         "<= 1.5");
  int edit = 0;
  const auto touch = [&] {
    const auto channels = bench.context().executeFetchRequest({std::string(kChannelEntity)});
    channels->front()->setValue("vcSubtitle", std::to_string(++edit));
  };
  report("saving it: serialising, writing, flushing", "libxml2 serialising an equal tree",
         compare(
             3,
             [&] {
               touch();
               if (!bench.context().save()) std::abort();
             },
             toMemory),
         "reported");
  xmlFreeDoc(tree);
}

int run() {
  BenchHome home;
  const std::string path = home.path() + "/data/Clipwave/Clipwave.xml";

  // The library is made by a process of its own, so that the memory measured below is the opening's alone.
  const pid_t maker = ::fork();
  if (maker == 0) {
    BenchProgram bench;
    makeLibrary(bench);
    ::_exit(bench.context().save() ? 0 : 1);
  }
  int status = 1;
  ::waitpid(maker, &status, 0);
  if (status != 0) return 1;

  const auto fileSize = static_cast<double>(std::filesystem::file_size(path));
  std::printf("Library: %d channels, %d episodes, %.1f MB\n", kChannels, kChannels * kEpisodes,
              fileSize / 1e6);

  const long peak = peakMemoryOf([] { BenchProgram bench; });
  std::printf("%-58s %8.1f MB   %-34s %8.1f MB   ratio %.2f   (aim <= 5)\n", "peak memory of opening",
              static_cast<double>(peak) / 1e6, "the file's size", fileSize / 1e6,
              static_cast<double>(peak) / fileSize);
  std::fflush(stdout);

  report("opening the library", "xmlReadFile of the same file",
         compare(
             kRounds, [] { BenchProgram bench; },
             [&] { xmlFreeDoc(xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_HUGE)); }),
         "<= 1.0");
  saving(path, fileSize);
  return 0;
}

}  // namespace
}  // namespace clipwave::bench

int main() {
  return clipwave::bench::run();
}
