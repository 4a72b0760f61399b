#include "platform/foundation/FileLoad.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/FileErrors.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/URLErrors.h"
#include "platform/foundation/URLEscapes.h"

namespace clipwave {
namespace {

// The path that a file URL of this machine names; nothing when it names none.
std::optional<std::string> pathOfFileURL(std::string_view url) {
  std::string_view rest = url.substr(url.find(':') + 1);
  if (rest.starts_with("//")) {
    rest.remove_prefix(2);
    const std::string_view host = rest.substr(0, rest.find('/'));
    if (!host.empty() && !equalIgnoringCase(host, "localhost")) return std::nullopt;
    rest.remove_prefix(host.size());
  }
  std::string path = stringByRemovingPercentEscapes(rest.substr(0, rest.find_first_of("?#")));
  if (!path.starts_with('/') || path.find('\0') != path.npos) return std::nullopt;
  return path;
}

Error fileURLError(URLErrorCode code, int errorNumber, std::string_view path) {
  return urlError(code, fileError(errorNumber, FileOperation::Read, path).localizedDescription);
}

// Why nothing could be opened at the path: whoever opens it knows best.
Error unreadable(const std::string& path, FileManager& files) {
  const auto contents = files.contentsAtPath(path);
  if (contents) return fileURLError(kURLErrorUnknown, EIO, path);
  switch (contents.error().code) {
    case kFileReadNoSuchFileError:
      return urlError(kURLErrorFileDoesNotExist, contents.error().localizedDescription);
    case kFileReadNoPermissionError:
      return urlError(kURLErrorNoPermissionsToReadFile, contents.error().localizedDescription);
    default:
      return urlError(kURLErrorUnknown, contents.error().localizedDescription);
  }
}

}  // namespace

Result<LoadedData> contentsOfFileURL(std::string_view url, FileManager& files, std::int64_t mostBytes) {
  const auto path = pathOfFileURL(url);
  if (!path) return badURLError();
  const auto attributes = files.fileAttributesAtPath(*path, true);
  if (!attributes) return unreadable(*path, files);
  if (attributes->type == FileAttributes::Type::Directory)
    return fileURLError(kURLErrorFileIsDirectory, EISDIR, *path);
  if (attributes->type != FileAttributes::Type::Regular)
    return urlError(kURLErrorUnsupportedURL,
                    filledIn(localized("Files", "“%1” is not a file that can be loaded."), {*path}));
  if (attributes->size > mostBytes) return tooLargeError(*path, mostBytes);

  const auto file = files.fileHandleForReadingAtPath(*path);
  if (!file) return unreadable(*path, files);
  // One byte more than may come: the file may have grown, or not tell its size.
  auto bytes = file->readDataOfLength(static_cast<std::size_t>(mostBytes) + 1);
  if (!bytes) return fileURLError(kURLErrorUnknown, EIO, *path);
  if (static_cast<std::int64_t>(bytes->size()) > mostBytes) return tooLargeError(*path, mostBytes);
  return LoadedData{std::move(*bytes), {}};
}

}  // namespace clipwave
