#include "platform/foundation/FileManager.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <limits>

#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::readFile;
using testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;

unsigned permissions(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::vector<std::string> names(const std::string& folder) {
  auto contents = makeFileManager()->directoryContentsAtPath(folder);
  return contents ? *contents : std::vector<std::string>{"unreadable"};
}

class FileManagerTest : public ::testing::Test {
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
  fs::create_symlink("elsewhere", folder / "toFolder");
  for (const char* name : {"dangling", "toFolder"}) {
    ASSERT_TRUE(files->writeAtomically("new", folder / name));
    EXPECT_FALSE(fs::is_symlink(folder / name)) << name;
    EXPECT_EQ(readFile(folder / name), "new");
  }
  EXPECT_FALSE(fs::exists(folder / "nowhere"));
}

TEST_F(FileManagerTest, AFailedAtomicWriteLeavesEverythingAsItWasAndSaysWhy) {
  folder.write("folder/inside", "kept");
  const std::string taken = folder / "folder";
  const auto ontoFolder = files->writeAtomically("new", taken);
  ASSERT_FALSE(ontoFolder.ok());
  EXPECT_EQ(ontoFolder.error().localizedDescription,
            "\u201c" + taken + "\u201d could not be written: it is a folder.");
  EXPECT_THAT(names(folder.path()), ElementsAre("folder"));

  const std::string missing = folder / "no/such/file";
  const auto nowhere = files->writeAtomically("new", missing);
  ASSERT_FALSE(nowhere.ok());
  EXPECT_EQ(nowhere.error(), cocoaError(kFileNoSuchFileError, "\u201c" + missing +
                                                                  "\u201d could not be written: its folder "
                                                                  "does not exist."));
}

TEST_F(FileManagerTest, FailuresTellTheCasesApartThatCallersTellApart) {
  const std::string path = folder.write("file", "x");
  EXPECT_EQ(files->contentsAtPath(folder / "none").error().code, kFileReadNoSuchFileError);
  EXPECT_EQ(files->contentsAtPath(path + "/below").error().code, kFileReadUnknownError);
  EXPECT_EQ(files->contentsAtPath(folder.path()).error().localizedDescription,
            "\u201c" + folder.path() + "\u201d could not be read: it is a folder.");
  EXPECT_EQ(files->createDirectoryAtPath(path).error().code, kFileWriteFileExistsError);
  EXPECT_EQ(files->removeFileAtPath(folder / "none").error().code, kFileNoSuchFileError);
  EXPECT_EQ(files->removeFileAtPath("/").error().code, kFileWriteNoPermissionError);
  // A name that only begins like an existing one is another name.
  EXPECT_FALSE(files->fileExistsAtPath(std::string(path) + std::string("\0.mov", 5)));
  const auto full = files->fileHandleForWritingAtPath("/dev/full");
  ASSERT_NE(full, nullptr);
  EXPECT_FALSE(full->writeData("x"));
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

TEST_F(FileManagerTest, FoldersGetExactlyTheirModeWhateverTheUmask) {
  const mode_t old = ::umask(077);
  ASSERT_TRUE(files->createDirectoryAtPath(folder / "shared", 0755));
  ASSERT_TRUE(files->writeAtomically("x", folder / "feed.xml"));
  ::umask(old);
  EXPECT_EQ(permissions(folder / "shared"), 0755u);
  EXPECT_EQ(permissions(folder / "feed.xml"), 0644u);
}

TEST_F(FileManagerTest, LinksAreSeenThroughOrAsTheyAre) {
  const std::string path = folder.write("movie.mov", "12345");
  fs::create_symlink(path, folder / "link");
  fs::create_symlink(folder / "none", folder / "dangling");
  EXPECT_EQ(files->fileAttributesAtPath(folder / "link", true)->size, 5);
  EXPECT_NE(files->fileAttributesAtPath(folder / "link", true)->fileSystemFileNumber,
            files->fileAttributesAtPath(folder / "link", false)->fileSystemFileNumber);
  EXPECT_EQ(files->fileAttributesAtPath(folder / "link", false)->type, FileAttributes::Type::SymbolicLink);
  EXPECT_FALSE(files->fileExistsAtPath(folder / "dangling"));
  EXPECT_TRUE(files->fileAttributesAtPath(folder / "dangling", false));
  EXPECT_FALSE(files->fileAttributesAtPath(folder / "dangling", true));
  bool isDirectory = false;
  EXPECT_TRUE(files->fileExistsAtPath(folder.path() + "/", &isDirectory));
  EXPECT_TRUE(isDirectory);
}

TEST_F(FileManagerTest, AMoveReplacesNothingAndNamesWhatIsInTheWay) {
  const std::string from = folder.write("a", "moved"), inTheWay = folder.write("b", "kept");
  const auto refused = files->movePath(from, inTheWay);
  ASSERT_FALSE(refused.ok());
  EXPECT_EQ(refused.error(),
            cocoaError(kFileWriteFileExistsError, "\u201c" + inTheWay +
                                                      "\u201d could not be created: something with "
                                                      "that name exists already."));
  EXPECT_EQ(readFile(inTheWay), "kept");
  EXPECT_THAT(files->movePath(from, folder / "none/a").error().localizedDescription,
              ::testing::HasSubstr("none/a\u201d could not be created: its folder does not exist."));
  EXPECT_TRUE(files->movePath(from, folder / "c"));
  EXPECT_THAT(names(folder.path()), UnorderedElementsAre("b", "c"));
}

// A folder in shared memory, which is another volume than the temporary folder on most machines.
class CrossVolumeTest : public FileManagerTest {
 protected:
  void SetUp() override {
    const testing::EnvironmentVariable inMemory("TMPDIR", "/dev/shm");
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
  const std::string movie = folder.write("show/movies/one.mov", std::string(3'000'000, 'm'));
  ::chmod(movie.c_str(), 0604);
  ::chmod((folder / "show/movies").c_str(), 0710);
  fs::create_symlink("movies/one.mov", folder / "show/latest");
  const auto then = fs::file_time_type::clock::now() - std::chrono::hours(1000);
  fs::last_write_time(movie, then);
  fs::last_write_time(folder / "show/movies", then);

  ASSERT_TRUE(files->movePath(folder / "show", *other / "moved"));
  EXPECT_THAT(names(folder.path()), IsEmpty());
  EXPECT_THAT(names(other->path()), ElementsAre("moved"));
  const std::string arrived = *other / "moved/movies/one.mov";
  EXPECT_EQ(readFile(arrived), std::string(3'000'000, 'm'));
  EXPECT_EQ(permissions(arrived), 0604u);
  EXPECT_EQ(permissions(*other / "moved/movies"), 0710u);
  EXPECT_EQ(fs::last_write_time(arrived), then);
  EXPECT_EQ(fs::last_write_time(*other / "moved/movies"), then);
  EXPECT_EQ(fs::read_symlink(*other / "moved/latest"), "movies/one.mov");
}

TEST_F(CrossVolumeTest, AFailedMoveLeavesTheSourceWholeAndNothingOfTheDestination) {
  folder.write("show/one.mov", "1");
  ASSERT_EQ(::mkfifo((folder / "show/pipe").c_str(), 0600), 0);  // cannot be copied
  EXPECT_FALSE(files->movePath(folder / "show", *other / "moved").ok());
  EXPECT_THAT(names(folder / "show"), UnorderedElementsAre("one.mov", "pipe"));
  EXPECT_THAT(names(folder.path()), ElementsAre("show"));
  EXPECT_THAT(names(other->path()), IsEmpty());

  const std::string inTheWay = other->write("taken", "kept");
  EXPECT_EQ(files->movePath(folder / "show/one.mov", inTheWay).error().code, kFileWriteFileExistsError);
  EXPECT_EQ(readFile(inTheWay), "kept");
  EXPECT_EQ(readFile(folder / "show/one.mov"), "1");
}

TEST_F(FileManagerTest, TemporaryFilesAreNewEmptyAndPrivate) {
  const auto first = files->makeTemporaryFile(folder / "feed-XXXXXX");
  const auto second = files->makeTemporaryFile(folder / "feed-XXXXXX");
  ASSERT_TRUE(first && second);
  EXPECT_NE(*first, *second);
  EXPECT_EQ(permissions(*first), 0600u);
  EXPECT_EQ(readFile(*first), "");
  EXPECT_FALSE(files->makeTemporaryFile(folder / "none/feed-XXXXXX").ok());
}

TEST_F(FileManagerTest, AHandleReadsOnFromWhereItEndedAndStopsAtTheEnd) {
  const std::string path = folder.write("movie", "abcdefg");
  const auto handle = files->fileHandleForReadingAtPath(path);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(handle->size(), 7);
  EXPECT_EQ(handle->readDataOfLength(3), "abc");
  char there[8] = "";
  EXPECT_EQ(handle->readDataAtOffset(2, there, 3), 3u);
  EXPECT_STREQ(there, "cde");
  ::truncate(path.c_str(), 5);  // as when another program rewrites the movie
  EXPECT_EQ(handle->readDataAtOffset(4, there, sizeof there), 1u);
  EXPECT_EQ(handle->readDataOfLength(std::numeric_limits<std::size_t>::max()), "de");
  EXPECT_EQ(handle->readDataOfLength(3), "");
  handle->closeFile();
  handle->closeFile();
  EXPECT_EQ(handle->readDataOfLength(3), std::nullopt);
  EXPECT_EQ(handle->readDataAtOffset(0, there, 3), std::nullopt);
  EXPECT_EQ(files->fileHandleForReadingAtPath(folder.path()), nullptr);
}

TEST_F(FileManagerTest, AHandleWritesWithoutMakingOrEmptyingAFile) {
  EXPECT_EQ(files->fileHandleForWritingAtPath(folder / "none"), nullptr);
  const std::string path = folder.write("file", "0123456789");
  const auto handle = files->fileHandleForWritingAtPath(path);
  ASSERT_NE(handle, nullptr);
  EXPECT_TRUE(handle->writeData("ab") && handle->writeData("cd"));
  EXPECT_EQ(readFile(path), "abcd456789");
  handle->closeFile();
  EXPECT_FALSE(handle->writeData("e"));
  ASSERT_TRUE(files->createFileAtPath(path));
  EXPECT_EQ(readFile(path), "");
}

TEST_F(FileManagerTest, SizesBeyondThirtyTwoBitsAreTold) {
  const std::string path = folder.write("huge.mov", "");
  if (::truncate(path.c_str(), 5'000'000'000) != 0) GTEST_SKIP() << "no sparse files here";
  EXPECT_EQ(files->fileAttributesAtPath(path, true)->size, 5'000'000'000);
  EXPECT_EQ(files->fileHandleForReadingAtPath(path)->size(), 5'000'000'000);
}

TEST_F(FileManagerTest, APipeThatNobodyWritesToDoesNotHangTheReader) {
  const std::string path = folder / "pipe.mov";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  EXPECT_EQ(*files->contentsAtPath(path), "");
  EXPECT_EQ(files->fileHandleForWritingAtPath(path), nullptr);
}

}  // namespace
}  // namespace clipwave
