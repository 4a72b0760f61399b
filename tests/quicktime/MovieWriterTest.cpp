#include "platform/quicktime/MovieWriter.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>

#include "platform/quicktime/MovieReader.h"
#include "tests/support/RealMovies.h"

extern "C" {
#include <libavutil/frame.h>
}

namespace clipwave {
namespace {
using namespace testing;

constexpr int kRate = 15;
constexpr int kSoundStep = kSoundRate / kRate;

// Feeds a writer with noise, which turns white while the sound beeps, for a frame in each second.
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

  static bool flashes(int step) { return step % kRate == 7; }
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

struct Played {
  int pictures = 0;
  double end = 0;  // of the track that ends first
  std::vector<double> flashes, beeps;
};

std::optional<Played> play(const std::string& path) {
  const auto reader = MovieReader::open(path, {[](void*) { return 0; }, nullptr});
  if (!reader) return {};
  Played played;
  double soundEnd = 0;
  while (!(*reader)->pictureHasEnded()) {
    const auto picture = (*reader)->nextPicture();
    if (!picture) continue;
    ++played.pictures;
    played.end = picture->time + picture->duration;
    if (picture->frame->data[0][0] > 180) played.flashes.push_back(picture->time);
  }
  while (!(*reader)->soundHasEnded()) {
    const auto sound = (*reader)->nextSound();
    for (std::size_t i = 0; sound && i < sound->samples.size(); i += 2) {
      soundEnd = sound->time + static_cast<double>(i / 2) / kSoundRate;
      if (sound->samples[i] > 9000 && (played.beeps.empty() || soundEnd > played.beeps.back() + 0.5))
        played.beeps.push_back(soundEnd);
    }
  }
  played.end = std::min(played.end, soundEnd);
  return played;
}

std::string probe(const std::string& path) {
  const std::string command =
      "ffprobe -v error -of csv=p=0 -show_entries "
      "stream=codec_name,codec_tag_string,sample_rate,channels,width,"
      "height,r_frame_rate,avg_frame_rate,duration,nb_frames '" +
      path + "'";
  std::string facts(1000, '\0');
  FILE* pipe = ::popen(command.c_str(), "r");
  facts.resize(std::fread(facts.data(), 1, facts.size(), pipe));
  ::pclose(pipe);
  return facts;
}

TEST(MovieWriter, RecordingsOfAnySizeAreMoviesAsPlayersExpectThem) {
  const TemporaryFolder folder;
  const std::string path = folder / "a.mov", sound = "aac,mp4a,48000,2,0/0,0/0,";
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
          expected = "mpeg4,mp4v," + std::to_string(width) + "," + std::to_string(height) + ",15/1,15/1," +
                     (steps == 1 ? "0.066667,1\n" : "4.000000,60\n");
        if (hasSound) expected += sound + (steps == 1 ? "0.066000,5\n" : "4.000000,189\n");
        EXPECT_EQ(probe(path), expected);
        runFFmpeg({"-xerror", "-i", path, "-f", "null", "-"});
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

TEST(MovieWriter, SoundAndPictureAreInStepHoweverThePicturesCome) {
  const TemporaryFolder folder;
  const std::string path = folder / "a.mov", copy = folder / "killed.mov";
  const std::function<bool(int)> arrivals[] = {
      [](int) { return true; },
      [](int step) { return step > 40 && step % 4 != 1; },  // late at first, and one in four missing
      [](int step) { return step < 60 || step > 200; },
  };
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
    }
    std::filesystem::copy_file(path, copy, std::filesystem::copy_options::overwrite_existing);
    ASSERT_TRUE(recording.writer->finish());
    for (const std::string& movie : {path, copy}) {
      const auto played = play(movie);
      ASSERT_TRUE(played);
      expectAt(played->flashes, flashes, movie == copy ? 18 : 20);
      expectAt(played->beeps, beeps, movie == copy ? 18 : 20);
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
  EXPECT_NEAR(play(folder / "a.mov")->end, 0, 0.01);  // of the sound that is not there
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
    runFFmpeg({"-xerror", "-i", path, "-f", "null", "-"});
  }
  ::munmap(fed, sizeof(std::atomic<int>));
}

// A movie of four seconds, by what had reached the disk and when, and what a power failure may leave of it.
TEST(MovieWriter, EveryBeginningOfTheFileOpensAndFinishingIsOneStep) {
  const TemporaryFolder folder;
  const std::string path = folder / "a.mov", cut = folder / "cut.mov";
  Recording recording(path, 64, 48);
  std::vector<std::pair<std::size_t, double>> grown;  // sizes, and by when
  for (int step = 0; step < 6 * kRate; ++step) {
    const auto before = std::filesystem::file_size(path);
    ASSERT_TRUE(recording.add(step));
    if (std::filesystem::file_size(path) != before)
      grown.emplace_back(before, static_cast<double>(step) / kRate);
  }
  ASSERT_GE(grown.size(), 4U);
  std::string movie = readFile(path);
  std::minstd_rand random(1);
  for (int i = 0; i < 60; ++i) {
    const std::size_t length = random() % movie.size();
    const auto played = play(folder.write("cut.mov", movie.substr(0, length)));
    double due = 0;
    for (const auto& [size, time] : grown) {
      if (size <= length) due = time - 2;
    }
    if (due > 0) {
      ASSERT_TRUE(played) << length;
    }
    if (played) {
      EXPECT_GE(played->end, due) << length;
    }
  }
  const std::string head = movie.substr(0, 512);
  ASSERT_TRUE(recording.writer->finish());
  movie = readFile(path);
  const std::size_t index = movie.rfind("moov") - 4;
  const auto changed = std::ranges::mismatch(movie, head).in1 - movie.begin();
  EXPECT_EQ(movie.substr(static_cast<std::size_t>(changed) + 16, 400),
            head.substr(static_cast<std::size_t>(changed) + 16, 400));
  EXPECT_EQ(play(path)->pictures, 6 * kRate);
  movie.replace(0, head.size(), head);
  for (const std::size_t length : {movie.size(), index, index + 5, index + 700}) {
    const auto played = play(folder.write("cut.mov", movie.substr(0, length)));
    ASSERT_TRUE(played) << length - index;
    EXPECT_EQ(played->pictures, 6 * kRate) << length - index;
  }
}

TEST(MovieWriter, AFullDiskLeavesTheMovieUntilThen) {
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
    runFFmpeg({"-xerror", "-i", path, "-f", "null", "-"});
  }
  ::signal(SIGXFSZ, handler);
}

}  // namespace
}  // namespace clipwave
