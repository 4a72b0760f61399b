// The local copy of 1 GiB, and how long it holds up the run loop. The first argument names the folder of the
// file system to copy on.
#include <filesystem>

#include "bench/BenchProgram.h"
#include "bench/LargeMovie.h"
#include "bench/Measure.h"
#include "transfer/CopyFilesLocally.h"

namespace clipwave::bench {
namespace {

constexpr int kRounds = 5;
constexpr std::size_t kMegabytes = 1024;

class Listener final : public CopyDelegate {
 public:
  explicit Listener(RunLoop& runLoop) : runLoop_(runLoop) {}
  void fileCopied(const CopyEntry&) override {}
  void updateCopyStatusForFile(std::string_view, int) override {}
  void copyCompleted(CopyBackEnd&) override {
    done = true;
    runLoop_.stop();
  }
  void connectionError(CopyBackEnd&, int, std::string_view) override { std::abort(); }
  void copyAborted(CopyBackEnd&) override { std::abort(); }
  bool done = false;

 private:
  RunLoop& runLoop_;
};

// Copies with the run loop turned by hand, so that each turn can be timed. Answers the turns' seconds.
std::vector<double> copyOurs(BenchProgram& bench, const std::string& source, const std::string& folder) {
  const ApplicationServices& services = bench.program().services();
  auto backEnd = std::make_shared<CopyFilesLocally>(LocalCopyServices{
      services.application, services.runLoop, services.files, services.defaults, services.log});
  Listener listener(services.runLoop);
  if (!backEnd->copyFiles({{source, "copy.mov"}}, folder, listener)) std::abort();
  std::vector<double> turns;
  while (!listener.done) {
    // Waiting for the reading is no work of the loop's; only turns that had something to do are counted.
    const bool pending = services.runLoop.hasPendingWork();
    const double seconds = secondsOf([&] { services.runLoop.runOnce(Seconds(0.05)); });
    if (pending) turns.push_back(seconds);
  }
  std::filesystem::remove(folder + "/copy.mov");
  return turns;
}

void copyReference(const std::string& source, const std::string& folder) {
  const std::string target = folder + "/copy.mov";
  runReference({"cp", "--reflink=never", source, target});
  std::filesystem::remove(target);
}

void throughput(const std::string& where) {
  BenchHome home(where);
  BenchProgram bench;
  bench.defaults().setArgumentValues({{"noConfirm", true}});
  const std::string source = home.path() + "/movie.mov";
  const std::string folder = home.path() + "/published";
  std::filesystem::create_directory(folder);
  makeLargeMovie(source, kMegabytes);
  std::vector<double> turns;
  const Comparison c = compare(
      kRounds,
      [&] {
        const auto these = copyOurs(bench, source, folder);
        turns.insert(turns.end(), these.begin(), these.end());
      },
      [&] { copyReference(source, folder); });
  std::printf("%-58s %8.0f MB/s %-34s %8.0f MB/s ratio %.2f   (aim >= 0.8)\n",
              ("local copy of 1 GiB on " + where).c_str(),
              static_cast<double>(kMegabytes) * 1.048576 / c.ours, "cp --reflink=never",
              static_cast<double>(kMegabytes) * 1.048576 / c.reference, 1 / c.ratio);
  std::printf("%-58s 99th percentile %.3f ms, maximum %.3f ms, of %zu turns   (aim on tmpfs: 99th <= 4 ms)\n",
              ("turns of the run loop on " + where).c_str(), percentile(turns, 0.99) * 1e3,
              percentile(turns, 1) * 1e3, turns.size());
  std::fflush(stdout);
}

}  // namespace
}  // namespace clipwave::bench

int main(int argc, char** argv) {
  if (argc > 1) {
    clipwave::bench::throughput(argv[1]);
    return 0;
  }
  clipwave::bench::throughput(std::filesystem::temp_directory_path().string());
  if (std::filesystem::is_directory("/dev/shm")) clipwave::bench::throughput("/dev/shm");
  return 0;
}
