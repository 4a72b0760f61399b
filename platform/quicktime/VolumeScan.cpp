#include "platform/quicktime/VolumeScan.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <memory>
#include <utility>

namespace clipwave {
namespace {

// The wide search for one file leaves this part of the budget to the near searches for others, which find
// most of what can be found.
constexpr double kWideShare = 0.5;
constexpr double kWholeBudget = 1.0;
// Asking the time costs about as much as reading an entry.
constexpr int kEntriesBetweenClockReadings = 64;

struct CloseDirectory {
  void operator()(DIR* directory) const { ::closedir(directory); }
};
using OpenDirectory = std::unique_ptr<DIR, CloseDirectory>;

OpenDirectory openDirectory(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (descriptor < 0) return nullptr;
  DIR* directory = ::fdopendir(descriptor);
  if (directory == nullptr) ::close(descriptor);
  return OpenDirectory(directory);
}

enum class EntryKind { File, Directory, Passed };

EntryKind kindOf(DIR* directory, const dirent& entry) {
  const std::string_view name = entry.d_name;
  if (name == "." || name == ".." || entry.d_type == DT_LNK) return EntryKind::Passed;
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR ? EntryKind::Directory : EntryKind::File;
  struct stat status {};
  if (::fstatat(::dirfd(directory), entry.d_name, &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0 ||
      S_ISLNK(status.st_mode)) {
    return EntryKind::Passed;
  }
  return S_ISDIR(status.st_mode) ? EntryKind::Directory : EntryKind::File;
}

std::string join(const std::string& folder, std::string_view name) {
  std::string path = folder;
  if (!path.ends_with('/')) path += '/';
  return path += name;
}

// Nothing for what cannot be asked; otherwise whether `path` is on the device, and whether it is where a
// volume begins.
struct Whereabouts {
  std::uint64_t device;
  bool isMountPoint;
};

std::optional<Whereabouts> whereaboutsOf(const std::string& path) {
  struct statx facts {};
  if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, STATX_TYPE, &facts) != 0)
    return {};
  return Whereabouts{makedev(facts.stx_dev_major, facts.stx_dev_minor),
                     (facts.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0};
}

}  // namespace

VolumeScan::VolumeScan(std::uint64_t device, const Clock& clock, AliasSearchBudget budget)
    : device_(device), clock_(clock), budget_(budget) {}

std::optional<std::string> VolumeScan::find(std::uint64_t inode, const std::string& folder) {
  if (!places_.contains(inode)) {
    startedAt_ = clock_.uptime() - spent_;
    if (mayGoOn(kWholeBudget)) {
      Folder& start = folderAt(folder);
      searchNear(inode, start);
      if (!places_.contains(inode)) searchWide(inode, start);
      spent_ = clock_.uptime() - startedAt_;
    }
  }
  return placeOf(inode);
}

std::optional<std::string> VolumeScan::placeOf(std::uint64_t inode) const {
  const auto place = places_.find(inode);
  if (place == places_.end()) return {};
  return join(place->second.folder->path, place->second.name);
}

bool VolumeScan::mayGoOn(double share) const {
  return entries_ < budget_.directoryEntries * share && clock_.uptime() - startedAt_ < budget_.time * share;
}

VolumeScan::Folder& VolumeScan::folderAt(const std::string& path) {
  if (const auto known = folderByPath_.find(path); known != folderByPath_.end()) return *known->second;
  Folder& folder = folders_.emplace_back();
  folder.path = path;
  folderByPath_.emplace(folder.path, &folder);
  return folder;
}

VolumeScan::Folder* VolumeScan::parentOf(Folder& folder) {
  if (folder.parentIsKnown) return folder.parent;
  folder.parentIsKnown = true;
  const auto here = whereaboutsOf(folder.path);
  if (folder.path == "/" || !here || here->isMountPoint) return nullptr;
  const std::size_t slash = folder.path.rfind('/');
  const std::string above = slash == 0 ? "/" : folder.path.substr(0, slash);
  const auto there = whereaboutsOf(above);
  if (there && there->device == device_) folder.parent = &folderAt(above);
  return folder.parent;
}

void VolumeScan::searchNear(std::uint64_t inode, Folder& start) {
  if (survey(inode, start) || !mayGoOn(kWholeBudget)) return;
  if (Folder* around = parentOf(start)) survey(inode, *around);
}

// Reads the folder and its subfolders; true as soon as the file has been seen.
bool VolumeScan::survey(std::uint64_t inode, Folder& folder) {
  list(folder);
  while (!places_.contains(inode)) {
    if (folder.surveyed == folder.subfolders.size() || !mayGoOn(kWholeBudget)) return false;
    list(*folder.subfolders[folder.surveyed++]);
  }
  return true;
}

void VolumeScan::searchWide(std::uint64_t inode, Folder& start) {
  for (Folder* around = &start; around != nullptr; around = parentOf(*around)) {
    enqueue(*around);
    if (drain(inode) || !mayGoOn(kWideShare)) return;
  }
}

// Breadth first, so that a deep tree beside the way does not eat the budget. What is left in the queue when
// the file is found waits for the next question.
bool VolumeScan::drain(std::uint64_t inode) {
  while (!queue_.empty() && mayGoOn(kWideShare)) {
    Folder& folder = *queue_.front();
    queue_.pop_front();
    list(folder);
    for (Folder* subfolder : folder.subfolders) enqueue(*subfolder);
    if (places_.contains(inode)) return true;
  }
  return false;
}

void VolumeScan::enqueue(Folder& folder) {
  if (folder.queued) return;
  folder.queued = true;
  queue_.push_back(&folder);
}

bool VolumeScan::belongsToVolume(const Folder& folder) const {
  const auto here = whereaboutsOf(folder.path);
  return here && here->device == device_ && !(folder.enteredFromAbove && here->isMountPoint);
}

void VolumeScan::list(Folder& folder) {
  if (std::exchange(folder.listed, true) || !belongsToVolume(folder)) return;
  const OpenDirectory directory = openDirectory(folder.path);
  if (!directory) return;
  while (const dirent* entry = ::readdir(directory.get())) {
    const EntryKind kind = kindOf(directory.get(), *entry);
    if (kind != EntryKind::Passed) note(folder, entry->d_name, entry->d_ino, kind == EntryKind::Directory);
    ++entries_;
    if (entries_ >= budget_.directoryEntries) return;
    if (entries_ % kEntriesBetweenClockReadings == 0 && !mayGoOn(kWholeBudget)) return;
  }
}

void VolumeScan::note(Folder& folder, const char* name, std::uint64_t inode, bool isDirectory) {
  places_.try_emplace(inode, Place{&folder, name});
  if (!isDirectory) return;
  Folder& subfolder = folderAt(join(folder.path, name));
  folder.subfolders.push_back(&subfolder);
  if (subfolder.parentIsKnown || subfolder.listed) return;
  subfolder.parent = &folder;
  subfolder.parentIsKnown = true;
  subfolder.enteredFromAbove = true;
}

}  // namespace clipwave
