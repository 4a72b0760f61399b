#include "platform/coredata/StoreLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

Error systemError(int number) {
  int code = kFileReadUnknownError;
  if (number == EACCES || number == EPERM) code = kFileReadNoPermissionError;
  if (number == ENOENT || number == ENOTDIR) code = kFileReadNoSuchFileError;
  if (number == EROFS) code = kFileWriteVolumeReadOnlyError;
  if (number == ENOSPC || number == EDQUOT) code = kFileWriteOutOfSpaceError;
  if (number == EWOULDBLOCK)
    return cocoaError(kFileLockingError, localized("Library", "It is open elsewhere."));
  return cocoaError(code, filledIn(localized("Library", "Its lock cannot be had: %1."),
                                   {std::generic_category().message(number)}));
}

}  // namespace

Result<std::unique_ptr<StoreLock>> StoreLock::acquire(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (descriptor < 0) return systemError(errno);
  std::unique_ptr<StoreLock> lock(new StoreLock(descriptor));
  // flock and not POSIX record locks: those do not exclude a second opener in the same process, and the first
  // close of any descriptor of the file would let them go.
  while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    if (errno != EINTR) return systemError(errno);
  }
  return lock;
}

StoreLock::~StoreLock() {
  ::close(descriptor_);
}

}  // namespace clipwave
