// One look around a volume for files by their inodes, within a budget; what it saw serves every later
// question. Internal to this room.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/foundation/Clock.h"
#include "platform/quicktime/AliasManager.h"

namespace clipwave {

// Reads folders only, never a file, and reads each folder once. Links to folders are not followed, other
// volumes mounted within this one are not entered, and folders that may not be read are passed over.
class VolumeScan {
 public:
  // `device` is the volume's number as it is mounted now. The clock must outlive the scan.
  VolumeScan(std::uint64_t device, const Clock& clock, AliasSearchBudget budget);
  VolumeScan(const VolumeScan&) = delete;
  VolumeScan& operator=(const VolumeScan&) = delete;

  // The path of the file with this inode, looked for from `folder` outwards: the folder, its subfolders, the
  // folder around it, its other subfolders, then everything below these and so on towards the volume's root.
  // `folder` is an existing folder of this volume, its path absolute and free of links. Nothing when the file
  // was not seen before the budget was used up. What was seen may be gone again: the caller looks.
  std::optional<std::string> find(std::uint64_t inode, const std::string& folder);

 private:
  struct Folder {
    std::string path;
    Folder* parent = nullptr;  // none at the volume's root
    bool enteredFromAbove = false;
    bool parentIsKnown = false;
    bool listed = false;  // read, as far as the budget went
    bool queued = false;  // for the wide search
    std::vector<Folder*> subfolders;
    std::size_t surveyed = 0;  // how many of the subfolders the near search has been through
  };
  struct Place {
    const Folder* folder;
    std::string name;
  };

  std::optional<std::string> placeOf(std::uint64_t inode) const;
  bool mayGoOn(double share) const;
  Folder& folderAt(const std::string& path);
  Folder* parentOf(Folder& folder);
  bool belongsToVolume(const Folder& folder) const;
  void searchNear(std::uint64_t inode, Folder& start);
  void searchWide(std::uint64_t inode, Folder& start);
  bool survey(std::uint64_t inode, Folder& folder);
  bool drain(std::uint64_t inode);
  void enqueue(Folder& folder);
  void list(Folder& folder);
  void note(Folder& folder, const char* name, std::uint64_t inode, bool isDirectory);

  const std::uint64_t device_;
  const Clock& clock_;
  const AliasSearchBudget budget_;
  int entries_ = 0;
  Seconds spent_{0};
  Seconds startedAt_{0};  // when the current search would have begun, had it been the only one
  std::deque<Folder> folders_;
  std::unordered_map<std::string_view, Folder*> folderByPath_;
  std::unordered_map<std::uint64_t, Place> places_;
  std::deque<Folder*> queue_;
};

}  // namespace clipwave
