// A whole library in a scratch folder: the host that records ask, over fakes, and the store they live in.
#pragma once

#include <filesystem>
#include <stdexcept>

#include "model/Channel.h"
#include "model/Image.h"
#include "model/LibraryHost.h"
#include "model/LibraryModel.h"
#include "model/Vodcast.h"
#include "platform/appkit/ArrayController.h"
#include "platform/coredata/ManagedObjectContext.h"
#include "tests/support/FakeFileManager.h"
#include "tests/support/FakeMovies.h"
#include "tests/support/FakeProcessInfo.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

// Files are real unless a test brings another disk, and lie in `folder`; aliases are real too; movies are
// those that a test declares in `movieOpener`. The clock stands still. The store opens at once, empty; its
// file is written by saveAndReopen().
class FakeLibraryHost : public LibraryHost {
 public:
  explicit FakeLibraryHost(std::unique_ptr<FileManager> disk = makeFileManager(),
                           AliasSearchBudget aliasSearch = {})
      : fileManager(std::move(disk)), aliasManager(makeAliasManager(testClock, aliasSearch)) {
    userDefaults.setInitialValues({{"defaultAuthor", processInfo.fullUserName()},
                                   {"defaultLanguage", "English"},
                                   {"defaultFilename", "show"},
                                   {"noConfirm", false}});
    open();
  }

  TemporaryFolder folder;
  TestClock testClock;
  std::unique_ptr<RunLoop> loop = makeRunLoop(testClock);
  FakeFileManager fileManager;
  FakeProcessInfo processInfo{folder.makeFolder("home")};
  UserDefaultsController userDefaults{fileManager, folder / "defaults.plist"};
  NotificationCenter center;
  RecordingLog lines;
  FakeMovieOpener movieOpener;
  std::unique_ptr<AliasManager> aliasManager;
  std::optional<DotMacMember> member;
  ManagedObject* selected = nullptr;        // the selected channel, unless there is a list
  ArrayController* channelList = nullptr;   // the list whose single selected channel it is
  std::vector<std::string> criticalAlerts;  // "title|message"

  std::unique_ptr<ManagedObjectModel> model = makeLibraryModel(*this);
  std::unique_ptr<ManagedObjectContext> context;

  const std::string& home() const { return processInfo.home; }
  std::string storePath() const { return folder / "Clipwave.xml"; }
  void turn() { loop->runUntilIdle(); }

  // Records straight in the store, without a list. A plain channel still waits for its defaults, which the
  // next turn() brings.
  Channel& newChannel() { return make<Channel>(kChannelEntity); }
  Channel& newChannelWithDefaults() {
    Channel& channel = newChannel();
    turn();
    return channel;
  }
  Vodcast& newEpisode(Channel& parent) {
    Vodcast& episode = make<Vodcast>(kVodcastEntity);
    parent.addObject(episode, "children");
    return episode;
  }
  Image& newImage(std::string_view url) {
    Image& image = make<Image>(kImageEntity);
    image.setValue("url", url);
    return image;
  }
  // A file of that many bytes in `folder` (sparse: it takes no room), declared as a movie when it has a
  // duration.
  std::string makeFile(std::string_view name, std::int64_t size, std::optional<double> duration = {}) {
    const std::string path = folder.write(name, "");
    std::filesystem::resize_file(path, static_cast<std::uintmax_t>(size));
    if (duration) movieOpener.durations[path] = *duration;
    return path;
  }

  Result<std::unique_ptr<PersistentStoreCoordinator>> openStore() {
    auto coordinator = std::make_unique<PersistentStoreCoordinator>(*model, fileManager);
    if (auto added = coordinator->addPersistentStore(NSXMLStoreType, storePath()); !added)
      return added.error();
    return coordinator;
  }
  void open() {
    auto opened = openStore();
    if (!opened) throw std::runtime_error(opened.error().localizedDescription);
    context = std::make_unique<ManagedObjectContext>(std::move(*opened), *loop);
  }
  // Every record is read anew: pointers from before lead nowhere.
  void saveAndReopen() {
    turn();
    if (const auto saved = context->save(); !saved)
      throw std::runtime_error(saved.error().localizedDescription);
    selected = nullptr;
    context.reset();
    open();
  }

  Clock& clock() override { return testClock; }
  RunLoop& runLoop() override { return *loop; }
  FileManager& files() override { return fileManager; }
  ProcessInfo& process() override { return processInfo; }
  UserDefaultsController& defaults() override { return userDefaults; }
  NotificationCenter& notifications() override { return center; }
  Log& log() override { return lines; }
  MovieOpener& movies() override { return movieOpener; }
  AliasManager& aliases() override { return *aliasManager; }
  ManagedObject* selectedChannel() override {
    if (!channelList) return selected;
    const auto objects = channelList->selectedObjects();
    return objects.size() == 1 ? objects.front() : nullptr;
  }
  std::optional<DotMacMember> dotMacMember() override { return member; }
  void showCriticalAlert(const std::string& title, const std::string& message) override {
    criticalAlerts.push_back(title + "|" + message);
  }

 private:
  template <class Record>
  Record& make(std::string_view entity) {
    return static_cast<Record&>(*context->insertNewObject(entity));
  }
};

}  // namespace clipwave::testing
