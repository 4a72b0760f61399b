#include "platform/foundation/FileManager.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

namespace fs = std::filesystem;

unsigned permissions(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::vector<std::string> names(const std::string& folder) {
  auto contents = makeFileManager()->directoryContentsAtPath(folder);
  return contents ? *contents : std::vector<std::string>{"unreadable"};
}

class FileManagerTest : public Test {
 protected:
  TemporaryFolder folder;
  std::unique_ptr<FileManager> files = makeFileManager();
};

TEST_F(FileManagerTest, AnAtomicWriteReplacesTheContentAndKeepsThePermissions) {
  const std::string path = folder.write("store.xml", "old and rather longer");
  ::chmod(path.c_str(), 0640);
  ASSERT_TRUE(files->writeAtomically("new", path, 0600));
  EXPECT_EQ(readFile(path), "new");
  EXPECT_EQ(permissions(path), 0640u);
  ASSERT_TRUE(files->writeAtomically("secret", folder / "secret", 0600));
  EXPECT_EQ(permissions(folder / "secret"), 0600u);
  EXPECT_THAT(names(folder.path()), UnorderedElementsAre("store.xml", "secret"));
}

TEST_F(FileManagerTest, AnAtomicWriteGoesThroughALinkToAFileAndReplacesAnyOtherLink) {
  const std::string real = folder.write("elsewhere/real.xml", "old");
  fs::create_symlink("elsewhere/real.xml", folder / "link");
  ASSERT_TRUE(files->writeAtomically("new", folder / "link"));
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(readFile(real), "new");

  fs::create_symlink(folder / "nowhere", folder / "dangling");
  ASSERT_TRUE(files->writeAtomically("new", folder / "dangling"));
  EXPECT_FALSE(fs::is_symlink(folder / "dangling"));
  EXPECT_EQ(readFile(folder / "dangling"), "new");
  EXPECT_FALSE(fs::exists(folder / "nowhere"));
}

TEST_F(FileManagerTest, AFailedAtomicWriteLeavesEverythingAsItWasAndSaysWhy) {
  folder.write("folder/inside", "kept");
  const std::string taken = folder / "folder";
  EXPECT_EQ(files->writeAtomically("new", taken).error().localizedDescription,
            "“" + taken + "” could not be written: it is a folder.");
  EXPECT_THAT(names(folder.path()), ElementsAre("folder"));

  const std::string missing = folder / "no/such/file";
  EXPECT_EQ(
      files->writeAtomically("new", missing).error(),
      cocoaError(kFileNoSuchFileError, "“" + missing + "” could not be written: its folder does not exist."));
}

TEST_F(FileManagerTest, FailuresTellTheCasesApartThatCallersTellApart) {
  const std::string path = folder.write("file", "x");
  EXPECT_EQ(files->contentsAtPath(folder / "none").error().code, kFileReadNoSuchFileError);
  EXPECT_EQ(files->contentsAtPath(folder.path()).error().localizedDescription,
            "\u201c" + folder.path() + "\u201d could not be read: it is a folder.");
  EXPECT_EQ(files->removeFileAtPath(folder / "none").error().code, kFileNoSuchFileError);
  EXPECT_EQ(files->removeFileAtPath("/").error().code, kFileWriteNoPermissionError);
  // A name that only begins like an existing one is another name.
  EXPECT_FALSE(files->fileExistsAtPath(std::string(path) + std::string("\0.mov", 5)));
  EXPECT_FALSE(files->fileHandleForWritingAtPath("/dev/full")->writeData("x"));
  // Nobody writes into the pipe, and nobody waits for it.
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(*files->contentsAtPath(folder / "pipe"), "");
  EXPECT_EQ(files->fileHandleForWritingAtPath(folder / "pipe"), nullptr);
}

TEST_F(FileManagerTest, RemovingAFolderRemovesLinksAndNotWhatTheyLeadTo) {
  const std::string kept = folder.write("kept/file", "x");
  folder.write("doomed/deep/er/file", "x");
  fs::create_directory_symlink(folder / "kept", folder / "doomed/deep/link");
  fs::create_directory_symlink(folder / "kept", folder / "link");
  EXPECT_TRUE(files->removeFileAtPath(folder / "doomed"));
  EXPECT_TRUE(files->removeFileAtPath(folder / "link/"));
  EXPECT_THAT(names(folder.path()), ElementsAre("kept"));
  EXPECT_EQ(readFile(kept), "x");
}

TEST_F(FileManagerTest, FoldersAndFilesGetExactlyTheirModeWhateverTheUmask) {
  const mode_t old = ::umask(077);
  ASSERT_TRUE(files->createDirectoryAtPath(folder / "shared", 0755));
  ASSERT_TRUE(files->writeAtomically("x", folder / "feed.xml"));
  ::umask(old);
  EXPECT_EQ(permissions(folder / "shared"), 0755u);
  EXPECT_EQ(permissions(folder / "feed.xml"), 0644u);
  EXPECT_EQ(permissions(*files->makeTemporaryFile(folder / "feed-XXXXXX")), 0600u);
}

TEST_F(FileManagerTest, AMoveReplacesNothingAndNamesWhatIsInTheWay) {
  const std::string from = folder.write("a", "moved"), inTheWay = folder.write("b", "kept");
  EXPECT_EQ(files->movePath(from, inTheWay).error(),
            cocoaError(kFileWriteFileExistsError,
                       "“" + inTheWay + "” could not be created: something with that name exists already."));
  EXPECT_EQ(readFile(inTheWay), "kept");
  EXPECT_EQ(files->movePath(from, folder / "none/a").error().code, kFileNoSuchFileError);
  EXPECT_TRUE(files->movePath(from, folder / "c"));
  EXPECT_THAT(names(folder.path()), UnorderedElementsAre("b", "c"));
}

// A folder in shared memory, which is another volume than the temporary folder on most machines.
class CrossVolumeTest : public FileManagerTest {
 protected:
  void SetUp() override {
    const EnvironmentVariable inMemory("TMPDIR", "/dev/shm");
    struct stat here {
    }, there{};
    if (::stat("/dev/shm", &there) != 0 || ::access("/dev/shm", W_OK) != 0) GTEST_SKIP() << "no /dev/shm";
    other = std::make_unique<TemporaryFolder>();
    ::stat(folder.path().c_str(), &here);
    if (here.st_dev == there.st_dev) GTEST_SKIP() << "/dev/shm is the same volume";
  }
  std::unique_ptr<TemporaryFolder> other;
};

TEST_F(CrossVolumeTest, AFolderMovesWithContentsPermissionsDatesAndLinks) {
  const std::string content(3'000'000, 'm'), movie = folder.write("show/movies/one.mov", content);
  ::chmod(movie.c_str(), 0604);
  fs::create_symlink("movies/one.mov", folder / "show/latest");
  const auto then = fs::file_time_type::clock::now() - std::chrono::hours(1000);
  fs::last_write_time(movie, then);

  ASSERT_TRUE(files->movePath(folder / "show", *other / "moved"));
  EXPECT_THAT(names(folder.path()), IsEmpty());
  const std::string arrived = *other / "moved/movies/one.mov";
  EXPECT_TRUE(readFile(arrived) == content);
  EXPECT_EQ(permissions(arrived), 0604u);
  EXPECT_EQ(fs::last_write_time(arrived), then);
  EXPECT_EQ(fs::read_symlink(*other / "moved/latest"), "movies/one.mov");
}

TEST_F(CrossVolumeTest, AFailedMoveLeavesTheSourceWholeAndNothingOfTheDestination) {
  folder.write("show/one.mov", "1");
  ASSERT_EQ(::mkfifo((folder / "show/pipe").c_str(), 0600), 0);  // cannot be copied
  EXPECT_FALSE(files->movePath(folder / "show", *other / "moved").ok());
  EXPECT_THAT(names(folder / "show"), UnorderedElementsAre("one.mov", "pipe"));
  EXPECT_THAT(names(other->path()), IsEmpty());
  EXPECT_EQ(files->movePath(folder / "show/one.mov", other->write("taken", "")).error().code,
            kFileWriteFileExistsError);
}

}  // namespace
}  // namespace clipwave
