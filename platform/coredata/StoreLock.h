// Keeps everybody else away from a store for as long as it lives. Internal to this room.
#pragma once

#include <memory>
#include <string>

#include "platform/foundation/Error.h"

namespace clipwave {

class StoreLock {
 public:
  // Locks the file at `path`, made where there is none. The kernel lets the lock go when the process dies,
  // however that comes about; the file itself stays. Fails with kFileLockingError when the lock is held, by
  // this process or another, and with the error of the file system when the file cannot be had.
  static Result<std::unique_ptr<StoreLock>> acquire(const std::string& path);
  ~StoreLock();
  StoreLock(const StoreLock&) = delete;
  StoreLock& operator=(const StoreLock&) = delete;

 private:
  explicit StoreLock(int descriptor) : descriptor_(descriptor) {}
  const int descriptor_;
};

}  // namespace clipwave
