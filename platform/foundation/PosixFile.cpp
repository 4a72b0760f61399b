#include "platform/foundation/PosixFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <stdexcept>
#include <utility>

namespace clipwave {
namespace {

constexpr std::size_t kReadStep = 1 << 20;  // bytes; for files that do not tell their size

}  // namespace

PosixFile::PosixFile(PosixFile&& other) noexcept : descriptor_(other.release()) {}

PosixFile& PosixFile::operator=(PosixFile&& other) noexcept {
  if (this != &other) {
    close();
    descriptor_ = other.release();
  }
  return *this;
}

int PosixFile::release() {
  return std::exchange(descriptor_, -1);
}

int PosixFile::open(const std::string& path, int flags, mode_t mode, PosixFile& file) {
  PosixFile opened(::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, mode));
  if (!opened.isOpen()) return errno;
  struct stat status {};
  if (::fstat(opened.descriptor_, &status) != 0) return errno;
  if (S_ISDIR(status.st_mode) && (flags & O_DIRECTORY) == 0) return EISDIR;
  // Only the opening must not wait; a reader of a pipe does want to wait for its bytes.
  const int set = ::fcntl(opened.descriptor_, F_GETFL);
  if (set < 0 || ::fcntl(opened.descriptor_, F_SETFL, set & ~O_NONBLOCK) < 0) return errno;
  file = std::move(opened);
  return 0;
}

int PosixFile::writeAll(std::string_view bytes) {
  if (!isOpen()) return EBADF;
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

int PosixFile::read(std::size_t length, std::string& bytes) try {
  if (!isOpen()) return EBADF;
  const std::size_t start = bytes.size();
  const off_t position = ::lseek(descriptor_, 0, SEEK_CUR);
  const std::int64_t left = position < 0 ? 0 : std::max<std::int64_t>(size() - position, 0);
  // One byte more than is left, so that the end is found without growing the text for it.
  std::size_t step = left > 0 ? static_cast<std::size_t>(left) + 1 : kReadStep;
  std::size_t got = 0;
  while (got < length) {
    bytes.resize(start + got + std::min(step, length - got));
    const ssize_t count = ::read(descriptor_, bytes.data() + start + got, bytes.size() - start - got);
    if (count < 0 && errno == EINTR) continue;
    const int failure = count < 0 ? errno : 0;
    got += count > 0 ? static_cast<std::size_t>(count) : 0;
    if (failure != 0 || count == 0) {
      bytes.resize(start + got);
      return failure;
    }
    step = step > static_cast<std::size_t>(count) ? step - static_cast<std::size_t>(count) : kReadStep;
  }
  return 0;
} catch (const std::bad_alloc&) {
  return ENOMEM;
} catch (const std::length_error&) {
  return ENOMEM;
}

int PosixFile::readAt(std::int64_t offset, char* buffer, std::size_t length, std::size_t& count) const {
  count = 0;
  while (count < length) {
    const ssize_t got =
        ::pread(descriptor_, buffer + count, length - count, offset + static_cast<off_t>(count));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return errno;
    if (got == 0) break;
    count += static_cast<std::size_t>(got);
  }
  return 0;
}

std::int64_t PosixFile::size() const {
  struct stat status {};
  return ::fstat(descriptor_, &status) == 0 ? status.st_size : 0;
}

int PosixFile::sync() {
  return ::fsync(descriptor_) == 0 ? 0 : errno;
}

int PosixFile::close() {
  if (!isOpen()) return 0;
  return ::close(release()) == 0 || errno == EINTR ? 0 : errno;
}

std::string systemPath(std::string_view path) {
  if (path.find('\0') != path.npos) return {};
  while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
  return std::string(path);
}

int syncFolder(const std::string& path) {
  PosixFile folder;
  if (PosixFile::open(path, O_RDONLY | O_DIRECTORY, 0, folder) != 0) return 0;
  const int failure = folder.sync();
  return failure == EIO || failure == ENOSPC || failure == EDQUOT ? failure : 0;
}

}  // namespace clipwave
