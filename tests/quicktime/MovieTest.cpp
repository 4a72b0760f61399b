#include "platform/quicktime/Movie.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <random>

#include "tests/support/FakeMovies.h"
#include "tests/support/RealMovies.h"

namespace clipwave {
namespace {
using namespace testing;

// What the fake and the real opener have in common; `make` makes a movie of two seconds at the path.
void expectAMovieOpener(MovieOpener& opener, const std::string& path, const std::function<void()>& make,
                        const std::function<void()>& remove) {
  EXPECT_FALSE(opener.movieWithPath(path));
  make();
  const auto movie = opener.movieWithPath(path);
  ASSERT_TRUE(movie);
  remove();
  EXPECT_DOUBLE_EQ(movie->duration(), 2);
  EXPECT_FALSE(opener.movieWithPath(path));
}

TEST(MovieOpenerConformance, MoviesKeepTheirDurationWhenTheirFileIsGone) {
  const TemporaryFolder folder;
  const std::string name = "a film: 100% fun.mov", path = folder / name;
  expectAMovieOpener(
      *makeMovieOpener(), path, [&] { makeMovie(folder, name, 2); }, [&] { std::filesystem::remove(path); });
  FakeMovieOpener fake;
  expectAMovieOpener(
      fake, path, [&] { fake.durations[path] = 2; }, [&] { fake.durations.clear(); });
}

TEST(Movie, DurationIsReadFromEveryCommonContainer) {
  const TemporaryFolder folder;
  const auto opener = makeMovieOpener();
  for (const char* name : {"a.mov", "a.mp4", "a.m4v", "A.MOV", "a.mkv", "a.avi", "a.mp3", "a.m4a", "a.wav"}) {
    const auto movie = opener->movieWithPath(makeMovie(folder, name, 1.5));
    ASSERT_TRUE(movie) << name;
    EXPECT_NEAR(movie->duration(), 1.5, 0.2) << name;  // whole frames
  }
  EXPECT_NEAR(opener->movieWithPath(makeMovie(folder, "long.mp4", 3725))->duration(), 3725, 5);
  const std::string fragmented = folder / "recorded.mov";
  runFFmpeg({"-i", folder / "a.mov", "-c", "copy", "-movflags", "frag_keyframe+empty_moov", fragmented});
  ASSERT_TRUE(opener->movieWithPath(fragmented));
  EXPECT_NEAR(opener->movieWithPath(fragmented)->duration(), 1.5, 0.2);
}

TEST(Movie, WhatCannotBePlayedIsNoMovieWhateverItsName) {
  const TemporaryFolder folder;
  const auto opener = makeMovieOpener();
  const std::string film = makeMovie(folder, "film.ts");
  ASSERT_TRUE(opener->movieWithPath(film));
  std::string noise(100'000, '\0');
  std::mt19937 random(7);
  for (char& byte : noise) byte = static_cast<char>(random());
  const std::string contents[] = {"", "<html><body>film.mov</body></html>", noise, std::string(5000, '\0'),
                                  "1\n00:00:01,000 --> 00:00:02,000\nhi\n",
                                  // Playlists of a movie that is there and could be opened.
                                  "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nfilm.ts\n#EXT-X-ENDLIST\n",
                                  "ffconcat version 1.0\nfile film.ts\n", readFile(film).substr(0, 100)};
  for (const std::string& content : contents) {
    for (const char* name : {"x", "x.mov", "x.mp3", "x.mpg"}) {
      EXPECT_FALSE(opener->movieWithPath(folder.write(name, content)))
          << name << ": " << content.substr(0, 20);
    }
  }
  for (const char* picture : {"p.png", "p.jpg", "p.gif", "p.bmp", "p.avif"}) {
    runFFmpeg({"-f", "lavfi", "-i", "testsrc2=size=64x64", "-frames:v", "1", folder / picture});
    const std::string disguised = folder.write("picture.mov", readFile(folder / picture));
    EXPECT_FALSE(opener->movieWithPath(disguised)) << picture;
  }
}

TEST(Movie, OddPathsAreAnsweredAtOnceAndInSilence) {
  const TemporaryFolder folder;
  const auto opener = makeMovieOpener();
  const std::string odd = folder / "file:http:%03d\xff.mov";
  std::filesystem::rename(makeMovie(folder, "a.mov"), odd);
  ::mkfifo((folder / "pipe.mov").c_str(), 0600);
  std::string damaged = readFile(odd);
  damaged.resize(damaged.size() / 2);

  ::testing::internal::CaptureStderr();
  EXPECT_TRUE(opener->movieWithPath(odd));
  EXPECT_FALSE(opener->movieWithPath(folder / "pipe.mov"));  // nobody writes into it
  EXPECT_FALSE(opener->movieWithPath(folder.path()));
  EXPECT_FALSE(opener->movieWithPath(odd + std::string(1, '\0') + ".mov"));
  EXPECT_FALSE(opener->movieWithPath(folder.write("half.mov", damaged)));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace clipwave
