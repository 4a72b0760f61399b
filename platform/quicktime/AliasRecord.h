// What an alias record remembers of a file, and the block of bytes that it is stored as. Internal to this
// room.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace clipwave {

// The longest path that the system takes, without the NUL behind it.
inline constexpr std::size_t kLongestPath = 4095;

// What tells a file from another one that came to bear its path or was given its inode. Times are nanoseconds
// since 1970.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t birth = 0;  // 0: the file system does not tell
  std::uint64_t size = 0;
  std::uint64_t modified = 0;
  bool isDirectory = false;

  bool operator==(const FileIdentity&) const = default;
};

// The identity of what stands at an absolute path; nothing, with errno set, when nothing can be found there.
std::optional<FileIdentity> identityAtPath(const std::string& path, bool traverseLink);

// Whether a file found elsewhere is the remembered one. The device's number is not asked for: it may change
// whenever the volume is mounted. The birth time decides where both know it, otherwise size and modification
// time do.
bool isSameFile(const FileIdentity& remembered, const FileIdentity& found);

// Whether what stands at the remembered path is no longer what the record says of it.
bool isOutdated(const FileIdentity& remembered, const FileIdentity& found);

struct AliasRecord {
  FileIdentity identity;
  std::string path;  // absolute

  // A version byte, the identity's fields in little-endian order, and the path as it is.
  std::string encoded() const;
  // Nothing for bytes that are no record of this version.
  static std::optional<AliasRecord> decoded(std::string_view bytes);
};

}  // namespace clipwave
