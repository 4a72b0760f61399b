#include "platform/foundation/FileManager.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>

#include "platform/foundation/FileErrors.h"
#include "platform/foundation/FileTrees.h"
#include "platform/foundation/PosixFile.h"

namespace clipwave {
namespace {

class PosixFileHandle final : public FileHandle {
 public:
  explicit PosixFileHandle(PosixFile file) : file_(std::move(file)) {}

  bool writeData(std::string_view bytes) override { return file_.writeAll(bytes) == 0; }
  std::optional<std::string> readDataOfLength(std::size_t length) override {
    std::string bytes;
    if (file_.read(length, bytes) != 0) return std::nullopt;
    return bytes;
  }
  std::optional<std::size_t> readDataAtOffset(std::int64_t offset, char* buffer,
                                              std::size_t length) const override {
    std::size_t count = 0;
    if (file_.readAt(offset, buffer, length, count) != 0) return std::nullopt;
    return count;
  }
  std::int64_t size() const override { return file_.size(); }
  void closeFile() override { file_.close(); }

 private:
  PosixFile file_;
};

FileAttributes attributesOf(const struct stat& status) {
  FileAttributes attributes;
  attributes.type = S_ISREG(status.st_mode)   ? FileAttributes::Type::Regular
                    : S_ISDIR(status.st_mode) ? FileAttributes::Type::Directory
                    : S_ISLNK(status.st_mode) ? FileAttributes::Type::SymbolicLink
                                              : FileAttributes::Type::Other;
  attributes.size = status.st_size;
  attributes.modificationDate.microseconds =
      std::int64_t{status.st_mtim.tv_sec} * 1'000'000 + status.st_mtim.tv_nsec / 1000;
  attributes.fileSystemNumber = status.st_dev;
  attributes.fileSystemFileNumber = status.st_ino;
  return attributes;
}

Result<void> done(int failure, FileOperation operation, std::string_view path) {
  if (failure != 0) return fileError(failure, operation, path);
  return {};
}

// A side file of writeAtomically: gone again unless it was moved into place.
class SideFile {
 public:
  // `target` only says in which folder.
  explicit SideFile(const std::string& target)
      : path_(stringByAppendingPathComponent(stringByDeletingLastPathComponent(target),
                                             std::string(kSideFilePrefix) + "XXXXXX")),
        file_(::mkostemp(path_.data(), O_CLOEXEC)),
        failure_(file_.isOpen() ? 0 : errno) {}
  ~SideFile() {
    if (file_.isOpen() || isLeft_) ::unlink(path_.c_str());
  }
  SideFile(const SideFile&) = delete;
  SideFile& operator=(const SideFile&) = delete;

  // Gives the file its content and, where `like` is a file that it replaces, that file's owner and
  // permissions.
  int fill(std::string_view data, const struct stat* like, unsigned mode) {
    if (failure_ != 0) return failure_;
    if (const int failure = file_.writeAll(data)) return failure;
    // Only the superuser can give a file away; for everybody else a replaced file becomes the writer's.
    if (like != nullptr) {
      [[maybe_unused]] const int given = ::fchown(file_.descriptor(), like->st_uid, like->st_gid);
    }
    if (::fchmod(file_.descriptor(), like != nullptr ? like->st_mode & 07777 : mode) != 0) return errno;
    if (const int failure = file_.sync()) return failure;
    isLeft_ = true;
    return file_.close();
  }
  int moveTo(const std::string& target) {
    if (::rename(path_.c_str(), target.c_str()) != 0) return errno;
    isLeft_ = false;
    return 0;
  }

 private:
  std::string path_;
  PosixFile file_;
  int failure_;
  bool isLeft_ = false;
};

class PosixFileManager final : public FileManager {
 public:
  bool fileExistsAtPath(std::string_view path, bool* isDirectory) override;
  std::optional<FileAttributes> fileAttributesAtPath(std::string_view path, bool traverseLink) override;
  Result<void> createDirectoryAtPath(std::string_view path, std::optional<unsigned> mode) override;
  Result<void> createFileAtPath(std::string_view path) override;
  Result<void> removeFileAtPath(std::string_view path) override { return removeTree(systemPath(path)); }
  Result<void> movePath(std::string_view path, std::string_view toPath) override;
  Result<std::vector<std::string>> directoryContentsAtPath(std::string_view path) override {
    return namesInFolder(systemPath(path));
  }
  Result<std::string> contentsAtPath(std::string_view path) override;
  Result<void> writeAtomically(std::string_view data, std::string_view path, unsigned mode) override;
  Result<std::string> makeTemporaryFile(std::string_view pathTemplate) override;
  std::optional<std::int64_t> fileSystemFreeSizeAtPath(std::string_view path) override;
  std::unique_ptr<FileHandle> fileHandleForReadingAtPath(std::string_view path) override {
    return openHandle(path, O_RDONLY);
  }
  std::unique_ptr<FileHandle> fileHandleForWritingAtPath(std::string_view path) override {
    return openHandle(path, O_WRONLY);
  }

