#include "platform/foundation/FileErrors.h"

#include <cerrno>
#include <string>
#include <system_error>

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

std::string_view participle(FileOperation operation) {
  switch (operation) {
    case FileOperation::Read:
      return "read";
    case FileOperation::Write:
      return "written";
    case FileOperation::Make:
      return "created";
    case FileOperation::Remove:
      return "removed";
    case FileOperation::Move:
      return "moved";
  }
  return "used";
}

std::string cause(int errorNumber, FileOperation operation) {
  switch (errorNumber) {
    case ENOENT:
      return operation == FileOperation::Make || operation == FileOperation::Write
                 ? "its folder does not exist"
                 : "it does not exist";
    case EACCES:
    case EPERM:
      return "you do not have permission";
    case EEXIST:
    case ENOTEMPTY:
      return "something with that name exists already";
    case ENOSPC:
      return "the disk is full";
    case EDQUOT:
      return "your share of the disk is used up";
    case EROFS:
      return "the disk is read-only";
    case EISDIR:
      return "it is a folder";
    case ENOTDIR:
      return "a part of its path is not a folder";
    case ENAMETOOLONG:
      return "its name is too long";
    case ELOOP:
      return "its links lead round in a circle";
    case EMFILE:
    case ENFILE:
      return "too many files are open";
    case EFBIG:
      return "it would be too large";
    case EIO:
      return "the disk reported an error";
    default:
      return std::generic_category().message(errorNumber);
  }
}

}  // namespace

Error fileError(int errorNumber, FileOperation operation, std::string_view path) {
  std::string description = "\u201c" + std::string(path) + "\u201d could not be ";
  description.append(participle(operation)).append(": ").append(cause(errorNumber, operation)).append(".");
  return cocoaError(errorCode(errorNumber, operation == FileOperation::Read), std::move(description));
}

}  // namespace clipwave
