// A library whose store is in memory, made anew for each input.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "fuzz/MemoryFiles.h"
#include "fuzz/Require.h"
#include "model/LibraryHost.h"
#include "model/LibraryModel.h"
#include "platform/appkit/ArrayController.h"
#include "platform/coredata/ManagedObjectContext.h"
#include "tests/support/FakeMovies.h"
#include "tests/support/FakeProcessInfo.h"

namespace clipwave::fuzz {

class MemoryLibrary final : public LibraryHost {
 public:
  // `name`: of the store. Libraries that are open at the same time need names of their own.
  explicit MemoryLibrary(std::string_view name = "Clipwave.xml")
      : storePath(folder() + "/" + std::string(name)) {
    userDefaults.setInitialValues(
        {{"defaultAuthor", "Alex Example"}, {"defaultLanguage", "English"}, {"defaultFilename", "show"}});
  }

  const std::string storePath;
  MemoryFiles memory;
  TestClock testClock;
  std::unique_ptr<RunLoop> loop = makeRunLoop(testClock);
  testing::FakeProcessInfo processInfo{"/home/alex"};
  UserDefaultsController userDefaults{memory, "/home/alex/.config/defaults.plist"};
  NotificationCenter center;
  RecordingLog lines;
  testing::FakeMovieOpener movieOpener;
  // Paths in alias records are looked up on the real disk, which is not searched for what is missing.
  std::unique_ptr<AliasManager> aliasManager = makeAliasManager(testClock, {.directoryEntries = 0});
  ArrayController* channelList = nullptr;  // whose single selected channel is the selected one
  std::unique_ptr<ManagedObjectModel> model = makeLibraryModel(*this);

  std::string storeText() const {
    const auto found = memory.contents.find(storePath);
    return found == memory.contents.end() ? "" : found->second;
  }
  void setStoreText(std::string_view text) { memory.contents[storePath] = text; }
  Result<std::unique_ptr<PersistentStoreCoordinator>> open() {
    auto coordinator = std::make_unique<PersistentStoreCoordinator>(*model, memory);
    if (Result<void> added = coordinator->addPersistentStore(NSXMLStoreType, storePath); !added)
      return added.error();
    return coordinator;
  }
  // A store that this program wrote itself opens, and nothing else is acceptable.
  std::unique_ptr<ManagedObjectContext> openContext() {
    auto coordinator = open();
    require(coordinator.ok(), "what was saved can be opened", {storeText()});
    return std::make_unique<ManagedObjectContext>(std::move(*coordinator), *loop);
  }
  void turn() { loop->runUntilIdle(); }

  Clock& clock() override { return testClock; }
  RunLoop& runLoop() override { return *loop; }
  FileManager& files() override { return memory; }
  ProcessInfo& process() override { return processInfo; }
  UserDefaultsController& defaults() override { return userDefaults; }
  NotificationCenter& notifications() override { return center; }
  Log& log() override { return lines; }
  MovieOpener& movies() override { return movieOpener; }
  AliasManager& aliases() override { return *aliasManager; }
  ManagedObject* selectedChannel() override {
    if (channelList == nullptr) return nullptr;
    const auto objects = channelList->selectedObjects();
    return objects.size() == 1 ? objects.front() : nullptr;
  }
  std::optional<DotMacMember> dotMacMember() override { return std::nullopt; }
  void showCriticalAlert(const std::string&, const std::string&) override {}

 private:
  // Only the lock lies on the disk: in a folder of this process's own below TMPDIR.
  static const std::string& folder() {
    static const std::string kFolder = [] {
      std::string path = (std::filesystem::temp_directory_path() / "clipwave-fuzz-XXXXXX").string();
      require(::mkdtemp(path.data()) != nullptr, "there is a folder for temporary files");
      return path;
    }();
    return kFolder;
  }
};

}  // namespace clipwave::fuzz
