// An open descriptor of the system, and what is done with one; failures are errno values. Internal to this
// room.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace clipwave {

static_assert(sizeof(off_t) == 8, "movies are larger than 32 bits can count");

// Closes its descriptor when it is destroyed. Operations answer 0, or the errno value of the failure.
class PosixFile {
 public:
  PosixFile() = default;
  explicit PosixFile(int descriptor) : descriptor_(descriptor) {}
  PosixFile(PosixFile&& other) noexcept;
  PosixFile& operator=(PosixFile&& other) noexcept;
  ~PosixFile() { close(); }

  // Opens without ever waiting for somebody at the other end of a pipe, and closed to child processes. A
  // folder is opened only where `flags` hold O_DIRECTORY.
  static int open(const std::string& path, int flags, mode_t mode, PosixFile& file);

  bool isOpen() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }
  int release();

  int writeAll(std::string_view bytes);
  // Appends up to `length` bytes to `bytes`; fewer only at the end of the file.
  int read(std::size_t length, std::string& bytes);
  // Reads `length` bytes from `offset` on; `count` says how many there were. Leaves the place of read()
  // alone.
  int readAt(std::int64_t offset, char* buffer, std::size_t length, std::size_t& count) const;
  std::int64_t size() const;  // 0 when it cannot be told
  int sync();
  int close();

 private:
  int descriptor_ = -1;
};

// The path as the system takes it: no slashes at its end, which would follow a link, and empty, which names
// nothing, when it holds a NUL, which would cut it short.
std::string systemPath(std::string_view path);

// Flushes a folder's entries to the disk. A folder that cannot be opened or flushed for reasons of its kind
// or permissions counts as flushed.
int syncFolder(const std::string& path);

}  // namespace clipwave
