// A process whose user, host and folders are whatever a test says.
#pragma once

#include "platform/foundation/FileManager.h"
#include "platform/foundation/FolderCreation.h"
#include "platform/foundation/ProcessInfo.h"

namespace clipwave::testing {

// The folders lie under `home`; an empty one fails them as a missing home folder does.
class FakeProcessInfo final : public ProcessInfo {
 public:
  explicit FakeProcessInfo(std::string homeFolder = "") : home(std::move(homeFolder)) {}

  std::string home;

  std::string hostName() const override { return "studio.example"; }
  std::string userName() const override { return "alex"; }
  std::string fullUserName() const override { return "Alex Example"; }
  std::string homeDirectory() const override { return home; }
  Result<std::string> applicationSupportFolder() const override {
    auto folder = underHome(".local/share");
    if (!folder) return folder;
    const auto files = makeFileManager();
    if (auto made = createFolderWithParents(*files, *folder, 0700); !made) return made.error();
    return folder;
  }
  Result<std::string> configurationFolder() const override { return underHome(".config"); }

 private:
  Result<std::string> underHome(std::string_view name) const {
    if (home.empty()) return cocoaError(kFileNoSuchFileError, "There is no home folder.");
    return stringByAppendingPathComponent(home, name);
  }
};

}  // namespace clipwave::testing
