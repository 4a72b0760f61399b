// Alias records of files that a test declares, moves and removes without a disk.
#pragma once

#include <cerrno>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/quicktime/AliasManager.h"

namespace clipwave::testing {

// A record is "alias:", the file's number, ":" and its path. Made anew at a path that is there, a file is
// another file.
class FakeAliasManager final : public AliasManager {
 public:
  void makeFile(const std::string& path) { files_[path] = ++lastNumber_; }
  void moveFile(const std::string& from, const std::string& to) {
    files_[to] = files_.at(from);
    files_.erase(from);
  }
  void removeFile(const std::string& path) { files_.erase(path); }

  Result<std::string> newAlias(std::string_view path) override {
    const auto file = files_.find(path);
    if (file == files_.end()) return Error{"NSPOSIXErrorDomain", ENOENT, "No such file.", {}};
    return record(*file);
  }

  std::optional<ResolvedAlias> resolveAlias(std::string_view alias) override {
    ++resolutions;
    const std::size_t colon = alias.find(':', kPrefix.size());
    if (!alias.starts_with(kPrefix) || colon == std::string_view::npos) return {};
    auto file = files_.find(alias.substr(colon + 1));
    for (auto other = files_.begin(); file == files_.end() && other != files_.end(); ++other) {
      if (alias.starts_with(std::string(kPrefix) + std::to_string(other->second) + ":")) file = other;
    }
    if (file == files_.end()) return {};
    ResolvedAlias resolved{file->first, {}};
    if (record(*file) != alias) resolved.updatedAlias = record(*file);
    return resolved;
  }

  int resolutions = 0;

 private:
  using Files = std::map<std::string, int, std::less<>>;
  static constexpr std::string_view kPrefix = "alias:";
  static std::string record(const Files::value_type& file) {
    return std::string(kPrefix) + std::to_string(file.second) + ":" + file.first;
  }

  Files files_;
  int lastNumber_ = 0;
};

}  // namespace clipwave::testing
