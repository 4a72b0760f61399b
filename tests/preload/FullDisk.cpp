// A library for a server to load first, under which no file grows beyond CLIPWAVE_FULL_DISK_AT bytes.
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

extern "C" ssize_t write(int descriptor, const void* bytes, size_t count) {
  const char* const limit = std::getenv("CLIPWAVE_FULL_DISK_AT");
  struct stat status {};
  if (limit != nullptr && ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
      status.st_size + static_cast<off_t>(count) > std::atoll(limit)) {
    errno = ENOSPC;
    return -1;
  }
  return ::syscall(SYS_write, descriptor, bytes, count);
}
