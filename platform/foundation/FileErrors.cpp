#include "platform/foundation/FileErrors.h"

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

int errorCode(int errorNumber, bool isReading) {
  switch (errorNumber) {
    case ENOENT:
      return isReading ? kFileReadNoSuchFileError : kFileNoSuchFileError;
    case EACCES:
    case EPERM:
      return isReading ? kFileReadNoPermissionError : kFileWriteNoPermissionError;
    case EEXIST:
    case ENOTEMPTY:
      return kFileWriteFileExistsError;
    case ENOSPC:
    case EDQUOT:
      return kFileWriteOutOfSpaceError;
    case EROFS:
      return kFileWriteVolumeReadOnlyError;
    default:
      return isReading ? kFileReadUnknownError : kFileWriteUnknownError;
  }
}

// What failed and why: "%1" is the path, "%2" the cause.
std::string sentence(FileOperation operation) {
  switch (operation) {
    case FileOperation::Read:
      return localized("Files", "“%1” could not be read: %2.");
    case FileOperation::Write:
      return localized("Files", "“%1” could not be written: %2.");
    case FileOperation::Make:
      return localized("Files", "“%1” could not be created: %2.");
    case FileOperation::Remove:
      return localized("Files", "“%1” could not be removed: %2.");
    case FileOperation::Move:
      return localized("Files", "“%1” could not be moved: %2.");
  }
  return localized("Files", "“%1” could not be used: %2.");
}

std::string cause(int errorNumber, FileOperation operation) {
  switch (errorNumber) {
    case ENOENT:
      return operation == FileOperation::Make || operation == FileOperation::Write
                 ? localized("Files", "its folder does not exist")
                 : localized("Files", "it does not exist");
    case EACCES:
    case EPERM:
      return localized("Files", "you do not have permission");
    case EEXIST:
    case ENOTEMPTY:
      return localized("Files", "something with that name exists already");
    case ENOSPC:
      return localized("Files", "the disk is full");
    case EDQUOT:
      return localized("Files", "your share of the disk is used up");
    case EROFS:
      return localized("Files", "the disk is read-only");
    case EISDIR:
      return localized("Files", "it is a folder");
    case ENOTDIR:
      return localized("Files", "a part of its path is not a folder");
    case ENAMETOOLONG:
      return localized("Files", "its name is too long");
    case ELOOP:
      return localized("Files", "its links lead round in a circle");
    case EMFILE:
    case ENFILE:
      return localized("Files", "too many files are open");
    case EFBIG:
      return localized("Files", "it would be too large");
    case EIO:
      return localized("Files", "the disk reported an error");
    default:
      return std::generic_category().message(errorNumber);
  }
}

}  // namespace

Error fileError(int errorNumber, FileOperation operation, std::string_view path) {
  std::string description = filledIn(sentence(operation), {path, cause(errorNumber, operation)});
  return cocoaError(errorCode(errorNumber, operation == FileOperation::Read), std::move(description));
}

}  // namespace clipwave
