// Publish runs from the command line: the main job, the answers about existing files, and every way to fail.
#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

#include "tests/ctl/CompanionProcess.h"
#include "tests/support/DAVServer.h"
#include "tests/support/RealMovies.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

namespace fs = std::filesystem;

constexpr const char* kReport = "itpc://example.org/cooking/podcast01.xml\n";

// The channel 1, "Cooking", with the episode 2, "bread", about to be published into the folder "published".
class Publishing : public Test {
 protected:
  void SetUp() override {
    makeMovie(library.folder, "bread.mov", 2);
    library.done({"open", movie});
    library.done({"set", "1", "vcTitle=Cooking", "mediaPath=" + library.folder / "published",
                  "vcURL=http://example.org/cooking"});
  }
  bool isMarkedForCopying() const { return library.channel().at("children").at(0).at("vcCopy"); }

  const Library library;
  const std::string movie = library.folder / "bread.mov";
  const std::string sent = library.folder / "published/bread.mov";
  const std::string feed = library.folder / "published/podcast01.xml";
};

TEST_F(Publishing, CopiesTheMoviesWritesTheFeedAndReportsItsLink) {
  const std::string knives = makeMovie(library.folder, "Knives & forks.mp4");
  library.done({"add", "Cooking", knives});
  const Outcome published = library.run("publish");
  EXPECT_THAT(published, Exits(0));
  EXPECT_EQ(published.out, kReport);
  EXPECT_EQ(published.err, "");
  EXPECT_EQ(readFile(sent), readFile(movie));
  EXPECT_EQ(readFile(feed), library.done("feed Cooking"));
  EXPECT_FALSE(isMarkedForCopying());
  EXPECT_THAT(readFile(feed), AllOf(HasSubstr("<itunes:duration>00:00:02</itunes:duration>"),
                                    HasSubstr("/Knives%20%26%20forks.mp4\" length=\"" +
                                              std::to_string(fs::file_size(knives)) + "\"")));
}

TEST_F(Publishing, TreatsExistingFilesAsItIsTold) {
  const auto publish = [&](const char* command) {
    library.folder.write("published/bread.mov", "old movie");
    library.folder.write("published/podcast01.xml", "old feed");
    library.done("set 1/2 vcCopy=1");
    return library.run(command);
  };
  EXPECT_THAT(publish("publish --replace"), Exits(0));
  EXPECT_EQ(readFile(sent), readFile(movie));
  EXPECT_THAT(publish("publish --keep"), Exits(0));
  EXPECT_EQ(readFile(sent), "old movie");
  EXPECT_THAT(readFile(feed), HasSubstr("<rss"));
  EXPECT_TRUE(isMarkedForCopying());
  EXPECT_THAT(publish("publish"),
              Fails(1, "File Exists!: The file bread.mov already exists. Say --replace or --keep.\n"));
  EXPECT_EQ(readFile(sent), "old movie");
  EXPECT_EQ(readFile(feed), "old feed");
}

TEST_F(Publishing, ReportsEveryFileThatDidNotArriveWhole) {
  const std::string before = library.storedBytes();
  EXPECT_THAT(library.run("publish", 1), Fails(1, "The feed could not be written to /tmp."));
  EXPECT_FALSE(fs::exists(library.folder / "published"));
  EXPECT_EQ(library.storedBytes(), before);
  library.done("set Cooking mediaPath=");
  EXPECT_THAT(library.run("publish"), Fails(1, "No Destination Set!: The destination has not been set."));
  // A folder in which nothing can be made, whoever asks.
  library.done("set 1 mediaPath=/proc/self");
  EXPECT_THAT(library.run("publish"), AllOf(Fails(1, "\"/proc/self/bread.mov\" could not be created"),
                                            Fails(1, "\"/proc/self/podcast01.xml\" could not be created")));
  // Room for the feed and the library, and none for the movie.
  library.done({"set", "1", "mediaPath=" + library.folder / "published"});
  library.done("set 1/2 vcCopy=1");
  fs::resize_file(movie, 64 * 512);
  EXPECT_THAT(library.run("publish", 32), Fails(1, "\"" + sent + "\" could not be written whole."));
  EXPECT_THAT(readFile(feed), HasSubstr("<rss"));
  library.done("set 1/2 vcCopy=1");
  fs::remove(movie);
  const Outcome vanished = library.run("publish --replace");
  EXPECT_THAT(vanished, Fails(1, "The movie of the episode \"bread\" was not found."));
  EXPECT_EQ(vanished.out, kReport);
  EXPECT_TRUE(isMarkedForCopying());
}

TEST_F(Publishing, UploadsToTheIDiskAndSaysWhenItCannot) {
  DAVServer server(DAVServer::Kind::ApacheDigest);
  library.folder.write("input", "secret\n");
  library.done({"account", "--server", server.url(), "--member", "ann", "--home-page", "http://pages"});
  library.done("set Cooking protocolTag=2");
  EXPECT_EQ(library.done("publish"), "itpc://pages/ann/clipwave/Cooking/podcast01.xml\n");
  const std::string published = server / "Sites/clipwave/Cooking/";
  EXPECT_EQ(readFile(published + "bread.mov"), readFile(movie));
  EXPECT_EQ(readFile(published + "podcast01.xml"), library.done("feed Cooking"));
  EXPECT_FALSE(isMarkedForCopying());

  library.done("set 1/2 vcCopy=1");
  server.kill();
  EXPECT_THAT(library.run("publish --replace"), Fails(1, "PROPFIND of \"/\": The server"));
  EXPECT_TRUE(isMarkedForCopying());
}

// What an interrupt and a second process do while an endless movie is being sent.
TEST_F(Publishing, IsCancelledByAnInterruptAndKeepsOthersOutUntilThen) {
  const std::string endless = library.folder.write("endless.mov", "");
  std::error_code error;
  fs::resize_file(endless, std::uintmax_t{1} << 40, error);
  if (error) GTEST_SKIP() << "no file of this size can be made: " << error.message();
  library.done({"add", "Cooking", endless});
  library.done("set Cooking/endless vcPublishDate=1999-01-01T00:00:00Z");  // is sent after "bread"
  // Nothing beyond 8 MiB of it reaches the disk.
  CompanionProcess run(library.folder, "publish", 16384, library.folder / "publish-output");
  const std::string arriving = library.folder / "published/endless.mov";
  for (int i = 0; i < 3000 && !fs::exists(arriving); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  ASSERT_TRUE(fs::exists(arriving));

  const std::string before = library.storedBytes();
  EXPECT_THAT(library.run("channels"),
              Fails(75, library.store() + " cannot be opened. It is open elsewhere."));
  EXPECT_EQ(library.storedBytes(), before);

  run.interrupt(SIGHUP);
  run.interrupt();
  const Outcome outcome = run.wait();
  EXPECT_THAT(outcome, Fails(1, "The run was cancelled."));
  EXPECT_EQ(outcome.out, "");
  EXPECT_FALSE(fs::exists(feed));
  EXPECT_EQ(readFile(sent), readFile(movie));
  const nlohmann::json channel = library.channel();
  for (const nlohmann::json& episode : channel.at("children"))
    EXPECT_EQ(episode.at("vcCopy"), episode.at("vcTitle") == "endless");
}

}  // namespace
}  // namespace clipwave
