#include "platform/appkit/Workspace.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "platform/appkit/DefaultApplications.h"
#include "platform/appkit/DesktopEntry.h"
#include "platform/appkit/DesktopEnvironment.h"
#include "platform/appkit/DetachedProcess.h"
#include "platform/foundation/ASCII.h"

namespace clipwave {
namespace {

bool hasURLScheme(std::string_view url) {
  const std::size_t colon = url.find(':');
  if (colon == std::string_view::npos || colon == 0 || !std::isalpha(static_cast<unsigned char>(url[0])))
    return false;
  return std::all_of(url.begin(), url.begin() + static_cast<std::ptrdiff_t>(colon),
                     [](unsigned char c) { return std::isalnum(c) || c == '+' || c == '-' || c == '.'; });
}

std::string typeOfScheme(std::string_view scheme) {
  return "x-scheme-handler/" + std::string(scheme);
}

class DesktopWorkspace final : public Workspace {
 public:
  explicit DesktopWorkspace(FileManager& files) : files_(files) {}

  bool openFile(std::string_view path) override {
    return files_.fileExistsAtPath(path) && startDetachedProcess({"xdg-open", std::string(path)});
  }

  bool openURL(std::string_view url) override {
    // What has no scheme would be taken for a path or an option.
    return hasURLScheme(url) && startDetachedProcess({"xdg-open", std::string(url)});
  }

  bool openFileWithApplication(std::string_view path, std::string_view applicationName) override {
    if (!files_.fileExistsAtPath(path)) return false;
    const auto entry = applicationNamed(applicationName);
    if (entry && startDetachedProcess(entry->commandLineForFile(path))) return true;
    return openFile(path);
  }

  std::string defaultApplicationForURLScheme(std::string_view scheme) override {
    return DefaultApplications(files_).applicationForType(typeOfScheme(scheme));
  }

  Result<void> setDefaultApplicationForURLScheme(std::string_view application,
                                                 std::string_view scheme) override {
    return DefaultApplications(files_).choose(application, typeOfScheme(scheme));
  }

  Result<void> removeDefaultApplicationForURLScheme(std::string_view application,
                                                    std::string_view scheme) override {
    return DefaultApplications(files_).forget(application, typeOfScheme(scheme));
  }

 private:
  static constexpr int kFolderDepth = 4;

  // By its exact name, else by its name in any case.
  std::optional<DesktopEntry> applicationNamed(std::string_view name) {
    std::optional<DesktopEntry> similar;
    std::set<std::string> seen;
    for (const std::string& folder : applicationFolders()) {
      for (DesktopEntry& entry : entriesIn(folder, "", kFolderDepth, seen)) {
        if (entry.name == name) return std::move(entry);
        if (!similar && equalIgnoringCase(entry.name, name)) similar = std::move(entry);
      }
    }
    return similar;
  }

  // A file hides those of the same name in less important folders, also when it describes no application.
  // `prefix` stands for the folders above it in the name.
  std::vector<DesktopEntry> entriesIn(const std::string& folder, const std::string& prefix, int depth,
                                      std::set<std::string>& seen) {
    std::vector<DesktopEntry> entries;
    auto names = files_.directoryContentsAtPath(folder);
    if (!names) return entries;
    std::sort(names->begin(), names->end());
    for (const std::string& name : *names) {
      const std::string path = stringByAppendingPathComponent(folder, name);
      if (pathExtension(name) == "desktop") {
        if (!seen.insert(prefix + name).second) continue;
        const auto text = files_.contentsAtPath(path);
        if (!text) continue;
        if (auto entry = DesktopEntry::parse(*text, path)) entries.push_back(std::move(*entry));
        continue;
      }
      bool isDirectory = false;
      if (depth == 0 || !files_.fileExistsAtPath(path, &isDirectory) || !isDirectory) continue;
      for (DesktopEntry& entry : entriesIn(path, prefix + name + "-", depth - 1, seen))
        entries.push_back(std::move(entry));
    }
    return entries;
  }

  FileManager& files_;
};

std::uint64_t bigEndian(std::string_view bytes) {
  std::uint64_t number = 0;
  for (const char byte : bytes) number = number << 8 | static_cast<std::uint8_t>(byte);
  return number;
}

}  // namespace

std::unique_ptr<Workspace> makeWorkspace(FileManager& files) {
  return std::make_unique<DesktopWorkspace>(files);
}

std::string HFSTypeOfFile(FileManager& files, std::string_view path) {
  const std::string none;
  // Asked first: opening a pipe would wait for its other end.
  const auto attributes = files.fileAttributesAtPath(path, true);
  if (!attributes || attributes->type != FileAttributes::Type::Regular) return none;
  const auto file = files.fileHandleForReadingAtPath(path);
  if (!file) return none;
  constexpr std::size_t kLongestFileType = 256;
  const auto head = file->readDataOfLength(kLongestFileType);
  if (!head || head->size() < 8) return none;

  const std::string_view bytes = *head;
  const std::string_view type = bytes.substr(4, 4);
  const auto fileSize = static_cast<std::uint64_t>(std::max<std::int64_t>(attributes->size, 0));
  std::uint64_t size = bigEndian(bytes.substr(0, 4));
  std::uint64_t header = 8;
  if (size == 1 && bytes.size() >= 16) {
    size = bigEndian(bytes.substr(8, 8));
    header = 16;
  } else if (size == 0) {
    size = fileSize;  // to the end of the file
  }
  if (size < header || size > fileSize) return none;

  if (type == "ftyp") {
    // The brand, its version, then the brands that it is compatible with.
    const std::string_view brands = bytes.substr(8, std::min<std::uint64_t>(size, bytes.size()) - 8);
    for (std::size_t i = 0; i + 4 <= brands.size(); i += 4) {
      if (i != 4 && brands.substr(i, 4) == "qt  ") return "'MooV'";
    }
    return none;
  }
  constexpr std::string_view kFirstAtoms[] = {"moov", "mdat", "wide", "free", "skip", "pnot"};
  return std::find(std::begin(kFirstAtoms), std::end(kFirstAtoms), type) == std::end(kFirstAtoms) ? none
                                                                                                  : "'MooV'";
}

}  // namespace clipwave
