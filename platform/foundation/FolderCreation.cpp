#include "platform/foundation/FolderCreation.h"

namespace clipwave {

Result<void> createFolderWithParents(FileManager& files, std::string_view path, unsigned mode) {
  bool isDirectory = false;
  if (files.fileExistsAtPath(path, &isDirectory) && isDirectory) return {};
  const std::string parent = stringByDeletingLastPathComponent(path);
  if (parent != path && !parent.empty()) {
    auto made = createFolderWithParents(files, parent, mode);
    if (!made) return made;
  }
  auto made = files.createDirectoryAtPath(path, mode);
  // Another process may have been quicker.
  if (!made && files.fileExistsAtPath(path, &isDirectory) && isDirectory) return {};
  return made;
}

}  // namespace clipwave
