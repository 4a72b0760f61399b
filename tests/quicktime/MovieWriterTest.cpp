#include "platform/quicktime/MovieWriter.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>

#include "tests/quicktime/PlayedMovie.h"

extern "C" {
#include <libavutil/frame.h>
}

namespace {

// What was written, in order; a test lets it be noted.
struct Written {
  std::size_t offset;
  std::string bytes;
  int step = -1;
};
std::vector<Written>* writtenLog = nullptr;

}  // namespace

extern "C" ssize_t pwrite(int descriptor, const void* bytes, std::size_t count, off_t offset) {
  if (writtenLog != nullptr)
    writtenLog->push_back({static_cast<std::size_t>(offset), {static_cast<const char*>(bytes), count}});
  return ::syscall(SYS_pwrite64, descriptor, bytes, count, offset);
}

namespace clipwave {
namespace {
using namespace testing;

constexpr const char* kFacts =
    "stream=codec_name,codec_tag_string,sample_rate,channels,width,height,r_frame_rate,duration,nb_frames";
constexpr int kRate = 15;
constexpr int kSoundStep = kSoundRate / kRate;

// Feeds a writer with noise, which turns white while the sound beeps, for a frame now and then.
struct Recording {
  static std::unique_ptr<MovieWriter> open(const std::string& path, int width, int height, bool sound) {
    std::ofstream(path).put('x');
    std::optional<MovieWriter::Picture> picture;
    if (width > 0) picture = {.width = width, .height = height};
    auto writer =
        MovieWriter::open(path, picture, sound ? std::optional(MovieWriter::Sound{}) : std::nullopt);
    return writer ? std::move(*writer) : nullptr;
  }
  Recording(const std::string& path, int width, int height, bool sound = true)
      : frame(av_frame_alloc()), writer(open(path, width, height, sound)) {
    frame->width = 200;
    frame->height = 150;
    frame->format = AV_PIX_FMT_GRAY8;
    av_frame_get_buffer(frame.get(), 0);
  }

  static bool flashes(int step) { return step % 17 == 7; }
  Result<void> addPicture(int step) {
    std::uint8_t* bytes = frame->data[0];
    for (int i = 0; i < frame->linesize[0] * frame->height; ++i)
      bytes[i] = flashes(step) ? 255 : static_cast<std::uint8_t>(random() & 127);
    const auto taken = writer->addPicture(*frame, static_cast<double>(step) / kRate);
    return taken ? Result<void>() : taken.error();
  }
  Result<void> addSound(int step) {
    std::vector<float> samples(kSoundStep * 2);
    for (std::size_t i = 0; flashes(step) && i < samples.size(); ++i)
      samples[i] = static_cast<float>(std::sin(static_cast<double>(i / 2) / 8));
    return writer->addSound(samples);
  }
  Result<void> add(int step) {
    const Result<void> added = addPicture(step);
    return added ? addSound(step) : added;
  }

