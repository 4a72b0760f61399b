// The upload of 1 GiB to a WebDAV server on this machine, and how long it holds up the run loop.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "bench/BenchProgram.h"
#include "bench/LargeMovie.h"
#include "bench/Measure.h"
#include "tests/support/DAVServer.h"

namespace clipwave::bench {
namespace {

using testing::DAVServer;

constexpr int kRounds = 5;
constexpr std::size_t kMegabytes = 1024;

class Listener final : public DMTransactionDelegate {
 public:
  explicit Listener(RunLoop& runLoop) : runLoop_(runLoop) {}
  void transactionSuccessful(DMTransaction&) override {
    done = true;
    runLoop_.stop();
  }
  void transactionHadError(DMTransaction&) override { std::abort(); }
  void transactionAborted(DMTransaction&) override { std::abort(); }
  bool done = false;

 private:
  RunLoop& runLoop_;
};

// Of the process, at its most; in megabytes.
double peakMemory() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != "VmHWM:") continue;
  double kilobytes = 0;
  status >> kilobytes;
  return kilobytes / 1024;
}

std::shared_ptr<Listener> begin(BenchProgram& bench, const std::string& source) {
  DotMacKit& kit = bench.program().services().dotMac;
  auto listener = std::make_shared<Listener>(bench.runLoop());
  const auto session = kit.iDiskSessionWithCredentials(kit.accountFromPreferencesWithApplicationID("????"));
  session->setTransactionDelegate(listener);
  (void)session->putLocalFileAtPath(source, "/ours.mov");
  return listener;
}

// The seconds of each turn that did something; waiting for the server is no work of the loop's.
std::vector<double> turnsOfUpload(BenchProgram& bench, const std::string& source) {
  std::vector<double> turns;
  const auto listener = begin(bench, source);
  while (!listener->done) {
    bool worked = false;
    const double seconds = secondsOf([&] { worked = bench.runLoop().runOnce(Seconds(0)); });
    if (worked) {
      turns.push_back(seconds);
    } else {
      ::usleep(100);
    }
  }
  return turns;
}

void measure() {
  BenchHome home;
  ::setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
  BenchProgram bench;
  const DAVServer server(DAVServer::Kind::ApacheBasic);
  bench.defaults().setArgumentValues({{"dotMacAddress", server.url()}, {"dotMacMemberName", "ann"}});
  if (!bench.program().services().secrets.setPassword({server.url(), "ann"}, "secret")) std::abort();
  const std::string source = home.path() + "/movie.mov";
  makeLargeMovie(source, kMegabytes);
  const double before = peakMemory();
  const Comparison c = compare(
      kRounds,
      [&] {
        const auto listener = begin(bench, source);
        if (!listener->done) bench.runLoop().run();
      },
      [&] {
        runReference({"curl", "-sf", "-u", "ann:secret", "-o", "/dev/null", "-T", source,
                      server.url() + "/theirs.mov"});
      });
  const auto turns = turnsOfUpload(bench, source);
  const double rate = static_cast<double>(kMegabytes) * 1.048576;
  std::printf("%-58s %8.0f MB/s %-34s %8.0f MB/s ratio %.2f   (aim >= 0.9)\n", "upload of 1 GiB, in place",
              rate / c.ours, "curl -T to the same Apache", rate / c.reference, 1 / c.ratio);
  std::printf("%-58s 99th percentile %.3f ms, maximum %.3f ms, of %zu turns   (aim: 99th <= 16 ms)\n",
              "turns of the run loop", percentile(turns, 0.99) * 1e3, percentile(turns, 1) * 1e3,
              turns.size());
  std::printf("%-58s %.1f MB more than before the first of %d\n", "peak memory of the uploads",
              peakMemory() - before, kRounds + 2);
}

}  // namespace
}  // namespace clipwave::bench

int main() {
  clipwave::bench::measure();
  return 0;
}
