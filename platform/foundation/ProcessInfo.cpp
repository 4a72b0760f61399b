#include "platform/foundation/ProcessInfo.h"

#include <pwd.h>
#include <unistd.h>
#include <filesystem>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <vector>

#include "platform/foundation/FileManager.h"
#include "platform/foundation/FolderCreation.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

struct Account {
  std::string name;
  std::string comment;
  std::string home;
};

// What the user database says of the user whom the process runs as; nothing for a user whom it does not know.
std::optional<Account> account() {
  std::vector<char> buffer(1024);
  passwd entry{};
  passwd* found = nullptr;
  int failure = 0;
  while ((failure = ::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found)) == ERANGE) {
    buffer.resize(buffer.size() * 2);
  }
  if (failure != 0 || found == nullptr) return std::nullopt;
  const auto text = [](const char* field) { return std::string(field != nullptr ? field : ""); };
  return Account{text(entry.pw_name), text(entry.pw_gecos), text(entry.pw_dir)};
}

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

class SystemProcessInfo final : public ProcessInfo {
 public:
  std::string hostName() const override {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 && name[0] != '\0' ? name.data() : "localhost";
  }

  std::string userName() const override {
    const auto user = account();
    return user ? user->name : environment("USER");
  }

  std::string fullUserName() const override {
    const auto user = account();
    if (!user) return userName();
    // The comment field: full name, office, telephones, divided by commas; "&" stands for the capitalised
    // login name.
    std::string full;
    for (const char c : user->comment.substr(0, user->comment.find(','))) {
      if (c != '&' || user->name.empty()) {
        full += c;
      } else {
        const char first = user->name.front();
        full += first >= 'a' && first <= 'z' ? static_cast<char>(first - 'a' + 'A') : first;
        full += user->name.substr(1);
      }
    }
    return full.empty() ? user->name : full;
  }

  std::string homeDirectory() const override {
    std::string home = environment("HOME");
    if (home.starts_with('/')) return home;
    const auto user = account();
    return user && user->home.starts_with('/') ? user->home : "";
  }

  Result<std::string> applicationSupportFolder() const override {
    auto folder = userFolder("XDG_DATA_HOME", ".local/share");
    if (!folder) return folder;
    const auto files = makeFileManager();
    if (auto made = createFolderWithParents(*files, *folder, 0700); !made) return made.error();
    return folder;
  }

  Result<std::string> configurationFolder() const override {
    return userFolder("XDG_CONFIG_HOME", ".config");
  }

 private:
  Result<std::string> userFolder(const char* variable, std::string_view underHome) const {
    std::string folder = environment(variable);
    if (folder.starts_with('/')) return folder;
    const std::string home = homeDirectory();
    if (home.empty()) return cocoaError(kFileNoSuchFileError, localized("Files", "There is no home folder."));
    return stringByAppendingPathComponent(home, underHome);
  }
};

}  // namespace

std::unique_ptr<ProcessInfo> makeProcessInfo() {
  return std::make_unique<SystemProcessInfo>();
}

std::string executablePath() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

}  // namespace clipwave