  MovieFrame frame;
  std::minstd_rand random{3};
  std::unique_ptr<MovieWriter> writer;
};

TEST(MovieWriter, RecordingsOfAnySizeAreMoviesAsPlayersExpectThem) {
  const TemporaryFolder folder;
  const std::string path = folder / "a.mov", sound = "aac,mp4a,48000,2,0/0,";
  const std::pair<int, int> sizes[] = {{320, 240}, {321, 241}, {1, 1}, {15, 700}, {0, 0}};
  for (const auto& [width, height] : sizes) {
    for (const bool hasSound : {true, false}) {
      if (width == 0 && !hasSound) continue;
      for (const int steps : {0, 1, 4 * kRate}) {
        Recording recording(path, width, height, hasSound);
        ASSERT_TRUE(recording.writer);
        for (int step = 0; step < steps; ++step) ASSERT_TRUE(recording.add(step));
        EXPECT_NEAR(recording.writer->recordedTime(), static_cast<double>(steps) / kRate, 1e-6);
        ASSERT_EQ(recording.writer->finish().ok(), steps > 0);
        if (steps == 0) continue;
        std::string expected;
        if (width > 0)
          expected = "mpeg4,mp4v," + std::to_string(width) + "," + std::to_string(height) + ",15/1," +
                     (steps == 1 ? "0.066667,1\n" : "4.000000,60\n");
        if (hasSound) expected += sound + (steps == 1 ? "0.066000,5\n" : "4.000000,189\n");
        EXPECT_EQ(probeMovie(path, kFacts), expected);
        EXPECT_TRUE(canBePlayed(path));
        if (width == 320 && steps > 1) {
          EXPECT_NEAR(std::filesystem::file_size(path) / 4.0, hasSound ? 208'000 : 192'000, 30'000);
        }
      }
    }
  }
  EXPECT_FALSE(Recording(path, 9000, 10).writer);
  EXPECT_FALSE(MovieWriter::open(folder / "none.mov", {}, MovieWriter::Sound{}));
}

// All of them, or of an unfinished movie all but those of its last seconds.
void expectAt(const std::vector<double>& found, const std::vector<double>& expected, double until) {
  const auto ended = std::ranges::upper_bound(expected, until) - expected.begin();
  ASSERT_GE(std::ssize(found), ended);
  ASSERT_LE(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_NEAR(found[i], expected[i], 0.02);
}

// All the time; late, and now and then; and with a pause of which a white picture is the last.
TEST(MovieWriter, SoundAndPictureAreInStepHoweverThePicturesCome) {
  const TemporaryFolder folder;
  const std::string path = folder / "a.mov", copy = folder / "killed.mov";
  const std::function<bool(int)> arrivals[] = {
      [](int) { return true; },
      [](int step) { return step > 42 && (step % 3 == 0 || Recording::flashes(step)); },
      [](int step) { return step <= 58 || step > 200; },
  };
  constexpr int kKilled = 190;
  for (const auto& arrives : arrivals) {
    Recording recording(path, 64, 48);
    std::vector<double> flashes, beeps;
    for (int step = 0; step < 20 * kRate; ++step) {
      if (Recording::flashes(step)) beeps.push_back(static_cast<double>(step) / kRate);
      if (Recording::flashes(step) && arrives(step)) flashes.push_back(beeps.back());
      if (arrives(step)) {
        ASSERT_TRUE(recording.addPicture(step));
      }
      ASSERT_TRUE(recording.addSound(step));
      if (step == kKilled)
        std::filesystem::copy_file(path, copy, std::filesystem::copy_options::overwrite_existing);
    }
    ASSERT_TRUE(recording.writer->finish());
    for (const std::string& movie : {path, copy}) {
      const auto played = play(movie);
      ASSERT_TRUE(played);
      const double until = movie == copy ? kKilled / kRate - 2 : 20;
      expectAt(played->flashes, flashes, until);
      expectAt(played->beeps, beeps, until);
    }
  }
}

// Pictures off the grid, at twice the rate, and in disorder.
TEST(MovieWriter, PicturesTakeThePlacesOfTheFrameRate) {
  const TemporaryFolder folder;
  Recording recording(folder / "a.mov", 16, 16, false);
  const auto takes = [&](double place) {
    return *recording.writer->addPicture(*recording.frame, place / kRate);
  };
  const std::pair<double, bool> places[] = {{0.2, true},  {0.4, false}, {0.9, true},  {0.8, false},
                                            {2.53, true}, {3.3, true},  {8.6, true},  {3, false},
                                            {9, false},   {9.6, true},  {NAN, false}, {1e99, false}};
  for (const auto& [place, taken] : places) EXPECT_EQ(takes(place), taken) << place;
  AVFrame empty{};
  EXPECT_FALSE(*recording.writer->addPicture(empty, 5));
  ASSERT_TRUE(recording.writer->finish());
  EXPECT_EQ(play(folder / "a.mov")->pictures, 6);
}

TEST(MovieWriter, AKilledRecordingLacksItsLastTwoSecondsAtMost) {
  const TemporaryFolder folder;
  const std::string path = folder / "a.mov";
  auto* fed = static_cast<std::atomic<int>*>(
      ::mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  std::minstd_rand random(5);
  for (int kill = 0; kill < 8; ++kill) {
    *fed = 0;
    const pid_t child = ::fork();
    if (child == 0) {
      Recording recording(path, 320, 240);
      while (recording.add(*fed)) ++*fed;
      ::_exit(1);
    }
    const int wanted = static_cast<int>(random() % 150 + 3 * kRate);
    while (*fed < wanted) ::usleep(random() % 2000);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    const auto played = play(path);
    ASSERT_TRUE(played);
    EXPECT_GE(played->end, static_cast<double>(*fed) / kRate - 2);
    EXPECT_TRUE(canBePlayed(path));
  }
  ::munmap(fed, sizeof(std::atomic<int>));
}

TEST(MovieWriter, APowerFailureLeavesAMovieWhereverItStopsTheWriting) {
  const TemporaryFolder folder;
  constexpr int kSteps = 6 * kRate;
  std::vector<Written> log;
  writtenLog = &log;
  Recording recording(folder / "a.mov", 64, 48);
  for (int step = 0; step < kSteps; ++step) {
    ASSERT_TRUE(recording.add(step));
    for (Written& written : log) written.step = written.step < 0 ? step : written.step;
  }
  ASSERT_TRUE(recording.writer->finish());
  writtenLog = nullptr;
  std::minstd_rand random(1);
  std::string state;
  double due = 0;
  for (const auto& [offset, bytes, step] : log) {
    due = std::max(due, static_cast<double>(step < 0 ? kSteps : step) / kRate - 2);
    // What is that short is written at once.
    std::set<std::size_t> lengths = {0, bytes.size()};
    for (int i = 0; bytes.size() > 16 && i < 20; ++i)
      lengths.insert(random() % (i < 10 ? 500 : bytes.size()));
    for (const std::size_t length : lengths) {
      state.resize(std::max(state.size(), offset + length));
      state.replace(offset, length, bytes, 0, length);
      const auto played = play(folder.write("cut.mov", state));
      ASSERT_TRUE(played || due <= 0) << offset << " " << length;
      if (played) {
        EXPECT_GE(played->end, due) << offset << " " << length;
      }
      // The last two are the index, and the change to a plain movie.
      if (&bytes >= &log[log.size() - 2].bytes) {
        EXPECT_EQ(played->pictures, kSteps);
      }
    }
  }
  EXPECT_EQ(state, readFile(folder / "a.mov"));
  EXPECT_EQ(log.back().bytes.size(), 16U);
}

TEST(MovieWriter, AFullDiskOrAMissingFileEndsTheRecording) {
  const TemporaryFolder folder;
  const std::string path = folder / "a.mov";
  std::vector<std::uintmax_t> sizes;
  rlimit old{};
  ::getrlimit(RLIMIT_FSIZE, &old);
  const auto handler = ::signal(SIGXFSZ, SIG_IGN);
  // The last limit leaves room for the fragments but none for an index.
  for (const std::uintmax_t limit : {0, 3'000, 1'000'000, 30'000, 90'000, 61'357, 1}) {
    const rlimit room{limit == 1 ? sizes[3] + 20 : limit, old.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &room);
    Recording recording(path, 64, 48);
    Result<void> added;
    int step = 0;
    for (; added && step < 8 * kRate; ++step) {
      const auto before = std::filesystem::file_size(path);
      added = recording.add(step);
      if (limit == 1'000'000 && std::filesystem::file_size(path) != before) sizes.push_back(before);
    }
    EXPECT_EQ(added.ok(), limit == 1'000'000);
    if (!added) {
      EXPECT_EQ(added.error().code, kFileWriteOutOfSpaceError);
    }
    const Result<void> finished = recording.writer->finish();
    ::setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_EQ(finished.ok(), room.rlim_cur > 20'000);
    if (!finished) {
      EXPECT_EQ(finished.error().code, kFileWriteOutOfSpaceError);
    }
    if (!finished) continue;
    const auto played = play(path);
    ASSERT_TRUE(played) << limit;
    EXPECT_GE(played->end, static_cast<double>(step) / kRate - 2);
    const std::string movie = readFile(path);
    if (limit == 1 || added) {
      EXPECT_EQ(movie.find("moov") < movie.find("moof"), limit == 1);
    }
    if (limit == 1) {
      EXPECT_EQ(movie.size(), sizes[3]);
    }
    EXPECT_TRUE(canBePlayed(path));
  }
  ::signal(SIGXFSZ, handler);
  // What is recorded into a file that is gone, or was emptied, is lost; it is not gone on with.
  for (const bool isGone : {true, false}) {
    Recording recording(path, 64, 48);
    for (int step = 0; step < 3 * kRate; ++step) ASSERT_TRUE(recording.add(step));
    isGone ? static_cast<void>(std::filesystem::remove(path)) : std::filesystem::resize_file(path, 0);
    Result<void> added;
    for (int step = 3 * kRate; added && step < 6 * kRate; ++step) added = recording.add(step);
    ASSERT_FALSE(added);
    EXPECT_EQ(added.error().code, isGone ? kFileNoSuchFileError : kFileWriteUnknownError);
    EXPECT_FALSE(recording.writer->finish());
  }
}

}  // namespace
}  // namespace clipwave
