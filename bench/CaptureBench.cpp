// Recording: the preview's pixels against memcpy of the same bytes, and the processor time of a recording
// with its preview against the ffmpeg command that captures and encodes the same.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "bench/BenchProgram.h"
#include "bench/Measure.h"
#include "record/PixelConversion.h"

namespace clipwave::bench {
namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kPictures = 60;  // in one timing

void pixels() {
  const auto world = makeGWorld({0, 0, kHeight, kWidth});
  const std::size_t size = std::size_t{4} * kWidth * kHeight;
  const auto conversions = [&] {
    for (int i = 0; i < kPictures; ++i) bitmapFromGWorld(*world);
  };
  const auto copies = [&] {
    for (int i = 0; i < kPictures; ++i) {
      const auto fresh = std::make_unique_for_overwrite<std::uint8_t[]>(size);
      std::memcpy(fresh.get(), world->pixBaseAddr(), size);
      // Lest the copy be left out.
      asm volatile("" : : "r"(fresh.get()) : "memory");
    }
  };
  const Comparison compared = compare(15, conversions, copies);
  report("60 pictures of 1920x1080 into new bitmaps", "memcpy into fresh buffers", compared, "<= 1.25");
  std::printf("%-58s throughput %.2f of memcpy's   (aim >= 0.8)\n", "", 1 / compared.ratio);
}

double processorSeconds(int who) {
  struct rusage usage {};
  ::getrusage(who, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double recordingSeconds(int length, std::int64_t& dropped) {
  BenchProgram bench;
  bench.defaults().setArgumentValues({{"captureDevice", std::string(kTestPatternDevice)}});
  bench.controller().channelController().add();
  bench.runLoop().runUntilIdle();
  RecordHandOff& handOff = bench.controller().recordHandOff();
  handOff.recordMovie();
  if (!handOff.isOpen()) std::abort();
  Recorder& recorder = handOff.recordWindowController().recorder();
  recorder.goFullSize();
  const double before = processorSeconds(RUSAGE_SELF);
  recorder.record();
  const Observation pictures = recorder.observe([&] {
    if (recorder.recordedTime() >= length) bench.runLoop().stop();
  });
  bench.runLoop().run();
  dropped = recorder.sequenceGrabber()->droppedPictures();
  recorder.record();
  return processorSeconds(RUSAGE_SELF) - before;
}

double ffmpegSeconds(const std::string& folder, int length) {
  const std::string command =
      "ffmpeg -v error -nostdin -y -re -f lavfi -i testsrc2=size=640x480:rate=30 -re -f lavfi -i "
      "sine=frequency=440:sample_rate=48000 -r 15 -c:v mpeg4 -vtag mp4v -b:v 1536000 -g 15 -c:a aac -ac 2 "
      "-t " +
      std::to_string(length) + " " + folder + "/reference.mov";
  const double before = processorSeconds(RUSAGE_CHILDREN);
  if (std::system(command.c_str()) != 0) std::abort();
  return processorSeconds(RUSAGE_CHILDREN) - before;
}

void recording(int length) {
  const BenchHome home;
  std::int64_t dropped = 0;
  const double reference = ffmpegSeconds(home.path(), length);
  const double ours = recordingSeconds(length, dropped);
  std::printf(
      "%d s at 640x480 with preview: %.2f s of the processor, ffmpeg %.2f s, ratio %.2f   (aim <= 1.5)\n",
      length, ours, reference, ours / reference);
  std::printf("dropped pictures: %lld of %d   (aim <= 1 %%)\n", static_cast<long long>(dropped), length * 15);
}

}  // namespace
}  // namespace clipwave::bench

int main(int argc, char** argv) {
  clipwave::bench::pixels();
  clipwave::bench::recording(argc > 1 ? std::atoi(argv[1]) : 60);
}
