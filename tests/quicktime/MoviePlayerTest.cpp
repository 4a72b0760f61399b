#include "platform/quicktime/MoviePlayer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <thread>

#include "tests/support/RealMovies.h"

namespace clipwave {
namespace {
using namespace testing;
using ::testing::HasSubstr;
using ::testing::Le;
using ::testing::SizeIs;

// A player with what it reported.
struct Playback {
  explicit Playback(const std::string& path) : player(makeMoviePlayer(path, *loop)) {
    player->setOnFrame([this](const PixelBuffer& picture) {
      last = picture;
      ++pictures;
      if (onPicture) onPicture();
    });
    player->setOnEnd([this] { ++ends; });
    player->setOnError([this](const Error& error) { errors.push_back(error); });
  }
  bool until(const std::function<bool()>& isDone, double seconds = 10) {
    const Seconds limit = clock.uptime() + Seconds(seconds);
    while (!isDone() && clock.uptime() < limit) loop->runOnce(Seconds(0.01));
    return isDone();
  }
  bool untilPicture() {
    return until([this, before = pictures] { return pictures > before; });
  }
  bool untilStopped() {
    return until([this] { return !player->isPlaying(); });
  }
  int grey() const { return last.row(last.height / 2)[last.width / 2 * 4]; }

  SystemClock clock;
  std::unique_ptr<RunLoop> loop = makeRunLoop(clock);
  std::unique_ptr<MoviePlayer> player;
  PixelBuffer last;
  int pictures = 0;
  int ends = 0;
  std::vector<Error> errors;
  std::function<void()> onPicture;
};

// Pictures by a formula of their number N and time T, ten a second, with few key pictures; sound by a formula
// of t.
std::string makePattern(const TemporaryFolder& folder, const std::string& name, double seconds,
                        const std::string& grey, const std::string& sound,
                        std::vector<std::string> more = {}) {
  const std::string length = ":d=" + std::to_string(seconds);
  std::vector<std::string> arguments = {
      "-f", "lavfi", "-i", "color=black:s=64x48:r=10" + length + ",geq=lum=" + grey + ":cb=128:cr=128"};
  if (!sound.empty())
    arguments.insert(arguments.end(), {"-f", "lavfi", "-i", "aevalsrc=" + sound + ":s=44100" + length});
  arguments.insert(arguments.end(),
                   {"-c:v", "libx264", "-preset", "veryfast", "-qp", "2", "-g", "25", "-bf", "2"});
  arguments.insert(arguments.end(), more.begin(), more.end());
  arguments.push_back(folder / name);
  runFFmpeg(arguments);
  return folder / name;
}

constexpr const char* kTone = "sin(2000*t)";

// Where in a raw recording of the sound device the first sound after `from` is, in seconds.
double onset(const std::string& recording, double from) {
  std::vector<std::int16_t> samples(recording.size() / 2);
  std::memcpy(samples.data(), recording.data(), samples.size() * 2);
  auto begin =
      samples.begin() + std::min<std::ptrdiff_t>(std::lround(from * 48'000) * 2, std::ssize(samples));
  const auto loud =
      std::find_if(begin, samples.end(), [](std::int16_t sample) { return std::abs(sample) > 3000; });
  return static_cast<double>(loud - samples.begin()) / 2 / 48'000;
}

TEST(MoviePlayer, ShowsExactlyThePictureOfTheTimeItIsSetTo) {
  const TemporaryFolder folder;
  for (const char* name : {"a.mov", "a.mkv", "a.ts"}) {
    Playback playback(makePattern(folder, name, 5, "16+4*N", kTone));
    ASSERT_TRUE(playback.untilPicture()) << name;
    EXPECT_NEAR(playback.player->duration(), 5, 0.2);
    EXPECT_TRUE(playback.player->hasVideo() && playback.player->hasSound());
    for (const double time : {0.0, 3.05, 1.25, 1.35, 1.38, 4.95, 2.55, 0.0, 99.0}) {
      playback.player->setTime(time);
      EXPECT_DOUBLE_EQ(playback.player->time(), std::min(time, playback.player->duration()));
      ASSERT_TRUE(playback.untilPicture()) << name << time;
      const double number = std::min(std::floor(time * 10 + 1e-6), 49.0);
      EXPECT_NEAR(playback.grey() / 1.164 / 4, number, 0.49) << name << " at " << time;
      EXPECT_NEAR(playback.last.time, number / 10, 0.02) << name << " at " << time;
    }
    // A slider that is drawn quickly: requests that were overtaken are dropped, the last one counts.
    const int before = playback.pictures;
    for (int i = 0; i <= 200; ++i) playback.player->setTime(4.05 - i * 0.01);
    ASSERT_TRUE(playback.until([&] { return std::abs(playback.grey() / 1.164 / 4 - 20) < 0.5; })) << name;
    EXPECT_THAT(playback.pictures - before, Le(20)) << name;
    EXPECT_FALSE(playback.player->isPlaying());
  }
}

TEST(MoviePlayer, PicturesFitInTheirOwnProportionsAndStandUpright) {
  const TemporaryFolder folder;
  const std::string wide =
      makePattern(folder, "wide.mov", 0.5, "if(lt(X\\,32)\\,235\\,16)", "", {"-aspect", "8:3"});
  const std::string turned = folder / "turned.mov";
  runFFmpeg({"-i", wide, "-c", "copy", "-aspect", "4:3", "-metadata:s:v", "rotate=90", turned});
  struct Case {
    std::string path;
    int naturalWidth, naturalHeight, areaWidth, areaHeight, width, height, topLeft, bottomLeft;
  };
  const Case cases[] = {
      {wide, 128, 48, 0, 0, 128, 48, 255, 255},  {wide, 128, 48, 500, 500, 128, 48, 255, 255},
      {wide, 128, 48, 64, 64, 64, 24, 255, 255}, {turned, 48, 64, 0, 0, 48, 64, 0, 255},
      {turned, 48, 64, 24, 99, 24, 32, 0, 255},  {turned, 48, 64, 1, 1, 1, 1, 127, 127}};
  for (const Case& c : cases) {
    Playback playback(c.path);
    playback.player->setFrameSize(c.areaWidth, c.areaHeight);
    ASSERT_TRUE(playback.until([&] {
      return playback.last.width == c.width && playback.last.height == c.height;
    })) << c.path
        << playback.last.width << "x" << playback.last.height;
    EXPECT_EQ(playback.player->naturalWidth(), c.naturalWidth);
    EXPECT_EQ(playback.player->naturalHeight(), c.naturalHeight);
    if (c.width == 1) continue;
    EXPECT_NEAR(playback.last.row(0)[0], c.topLeft, 20) << c.path;
    EXPECT_NEAR(playback.last.row(c.height - 1)[0], c.bottomLeft, 20) << c.path;
  }
}

TEST(MoviePlayer, PictureTimeAndSoundKeepTogether) {
  const TemporaryFolder folder;
  const std::string recording = folder / "device.raw";
  const EnvironmentVariable driver("SDL_AUDIODRIVER", "disk"), file("SDL_DISKAUDIOFILE", recording.c_str());
  // Each second begins with a flash and a tone.
  Playback playback(
      makePattern(folder, "a.mov", 4.5, "16+219*lt(mod(T\\,1)\\,0.3)", "sin(5000*t)*lt(mod(t\\,1)\\,0.3)"));
  ASSERT_TRUE(playback.untilPicture());
  playback.player->setTime(0.52);  // not at a picture's beginning, nor at a key picture
  struct Flash {
    double picture, time, recorded;
  };
  std::vector<Flash> flashes;
  bool wasBright = true;
  playback.onPicture = [&] {
    const bool isBright = playback.grey() > 128;
    if (isBright && !wasBright)
      flashes.push_back({playback.last.time, playback.player->time(),
                         static_cast<double>(std::filesystem::file_size(recording)) / 4 / 48'000});
    wasBright = isBright;
  };
  playback.player->play();
  ASSERT_TRUE(playback.untilStopped());
  EXPECT_EQ(playback.ends, 1);
  playback.player.reset();
  ASSERT_THAT(flashes, SizeIs(4));
  const std::string sound = readFile(recording);
  std::vector<double> differences;
  for (const Flash& flash : flashes) {
    EXPECT_NEAR(flash.picture, std::round(flash.picture), 0.001);
    EXPECT_NEAR(flash.time, flash.picture, 0.04);
    differences.push_back(flash.recorded - onset(sound, flash.recorded - 0.4));
  }
  // The device writes ahead of what is heard by one of its buffers, and its file by another.
  std::ranges::sort(differences);
  EXPECT_NEAR(differences[1], 0.01, 0.04);
  for (std::size_t i = 1; i < flashes.size(); ++i)
    EXPECT_NEAR(onset(sound, flashes[i].recorded - 0.4) - onset(sound, flashes[i - 1].recorded - 0.4), 1,
                0.002);
}

TEST(MoviePlayer, StopsAtTheEndAndPlaysAgainFromTheBeginning) {
  const TemporaryFolder folder;
  const std::string silent = makePattern(folder, "silent.mov", 0.6, "128", "");
  const std::string late = makePattern(folder, "late.mov", 0.6, "128", kTone, {"-af", "atrim=end=0.2"});
  const std::string movie = makeMovie(folder, "a.mov", 0.6);
  const std::pair<const char*, std::string> cases[] = {{"dummy", movie},
                                                       {"none-such", movie},
                                                       {"dummy", silent},
                                                       {"dummy", late},
                                                       {"dummy", makeMovie(folder, "a.mp3", 0.6)},
                                                       {"none-such", makeMovie(folder, "a.m4a", 0.6)}};
  for (const auto& [driverName, path] : cases) {
    const EnvironmentVariable driver("SDL_AUDIODRIVER", driverName);
    Playback playback(path);
    for (int round = 1; round <= 2; ++round) {
      const Seconds began = playback.clock.uptime();
      playback.player->play();
      EXPECT_TRUE(playback.player->isPlaying());
      ASSERT_TRUE(playback.until([&] { return playback.ends == round; })) << driverName << path;
      EXPECT_NEAR((playback.clock.uptime() - began).count(), 0.6, 0.4) << driverName << path;
      EXPECT_FALSE(playback.player->isPlaying());
      EXPECT_DOUBLE_EQ(playback.player->time(), playback.player->duration());
    }
    EXPECT_EQ(playback.player->hasVideo(), path.ends_with(".mov"));
    EXPECT_EQ(playback.pictures > 0, path.ends_with(".mov"));
    EXPECT_THAT(playback.errors, SizeIs(0));
    playback.player->setTime(0.1);
    playback.player->play();
    playback.until([&] { return playback.player->time() > 0.3; });
    playback.player->pause();
    playback.until([] { return false; }, 0.1);
    const double paused = playback.player->time();
    EXPECT_NEAR(paused, 0.35, 0.2) << driverName << path;
    playback.until([] { return false; }, 0.1);
    EXPECT_DOUBLE_EQ(playback.player->time(), paused);
  }
}

TEST(MoviePlayer, AMovieThatBreaksOffStopsAndSaysSo) {
  const TemporaryFolder folder;
  const EnvironmentVariable driver("SDL_AUDIODRIVER", "dummy");
  const std::string whole =
      makePattern(folder, "whole.mov", 4, "random(0)*255", kTone, {"-movflags", "faststart"});
  const std::string content = readFile(whole);
  Playback playback(folder.write("half.mov", content.substr(0, content.size() / 3)));
  playback.player->play();
  ASSERT_TRUE(playback.until([&] { return !playback.errors.empty(); }));
  EXPECT_THAT(playback.errors[0].localizedDescription, HasSubstr("“half.mov” is damaged"));
  EXPECT_FALSE(playback.player->isPlaying());
  EXPECT_NEAR(playback.player->time(), 1.2, 0.6);
  EXPECT_EQ(playback.ends, 0);
  playback.player->setTime(3.5);  // nothing is there to be shown
  playback.player->setTime(0.5);
  EXPECT_TRUE(playback.until([&] { return std::abs(playback.last.time - 0.5) < 0.01; }));

  std::string scratched = content;
  for (std::size_t i = scratched.size() / 3; i < scratched.size() / 2; ++i)
    scratched[i] = static_cast<char>(i * 7);
  Playback lossy(folder.write("scratched.mov", scratched));
  lossy.player->setTime(1);
  lossy.player->play();
  EXPECT_TRUE(lossy.until([&] { return lossy.ends == 1; }));

  std::filesystem::remove(whole);
  for (const std::string& path : {whole, folder.write("text.mov", "no movie"), folder.path()}) {
    Playback none(path);
    none.player->play();
    ASSERT_TRUE(none.until([&] { return !none.errors.empty(); })) << path;
    EXPECT_EQ(none.errors[0].code, path == whole ? kFileReadNoSuchFileError : kFileReadUnknownError);
    EXPECT_FALSE(none.player->isOpen() || none.player->isPlaying());
  }
}

TEST(MoviePlayer, CanBeDestroyedAtAnyMoment) {
  const TemporaryFolder folder;
  const EnvironmentVariable driver("SDL_AUDIODRIVER", "dummy");
  const std::string path = makePattern(folder, "a.mov", 3, "16+4*N", kTone);
  for (int moment = 0; moment < 24; ++moment) {
    Playback playback(path);
    if (moment % 2 == 0) playback.player->play();
    if (moment % 3 == 0) playback.player->setTime(2);
    std::this_thread::sleep_for(std::chrono::milliseconds(moment * moment / 4));
    if (moment % 4 == 0) playback.loop->runOnce(Seconds(0));
    const Seconds began = playback.clock.uptime();
    playback.player.reset();
    EXPECT_LT((playback.clock.uptime() - began).count(), 0.5);
    playback.loop->runUntilIdle();  // what was under way finds nobody
  }
  Playback playback(path);
  playback.onPicture = [&] { playback.player.reset(); };
  EXPECT_TRUE(playback.until([&] { return playback.player == nullptr; }));
}

}  // namespace
}  // namespace clipwave
