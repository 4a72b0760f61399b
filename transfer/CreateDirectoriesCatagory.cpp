#include "transfer/CreateDirectoriesCatagory.h"

#include <string>

namespace clipwave {

bool createDirectoriesRecursivelyAtPath(FileManager& files, std::string_view path,
                                        std::optional<unsigned> mode) {
  std::string runningPath;
  for (const std::string& component : pathComponents(path)) {
    runningPath = runningPath.empty() ? component : stringByAppendingPathComponent(runningPath, component);
    if (files.fileExistsAtPath(runningPath)) continue;
    if (!files.createDirectoryAtPath(runningPath, mode)) return false;
  }
  return true;
}

}  // namespace clipwave
