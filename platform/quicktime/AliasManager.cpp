#include "platform/quicktime/AliasManager.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "platform/quicktime/AliasRecord.h"
#include "platform/quicktime/VolumeScan.h"

namespace clipwave {
namespace {

Error fileReferenceError(std::string_view path, int code) {
  return Error{"NSPOSIXErrorDomain",
               code,
               "No file reference can be made for \"" + std::string(path) +
                   "\": " + std::generic_category().message(code) + ".",
               {}};
}

std::string parentPath(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == 0 ? "/" : path.substr(0, slash);
}

// The links on the way are resolved, so that a folder has one name however it was reached.
std::string withoutLinks(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
  return real ? std::string(real.get()) : path;
}

// Where to begin looking for the missing files of one folder.
struct Surroundings {
  std::string folder;  // the nearest folder that still exists
  VolumeScan* scan;
};

class FileAliases final : public AliasManager {
 public:
  FileAliases(const Clock& clock, AliasSearchBudget budget) : clock_(clock), budget_(budget) {}

  Result<std::string> newAlias(std::string_view path) override {
    if (path.size() > kLongestPath) return fileReferenceError(path, ENAMETOOLONG);
    if (!path.starts_with('/') || path.find('\0') != std::string_view::npos) {
      return fileReferenceError(path, path.empty() ? ENOENT : EINVAL);
    }
    AliasRecord record{{}, std::string(path)};
    const auto identity = identityAtPath(record.path, true);
    if (!identity) return fileReferenceError(path, errno);
    record.identity = *identity;
    return record.encoded();
  }

  std::optional<ResolvedAlias> resolveAlias(std::string_view alias) override {
    auto record = AliasRecord::decoded(alias);
    if (!record) return {};
    const auto identity = identityAtPath(record->path, true);
    // A folder that took a movie's name is not a new export of the movie.
    if (!identity || identity->isDirectory != record->identity.isDirectory) return search(*record);
    ResolvedAlias resolved;
    if (isOutdated(record->identity, *identity)) {
      record->identity = *identity;
      resolved.updatedAlias = record->encoded();
    }
    resolved.path = std::move(record->path);
    return resolved;
  }

 private:
  std::optional<ResolvedAlias> search(const AliasRecord& missing) {
    const Surroundings& start = surroundingsOf(parentPath(missing.path));
    const auto path = start.scan->find(missing.identity.inode, start.folder);
    if (!path || path->size() > kLongestPath) return {};
    const auto identity = identityAtPath(*path, false);
    if (!identity || !isSameFile(missing.identity, *identity)) return {};
    return ResolvedAlias{*path, AliasRecord{*identity, *path}.encoded()};
  }

  // All scans begin and end together: a round begins with the first missing file and serves until the rest is
  // over.
  const Surroundings& surroundingsOf(const std::string& folder) {
    const Seconds now = clock_.uptime();
    if (now - roundBegan_ >= budget_.rest) {
      surroundings_.clear();
      scans_.clear();
    }
    if (scans_.empty()) roundBegan_ = now;
    if (const auto known = surroundings_.find(folder); known != surroundings_.end()) return known->second;

    std::string existing = folder;
    auto identity = identityAtPath(existing, true);
    while (existing != "/" && (!identity || !identity->isDirectory)) {
      existing = parentPath(existing);
      identity = identityAtPath(existing, true);
    }
    const std::uint64_t device = identity ? identity->device : 0;
    VolumeScan& scan = scans_.try_emplace(device, device, clock_, budget_).first->second;
    return surroundings_.emplace(folder, Surroundings{withoutLinks(existing), &scan}).first->second;
  }

  const Clock& clock_;
  const AliasSearchBudget budget_;
  Seconds roundBegan_{0};
  std::unordered_map<std::string, Surroundings> surroundings_;
  std::unordered_map<std::uint64_t, VolumeScan> scans_;
};

}  // namespace

std::unique_ptr<AliasManager> makeAliasManager(const Clock& clock, AliasSearchBudget budget) {
  return std::make_unique<FileAliases>(clock, budget);
}

}  // namespace clipwave
