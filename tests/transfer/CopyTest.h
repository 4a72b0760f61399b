// A copy by one of the back-ends, and what it tells its owner.
#pragma once

#include <gmock/gmock.h>

#include "tests/support/FakeApplicationShell.h"
#include "tests/support/FakeFileManager.h"
#include "tests/support/TemporaryFolder.h"
#include "transfer/CopyBackEnd.h"

namespace clipwave {

class CopyTest : public ::testing::Test, public CopyDelegate {
 protected:
  void fileCopied(const CopyEntry& entry) override {
    events.push_back(entry.filename);
    if (onFileCopied) onFileCopied();
  }
  void updateCopyStatusForFile(std::string_view filename, int percent) override {
    events.push_back(std::string(filename) + " " + std::to_string(percent) + "%");
  }
  void copyCompleted(CopyBackEnd&) override { end("completed"); }
  void connectionError(CopyBackEnd&, int error, std::string_view message) override {
    end(std::to_string(error) + " " + std::string(message));
  }
  void copyAborted(CopyBackEnd&) override { end("aborted"); }
  // The owner may let go of the back-end within the last callback.
  void end(std::string event) {
    events.push_back(std::move(event));
    backEnd = nullptr;
  }

  testing::TemporaryFolder folder;
  TestClock clock;
  std::unique_ptr<RunLoop> runLoop = makeRunLoop(clock);
  testing::FakeApplicationShell shell;
  Application application{*runLoop, shell};
  testing::FakeFileManager files;
  UserDefaultsController defaults{files, folder / "defaults.plist"};
  RecordingLog log;
  std::vector<std::string> events;
  std::function<void()> onFileCopied;
  std::shared_ptr<CopyBackEnd> backEnd;
};

}  // namespace clipwave