 private:
  static std::unique_ptr<FileHandle> openHandle(std::string_view path, int flags) {
    PosixFile file;
    if (PosixFile::open(systemPath(path), flags, 0, file) != 0) return nullptr;
    return std::make_unique<PosixFileHandle>(std::move(file));
  }
};

bool PosixFileManager::fileExistsAtPath(std::string_view path, bool* isDirectory) {
  struct stat status {};
  if (::stat(systemPath(path).c_str(), &status) != 0) return false;
  if (isDirectory != nullptr) *isDirectory = S_ISDIR(status.st_mode);
  return true;
}

std::optional<FileAttributes> PosixFileManager::fileAttributesAtPath(std::string_view path,
                                                                     bool traverseLink) {
  struct stat status {};
  const std::string system = systemPath(path);
  const int answer = traverseLink ? ::stat(system.c_str(), &status) : ::lstat(system.c_str(), &status);
  if (answer != 0) return std::nullopt;
  return attributesOf(status);
}

Result<void> PosixFileManager::createDirectoryAtPath(std::string_view path, std::optional<unsigned> mode) {
  const std::string system = systemPath(path);
  if (::mkdir(system.c_str(), mode.value_or(0777)) != 0) return fileError(errno, FileOperation::Make, path);
  // The umask has taken bits away from what mkdir was told.
  if (mode && ::chmod(system.c_str(), *mode) != 0) {
    const int failure = errno;
    ::rmdir(system.c_str());
    return fileError(failure, FileOperation::Make, path);
  }
  return {};
}

Result<void> PosixFileManager::createFileAtPath(std::string_view path) {
  PosixFile file;
  int failure = PosixFile::open(systemPath(path), O_WRONLY | O_CREAT | O_TRUNC, 0666, file);
  if (failure == 0) failure = file.close();
  return done(failure, FileOperation::Make, path);
}

Result<void> PosixFileManager::movePath(std::string_view path, std::string_view toPath) {
  const std::string from = systemPath(path);
  const std::string to = systemPath(toPath);
  const int failure = renameWithoutReplacing(from, to);
  if (failure == EXDEV) return moveAcrossVolumes(from, to);
  // What is in the way, or what is missing, may be at the other end: the error should name that one.
  struct stat status {};
  const bool sourceExists = ::lstat(from.c_str(), &status) == 0;
  if (failure == EEXIST || (failure == ENOENT && sourceExists)) {
    return fileError(failure, FileOperation::Make, toPath);
  }
  return done(failure, FileOperation::Move, path);
}

Result<std::string> PosixFileManager::contentsAtPath(std::string_view path) {
  PosixFile file;
  std::string contents;
  int failure = PosixFile::open(systemPath(path), O_RDONLY, 0, file);
  if (failure == 0) failure = file.read(std::numeric_limits<std::size_t>::max(), contents);
  if (failure != 0) return fileError(failure, FileOperation::Read, path);
  return contents;
}

Result<void> PosixFileManager::writeAtomically(std::string_view data, std::string_view path, unsigned mode) {
  std::string target = systemPath(path);
  struct stat link {
  }, status{};
  const bool replacesFile = ::stat(target.c_str(), &status) == 0 && S_ISREG(status.st_mode);
  if (replacesFile && ::lstat(target.c_str(), &link) == 0 && S_ISLNK(link.st_mode)) {
    const std::unique_ptr<char, void (*)(void*)> real(::realpath(target.c_str(), nullptr), std::free);
    if (!real) return fileError(errno, FileOperation::Write, path);
    target = real.get();
  }
  if (target.empty()) return fileError(ENOENT, FileOperation::Write, path);
  SideFile side(target);
  int failure = side.fill(data, replacesFile ? &status : nullptr, mode);
  if (failure == 0) failure = side.moveTo(target);
  if (failure == 0) failure = syncFolder(stringByDeletingLastPathComponent(target));
  return done(failure, FileOperation::Write, path);
}

Result<std::string> PosixFileManager::makeTemporaryFile(std::string_view pathTemplate) {
  std::string path = systemPath(pathTemplate);
  const PosixFile file(::mkostemp(path.data(), O_CLOEXEC));
  if (!file.isOpen()) return fileError(errno, FileOperation::Make, pathTemplate);
  return path;
}

std::optional<std::int64_t> PosixFileManager::fileSystemFreeSizeAtPath(std::string_view path) {
  struct statvfs volume {};
  if (::statvfs(systemPath(path).c_str(), &volume) != 0 || volume.f_blocks == 0) return std::nullopt;
  constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  const std::uint64_t unit = std::max<std::uint64_t>(volume.f_frsize, 1);
  return static_cast<std::int64_t>(volume.f_bavail > kMost / unit ? kMost : volume.f_bavail * unit);
}

}  // namespace

std::unique_ptr<FileManager> makeFileManager() {
  return std::make_unique<PosixFileManager>();
}

}  // namespace clipwave
