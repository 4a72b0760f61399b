// The application as a whole over fakes, in a scratch home folder with resources of the test's own.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/ClipwaveProgram.h"
#include "platform/foundation/PropertyList.h"
#include "tests/support/FakeApplicationShell.h"
#include "tests/support/FakeFileManager.h"
#include "tests/support/FakeMovies.h"
#include "tests/support/FakeProcessInfo.h"
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

  TestProgram() {
    writeResource("defaults", {{"defaultAuthor", "Nobody"}, {"defaultFilename", "show"}});
    writeResource("Info", {{"CFBundleVersion", "1.5"}});
  }
  void writeResource(std::string_view name, const Dictionary& content) {
    folder.write("resources/" + std::string(name) + ".plist", dataFromPropertyList(content));
  }
  // Ends the program that runs and puts a new one together.
  ClipwaveProgram& start() {
    program_.reset();
    bundle_.emplace(files, folder / "resources");
    program_ = std::make_unique<ClipwaveProgram>(
        ApplicationServices{application, clock, *loop, files, process, *bundle_, defaults, notifications, log,
                            movies, *aliases, workspace, interfaces, &urls});
    return *program_;
  }
  // The same, up to the end of its start-up.
  void launch() {
    start().controller().awakeFromNib();
    loop->runUntilIdle();
  }
  void stop() { program_.reset(); }

  lanternAppDelegate& delegate() { return program_->delegate(); }
  Controller& controller() { return program_->controller(); }
  MainInterface& interface() { return program_->interface(); }
  ArrayController& channels() { return interface().channelController; }
  ArrayController& episodes() { return interface().vodcastController; }
  std::string storeFolder() const { return process.home + "/.local/share/Clipwave"; }
  std::string storePath() const { return storeFolder() + "/Clipwave.xml"; }

 private:
  std::optional<Bundle> bundle_;
  std::unique_ptr<ClipwaveProgram> program_;
};

}  // namespace clipwave::testing
