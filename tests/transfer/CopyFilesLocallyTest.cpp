#include "transfer/CopyFilesLocally.h"

#include <filesystem>
#include <set>

#include "tests/transfer/CopyTest.h"
#include "transfer/DestinationFolders.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

namespace fs = std::filesystem;

constexpr std::size_t kChunk = 262'143;

// A text in which no chunk is like another.
std::string movie(std::size_t length) {
  std::string text(length, '\0');
  for (std::size_t i = 0; i < length; ++i) text[i] = static_cast<char>((i * 2'654'435'761U) >> 13);
  return text;
}

class CopyFilesLocallyTest : public CopyTest {
 protected:
  bool start(const std::vector<CopyEntry>& entries, std::int64_t limit = CopyFilesLocally::kWholeFileLimit) {
    kept = std::make_shared<CopyFilesLocally>(LocalCopyServices{application, *runLoop, files, defaults, log},
                                              limit);
    backEnd = kept;
    files.accesses.clear();
    return backEnd->copyFiles(entries, to, *this);
  }
  // Copies to the end and answers how many turns that took.
  int turns() {
    int count = 0;
    for (; runLoop->hasPendingWork() && count < 100'000; ++count) runLoop->runOnce(Seconds(0));
    return count;
  }
  const std::string pub = folder / "pub";
  std::string to = pub;
  std::shared_ptr<CopyFilesLocally> kept;  // what a test still asks when its owner has let go
};

TEST_F(CopyFilesLocallyTest, AVolumeThatIsNotMountedIsAskedForAndNeverMade) {
  std::set<std::string> there = {"/Volumes"};
  const DestinationStore store{
      [&](const std::string& path, bool& isDirectory) { return (isDirectory = there.contains(path)); },
      [&](const std::string& path) { return there.insert(path).second; }};
  const auto makeFolders = [&](const std::string& path, MountedVolumes volumes = MountedVolumes::MustExist) {
    return makeDestinationFolders(application, log, path, store, volumes);
  };
  EXPECT_FALSE(makeFolders("/Volumes/Media/Podcasts/Ch1"));
  EXPECT_THAT(there, ElementsAre("/Volumes"));
  EXPECT_THAT(
      shell.alerts,
      ElementsAre("Volume not mounted|The save path \"/Volumes/Media/Podcasts/Ch1\" for this channel is "
                  "on a network volume, but that volume has not been mounted.  Either change the folder "
                  "that the channel gets saved to, or mount the remote volume and try again.|OK"));
  there = {"/Volumes", "/Volumes/Media"};
  EXPECT_TRUE(makeFolders("/Volumes/Media/Podcasts"));
  EXPECT_TRUE(makeFolders("/Volumes/Disk", MountedVolumes::NotOfThisStore));
  EXPECT_THAT(there, ElementsAre("/Volumes", "/Volumes/Disk", "/Volumes/Media", "/Volumes/Media/Podcasts"));
}

TEST_F(CopyFilesLocallyTest, WhatStandsInTheWayOfTheFolderIsNamedInAnAlertAndInTheLog) {
  to = folder.write("film", "") + "/x";
  EXPECT_FALSE(start({{"/s", "a"}}));
  to = pub + "/a/b/c";
  files.fail("createDirectoryAtPath", pub + "/a/b");
  EXPECT_FALSE(start({{"/s", "a"}}));
  EXPECT_TRUE(fs::is_directory(pub + "/a"));
  EXPECT_THAT(log.lines, ElementsAre("cannot create a folder over file named " + folder / "film",
                                     "error creating directory " + pub + "/a/b"));
  EXPECT_THAT(
      shell.alerts,
      ElementsAre("Cannot create folder!|Could not create folder " + folder / "film" +
                      " because there is a file with the same name.  Rename or remove the file and try "
                      "again.|OK",
                  "Error creating directory!|There was an error when trying to create a directory at " + pub +
                      "/a/b.  Check to make sure you have permissions to create a directory here.|OK"));
  backEnd->abort();
  EXPECT_THAT(events, IsEmpty()) << "there was nobody yet to tell";
}

TEST_F(CopyFilesLocallyTest, ExistingFilesAreKeptOrReplacedAsTheUserSays) {
  std::vector<CopyEntry> entries;
  for (const char* name : {"a", "new", "b", "c"}) entries.push_back({folder.write("source", "new"), name});
  for (const char* name : {"pub/a", "pub/b", "pub/c"}) folder.write(name, "old");
  using enum Alert::Answer;
  for (const Alert::Answer answer : {Alternate, Default, Alternate}) shell.answerAlert(answer);
  EXPECT_TRUE(start(entries));
  turns();
  EXPECT_THAT(events, ElementsAre("a", "new", "c", "completed"));
  EXPECT_EQ(readFile(pub + "/a") + readFile(pub + "/b"), "newold");
  ASSERT_EQ(shell.alerts.size(), 3U);
  EXPECT_EQ(shell.alerts[1],
            "File Exists!|The file b already exists. Do you want to replace or keep the existing file?|"
            "Keep Existing/Replace/Cancel");

  events.clear();
  shell.answerAlert(Default, true);
  EXPECT_FALSE(start(entries)) << "all are kept, by one answer";
  EXPECT_EQ(shell.alerts.size(), 4U);
  shell.answerAlert(Other);
  EXPECT_FALSE(start(entries)) << "cancelled";
  EXPECT_EQ(turns(), 0);
  EXPECT_THAT(events, IsEmpty());
}

TEST_F(CopyFilesLocallyTest, AFileIsWrittenAChunkATurnAndReportedInOneMore) {
  const std::vector<std::size_t> sizes = {0, 1, kChunk, kChunk + 1, 3 * kChunk - 1};
  std::vector<CopyEntry> entries;
  for (const std::size_t size : sizes)
    entries.push_back({folder.write("s" + std::to_string(size), movie(size)), std::to_string(size)});
  ASSERT_TRUE(start(entries));
  EXPECT_THAT(events, IsEmpty());
  EXPECT_EQ(turns(), (0 + 1) + (1 + 1) + (1 + 1) + (2 + 1) + (3 + 1));
  EXPECT_THAT(events, ElementsAre("0", "1", "262143", "262144", "786428", "completed"));
  for (const std::size_t size : sizes) EXPECT_TRUE(readFile(pub + "/" + std::to_string(size)) == movie(size));
  EXPECT_THAT(kept->troubles(), IsEmpty());
}

TEST_F(CopyFilesLocallyTest, AFileThatShrinksWhileItIsCopiedIsOnRecord) {
  const std::string from = folder.write("src", movie(5'000'001));
  ASSERT_TRUE(start({{from, "copy"}}, 5'000'000));
  while (files.countOf("writeData") == 0) runLoop->runOnce(Seconds(0));
  fs::resize_file(from, 600'000);
  turns();
  EXPECT_TRUE(readFile(pub + "/copy") == movie(600'000));
  EXPECT_THAT(log.lines,
              ElementsAre("Of the file \"" + from + "\" only 600000 of 5000001 bytes could be read."));
}

TEST_F(CopyFilesLocallyTest, OffsetsAreCountedBeyondThirtyTwoBits) {
  const std::string from = folder.write("large", "");
  constexpr std::int64_t kSize = 4'500'000'000, kLast = kSize / 262'143 * 262'143;
  std::error_code error;
  fs::resize_file(from, kSize, error);
  if (error) GTEST_SKIP() << "no sparse files here";
  files.fail("fileHandleForWritingAtPath", "");  // read to its end, and written nowhere
  ASSERT_TRUE(start({{from, "copy"}}));
  EXPECT_EQ(turns(), kLast / 262'143 + 2);
  EXPECT_EQ(files.countOf("readDataAtOffset " + from + " " + std::to_string(kLast)), 1);
}

TEST_F(CopyFilesLocallyTest, WhatFailsSilentlyIsCopiedAllTheSameAndIsOnRecord) {
  ASSERT_TRUE(defaults.setValue("noConfirm", true));
  const std::string good = folder.write("good", movie(kChunk + 9));
  files.fail("createFileAtPath", pub + "/2");
  files.fail("fileHandleForWritingAtPath", pub + "/3");
  files.onAccess = [this](std::string_view operation, std::string_view path) -> std::optional<Error> {
    if (operation == "writeData" && path == pub + "/4" && files.countOf("writeData " + pub + "/4") == 2)
      return FakeFileManager::anyError();  // the disk is full for a moment
    return std::nullopt;
  };
  std::vector<CopyEntry> entries = {{folder / "gone", "0"}, {pub, "1"}};
  for (const char* name : {"2", "3", "4", "..", "5"}) entries.push_back({good, name});
  ASSERT_TRUE(start(entries));
  turns();
  EXPECT_THAT(events, ElementsAre("0", "1", "2", "3", "4", "..", "5", "completed"));
  EXPECT_THAT(kept->troubles(),
              ElementsAre(HasSubstr("gone\" could not be read"), HasSubstr("pub\" could not be read"),
                          HasSubstr("2\" could not be created"), HasSubstr("3\" could not be opened"),
                          HasSubstr("4\" could not be written whole"), HasSubstr("has no name")));
  EXPECT_EQ(kept->troubles(), log.lines);
  EXPECT_THAT(shell.alerts, IsEmpty());
  EXPECT_TRUE(fs::exists(pub + "/0") && fs::file_size(pub + "/0") == 0);
  EXPECT_EQ(fs::file_size(pub + "/4"), kChunk);
  EXPECT_TRUE(readFile(pub + "/5") == readFile(good));
}

TEST_F(CopyFilesLocallyTest, ACopyOntoItselfLosesNothing) {
  ASSERT_TRUE(defaults.setValue("noConfirm", true));
  const std::string own = folder.write("pub/own", "own");
  const std::string linked = folder.write("linked", "linked");
  fs::create_symlink(linked, pub + "/linked");
  fs::create_symlink(folder.write("pub/real", "real"), folder / "to-real");
  fs::create_hard_link(folder.write("hard", "hard"), pub + "/hard");
  fs::create_directory_symlink(pub, folder / "other-way");
  const std::string inside = folder.write("pub/bundle/inside", "inside");
  fs::create_symlink(folder / "planted", pub + "/dangling");
  ASSERT_TRUE(start({{own, "own"},
                     {linked, "linked"},
                     {folder / "to-real", "real"},
                     {folder / "hard", "hard"},
                     {folder / "other-way/own", "own"},
                     {inside, "bundle"},
                     {own, "dangling"},
                     {pub + "/gone", "gone"}}));
  turns();
  for (const char* name : {"own", "linked", "real", "hard"}) EXPECT_EQ(readFile(pub + "/" + name), name);
  EXPECT_EQ(readFile(linked) + readFile(folder / "to-real") + readFile(folder / "hard"), "linkedrealhard");
  EXPECT_EQ(readFile(inside), "inside");
  EXPECT_THAT(kept->troubles(),
              ElementsAre(HasSubstr("holds the file"), HasSubstr("gone\" could not be read")));
  EXPECT_EQ(readFile(pub + "/dangling"), "own");
  EXPECT_FALSE(fs::exists(folder / "planted") || fs::exists(pub + "/gone"));
}

TEST_F(CopyFilesLocallyTest, AbortEndsTheCopyWhereverItStands) {
  const std::string large = folder.write("large", movie(9'000'000));
  ASSERT_TRUE(start({{large, "a"}, {large, "b"}}));  // still being read
  backEnd->abort();
  EXPECT_THAT(events, ElementsAre("aborted"));
  EXPECT_EQ(turns(), 0);

  ASSERT_TRUE(start({{large, "c"}, {large, "d"}}));
  while (files.countOf("writeData") < 2) runLoop->runOnce(Seconds(0));
  for (int i = 0; i < 2; ++i) kept->abort();
  EXPECT_EQ(turns(), 0);
  EXPECT_EQ(fs::file_size(pub + "/c"), 2 * kChunk);

  onFileCopied = [this] {
    kept = nullptr;
    std::exchange(backEnd, nullptr)->abort();
  };
  ASSERT_TRUE(start({{folder.write("small", "text"), "e"}, {large, "f"}}));
  turns();
  EXPECT_THAT(events, ElementsAre("aborted", "aborted", "aborted", "e", "aborted"));
  EXPECT_FALSE(fs::exists(pub + "/d") || fs::exists(pub + "/f"));
}

}  // namespace
}  // namespace clipwave
