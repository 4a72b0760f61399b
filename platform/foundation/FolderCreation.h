// Makes a folder together with the parents that it lacks.
#pragma once

#include <string_view>

#include "platform/foundation/Error.h"
#include "platform/foundation/FileManager.h"

namespace clipwave {

// Success when `path` is a folder in the end. Every folder that had to be made gets `mode`.
Result<void> createFolderWithParents(FileManager& files, std::string_view path, unsigned mode);

}  // namespace clipwave
