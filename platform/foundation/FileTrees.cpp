#include "platform/foundation/FileTrees.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "platform/foundation/FileErrors.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/PosixFile.h"

namespace clipwave {
namespace {

constexpr std::size_t kCopyStep = 1 << 20;  // bytes

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

// The names in an open folder; 0 or the errno value. The stream takes the descriptor over.
int readNames(int descriptor, std::vector<std::string>& names) {
  const std::unique_ptr<DIR, CloseFolder> folder(::fdopendir(descriptor));
  if (!folder) {
    const int failure = errno;
    ::close(descriptor);
    return failure;
  }
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(folder.get());
    if (entry == nullptr) return errno;
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
}

// Works through the open parent folder, so that a link put in place of a folder cannot lead it elsewhere.
// `path` is for the error only.
Result<void> removeEntry(int parent, const std::string& name, const std::string& path) {
  if (::unlinkat(parent, name.c_str(), 0) == 0) return {};
  const int failure = errno;
  struct stat status {};
  if (::fstatat(parent, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISDIR(status.st_mode)) {
    return fileError(failure, FileOperation::Remove, path);
  }
  PosixFile folder(::openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!folder.isOpen()) return fileError(errno, FileOperation::Remove, path);
  std::vector<std::string> names;
  if (const int unread = readNames(::fcntl(folder.descriptor(), F_DUPFD_CLOEXEC, 0), names)) {
    return fileError(unread, FileOperation::Remove, path);
  }
  for (const std::string& child : names) {
    auto removed = removeEntry(folder.descriptor(), child, path + "/" + child);
    if (!removed) return removed;
  }
  if (::unlinkat(parent, name.c_str(), AT_REMOVEDIR) != 0) {
    return fileError(errno, FileOperation::Remove, path);
  }
  return {};
}

std::array<timespec, 2> timesOf(const struct stat& status) {
  return {status.st_atim, status.st_mtim};
}

int copyContent(PosixFile& source, PosixFile& copy) {
  std::string bytes;
  do {
    bytes.clear();
    if (const int failure = source.read(kCopyStep, bytes)) return failure;
    if (const int failure = copy.writeAll(bytes)) return failure;
  } while (!bytes.empty());
  return 0;
}

int copyFile(const std::string& from, const std::string& to, const struct stat& status) {
  PosixFile source, copy;
  if (const int failure = PosixFile::open(from, O_RDONLY | O_NOFOLLOW, 0, source)) return failure;
  if (const int failure = PosixFile::open(to, O_WRONLY | O_CREAT | O_EXCL, 0600, copy)) return failure;
  if (const int failure = copyContent(source, copy)) return failure;
  if (::fchmod(copy.descriptor(), status.st_mode & 07777) != 0) return errno;
  if (::futimens(copy.descriptor(), timesOf(status).data()) != 0) return errno;
  if (const int failure = copy.sync()) return failure;
  return copy.close();
}

int copyLink(const std::string& from, const std::string& to, const struct stat& status) {
  std::string target(static_cast<std::size_t>(status.st_size) + 1, '\0');
  const ssize_t length = ::readlink(from.c_str(), target.data(), target.size());
  if (length < 0) return errno;
  target.resize(static_cast<std::size_t>(length));
  if (::symlink(target.c_str(), to.c_str()) != 0) return errno;
  return ::utimensat(AT_FDCWD, to.c_str(), timesOf(status).data(), AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

Result<void> copyFolder(const std::string& from, const std::string& to, const struct stat& status) {
  // A folder whose entries cannot be removed afterwards cannot be moved: better to know it now.
  if (::access(from.c_str(), W_OK | X_OK) != 0) return fileError(errno, FileOperation::Move, from);
  if (::mkdir(to.c_str(), 0700) != 0) return fileError(errno, FileOperation::Move, from);
  auto names = namesInFolder(from);
  if (!names) return names.error();
  for (const std::string& name : *names) {
    auto copied = copyTree(from + "/" + name, to + "/" + name);
    if (!copied) return copied;
  }
  if (::chmod(to.c_str(), status.st_mode & 07777) != 0 ||
      ::utimensat(AT_FDCWD, to.c_str(), timesOf(status).data(), 0) != 0) {
    return fileError(errno, FileOperation::Move, from);
  }
  if (const int failure = syncFolder(to)) return fileError(failure, FileOperation::Move, from);
  return {};
}

// A new folder that only we can enter, removed with all that it holds when we are done.
class ScratchFolder {
 public:
  explicit ScratchFolder(const std::string& parent)
      : path_(stringByAppendingPathComponent(parent, std::string(kSideFilePrefix) + "XXXXXX")) {
    if (::mkdtemp(path_.data()) == nullptr) failure_ = errno;
  }
  ~ScratchFolder() {
    if (failure_ == 0) static_cast<void>(removeTree(path_).ok());
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  int failure() const { return failure_; }
  std::string item() const { return path_ + "/item"; }

 private:
  std::string path_;
  int failure_ = 0;
};

}  // namespace

Result<std::vector<std::string>> namesInFolder(const std::string& path) {
  std::vector<std::string> names;
  PosixFile folder;
  int failure = PosixFile::open(path, O_RDONLY | O_DIRECTORY, 0, folder);
  if (failure == 0) failure = readNames(folder.release(), names);
  if (failure != 0) return fileError(failure, FileOperation::Read, path);
  return names;
}

Result<void> removeTree(const std::string& path) {
  if (path == "/") return fileError(EPERM, FileOperation::Remove, path);
  return removeEntry(AT_FDCWD, path, path);
}

Result<void> copyTree(const std::string& from, const std::string& to) {
  struct stat status {};
  if (::lstat(from.c_str(), &status) != 0) return fileError(errno, FileOperation::Move, from);
  if (S_ISDIR(status.st_mode)) return copyFolder(from, to, status);
  int failure = ENOTSUP;
  if (S_ISREG(status.st_mode)) failure = copyFile(from, to, status);
  if (S_ISLNK(status.st_mode)) failure = copyLink(from, to, status);
  if (failure != 0) return fileError(failure, FileOperation::Move, from);
  return {};
}

int renameWithoutReplacing(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return errno;
  // This file system cannot promise it: look first, and live with the moment in between.
  struct stat status {};
  if (::lstat(to.c_str(), &status) == 0) return EEXIST;
  return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

Result<void> moveAcrossVolumes(const std::string& from, const std::string& to) {
  const std::string folder = stringByDeletingLastPathComponent(to);
  struct stat status {};
  if (::lstat(to.c_str(), &status) == 0) return fileError(EEXIST, FileOperation::Make, to);
  const ScratchFolder incoming(folder);
  if (incoming.failure() != 0) return fileError(incoming.failure(), FileOperation::Make, to);
  // Made before the long copy, so that a source that may not leave its folder is known at once.
  const ScratchFolder outgoing(stringByDeletingLastPathComponent(from));
  if (outgoing.failure() != 0) return fileError(outgoing.failure(), FileOperation::Move, from);

  if (auto copied = copyTree(from, incoming.item()); !copied) return copied;
  if (const int failure = renameWithoutReplacing(incoming.item(), to)) {
    return fileError(failure, FileOperation::Make, to);
  }
  int failure = syncFolder(folder);
  // One rename takes the source away whole or not at all; what it held is removed where nobody sees it.
  if (failure == 0 && ::rename(from.c_str(), outgoing.item().c_str()) != 0) failure = errno;
  if (failure == 0) return {};
  static_cast<void>(removeTree(to).ok());
  return fileError(failure, FileOperation::Move, from);
}

}  // namespace clipwave
