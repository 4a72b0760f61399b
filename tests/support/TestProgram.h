// The application as a whole over fakes, in a scratch home folder with resources of the test's own.
#pragma once

#include "app/ClipwaveProgram.h"
#include "model/EpisodeFromFile.h"
#include "platform/appkit/FieldBinding.h"
#include "platform/foundation/PropertyList.h"
#include "tests/support/FakeApplicationShell.h"
#include "tests/support/FakeCaptureKit.h"
#include "tests/support/FakeDotMac.h"
#include "tests/support/FakeFileManager.h"
#include "tests/support/FakeMovies.h"
#include "tests/support/FakeProcessInfo.h"
#include "tests/support/FakeSecretStore.h"
#include "tests/support/FakeURLLoading.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

class TestProgram {
 public:
  TemporaryFolder folder;
  TestClock clock;
  std::unique_ptr<RunLoop> loop = makeRunLoop(clock);
  FakeApplicationShell shell;
  Application application{*loop, shell};
  FakeFileManager files;
  FakeProcessInfo process{folder.makeFolder("home")};
  UserDefaultsController defaults{files, folder / "defaults.plist"};
  NotificationCenter notifications;
  RecordingLog log;
  FakeMovieOpener movies;
  std::unique_ptr<AliasManager> aliases = makeAliasManager(clock);
  FakeWorkspace workspace;
  StateOnlyInterfaceLoader interfaces;
  FakeURLLoading urls;
  Pasteboard pasteboard;
  FakeDotMac dotMac{*loop};
  FakeSecretStore secrets;
  FakeCaptureKit captureKit{files};

  TestProgram() {
    writeResource("defaults", {{"defaultAuthor", "Nobody"}, {"defaultFilename", "show"}});
    const Dictionary movie = {{"CFBundleTypeExtensions", Array{"mov", "mp4"}}};
    writeResource("Info", {{"CFBundleVersion", "1.5"}, {"CFBundleDocumentTypes", Array{movie}}});
  }
  void writeResource(std::string_view name, const Dictionary& content) {
    folder.write("resources/" + std::string(name) + ".plist", dataFromPropertyList(content));
  }
  // Ends the program that runs and puts a new one together.
  Controller& start() {
    program_.reset();
    bundle_.emplace(files, folder / "resources");
    program_ = std::make_unique<ClipwaveProgram>(ApplicationServices{
        application, clock, *loop, files, process, *bundle_, defaults, notifications, log, movies, *aliases,
        workspace, interfaces, urls, pasteboard, dotMac, secrets, captureKit});
    return controller();
  }
  // The same, up to the end of its start-up.
  MainInterface& launch() {
    start().awakeFromNib();
    turn();
    return interface();
  }
  void stop() { program_.reset(); }
  void turn() { loop->runUntilIdle(); }

  lanternAppDelegate& delegate() { return program_->delegate(); }
  Controller& controller() { return program_->controller(); }
  MainInterface& interface() { return program_->interface(); }
  ArrayController& channels() { return interface().channelController; }
  ArrayController& episodes() { return interface().vodcastController; }
  ManagedObjectContext& context() { return *delegate().managedObjectContext(); }
  std::string storePath() const { return process.home + "/.local/share/Clipwave/Clipwave.xml"; }

  // A new channel in its place, selected alone: "Channel 02" and so on.
  ManagedObject& addChannel() {
    ManagedObject& channel = *channels().add();
    turn();
    channels().rearrangeObjects();
    return channel;
  }
  // The path of a movie of five seconds and that many bytes.
  std::string makeMovie(std::string_view name, std::size_t size = 2048) {
    movies.durations[folder / name] = 5;
    return folder.write(name, std::string(size, 'x'));
  }
  // Episodes at the top of the list, the last one first; all their movies are there.
  void addEpisodes(const std::vector<std::string>& names) {
    for (const std::string& name : names) addEpisodeFromFile(episodes(), "", makeMovie(name));
    turn();
  }
  // What each listed record has under a key, as text.
  static std::vector<std::string> listed(const ArrayController& list, std::string_view key = "vcTitle") {
    std::vector<std::string> texts;
    for (ManagedObject* record : list.arrangedObjects()) {
      const Value value = record->value(key);
      texts.emplace_back(value.isString() ? value.stringValue() : value.boolValue() ? "YES" : "NO");
    }
    return texts;
  }

 private:
  std::optional<Bundle> bundle_;
  std::unique_ptr<ClipwaveProgram> program_;
};

}  // namespace clipwave::testing
