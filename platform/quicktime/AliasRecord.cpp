#include "platform/quicktime/AliasRecord.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace clipwave {
namespace {

constexpr char kVersion = 1;
constexpr std::size_t kNumbers = 5;
constexpr std::size_t kPathOffset = 2 + kNumbers * 8;

void append(std::string& bytes, std::uint64_t number) {
  for (int shift = 0; shift < 64; shift += 8) bytes += static_cast<char>(number >> shift & 0xff);
}

std::uint64_t numberAt(std::string_view bytes, std::size_t index) {
  std::uint64_t number = 0;
  for (std::size_t byte = 8; byte-- > 0;) {
    number = number << 8 | static_cast<unsigned char>(bytes[2 + index * 8 + byte]);
  }
  return number;
}

// Wraps for dates that only a damaged volume bears; all that is asked of it is to be the same again.
std::uint64_t nanoseconds(const struct statx_timestamp& time) {
  return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

std::optional<FileIdentity> identityAtPath(const std::string& path, bool traverseLink) {
  struct statx facts {};
  const int flags = AT_NO_AUTOMOUNT | (traverseLink ? 0 : AT_SYMLINK_NOFOLLOW);
  if (::statx(AT_FDCWD, path.c_str(), flags, STATX_BASIC_STATS | STATX_BTIME, &facts) != 0) return {};
  FileIdentity identity;
  identity.device = makedev(facts.stx_dev_major, facts.stx_dev_minor);
  identity.inode = facts.stx_ino;
  if ((facts.stx_mask & STATX_BTIME) != 0) identity.birth = nanoseconds(facts.stx_btime);
  identity.size = facts.stx_size;
  identity.modified = nanoseconds(facts.stx_mtime);
  identity.isDirectory = S_ISDIR(facts.stx_mode);
  return identity;
}

bool isSameFile(const FileIdentity& remembered, const FileIdentity& found) {
  if (remembered.inode != found.inode || remembered.isDirectory != found.isDirectory) return false;
  if (remembered.birth != 0 && found.birth != 0) return remembered.birth == found.birth;
  return remembered.size == found.size && remembered.modified == found.modified;
}

bool isOutdated(const FileIdentity& remembered, const FileIdentity& found) {
  // Size and modification time change with every edit; a record that can do without them is not rewritten for
  // it.
  if (found.birth == 0 && remembered != found) return true;
  return remembered.device != found.device || remembered.inode != found.inode ||
         remembered.birth != found.birth || remembered.isDirectory != found.isDirectory;
}

std::string AliasRecord::encoded() const {
  std::string bytes;
  bytes.reserve(kPathOffset + path.size());
  bytes += kVersion;
  bytes += static_cast<char>(identity.isDirectory ? 1 : 0);
  append(bytes, identity.device);
  append(bytes, identity.inode);
  append(bytes, identity.birth);
  append(bytes, identity.size);
  append(bytes, identity.modified);
  return bytes + path;
}

std::optional<AliasRecord> AliasRecord::decoded(std::string_view bytes) {
  if (bytes.size() <= kPathOffset || bytes.size() > kPathOffset + kLongestPath) return {};
  if (bytes[0] != kVersion || bytes[kPathOffset] != '/') return {};
  if (bytes.find('\0', kPathOffset) != std::string_view::npos) return {};
  AliasRecord record;
  record.identity.isDirectory = bytes[1] != 0;
  record.identity.device = numberAt(bytes, 0);
  record.identity.inode = numberAt(bytes, 1);
  record.identity.birth = numberAt(bytes, 2);
  record.identity.size = numberAt(bytes, 3);
  record.identity.modified = numberAt(bytes, 4);
  record.path = bytes.substr(kPathOffset);
  return record;
}

}  // namespace clipwave
