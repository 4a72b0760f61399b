// Makes a folder together with the folders above it that are missing.
#pragma once

#include <optional>
#include <string_view>

#include "platform/foundation/FileManager.h"

namespace clipwave {

// `mode`: permissions of every folder that is made, or the usual ones. YES when the last creation, if any,
// succeeded; a plain file in the way shows as the failed creation of the next deeper folder. An empty path
// answers YES.
bool createDirectoriesRecursivelyAtPath(FileManager& files, std::string_view path,
                                        std::optional<unsigned> mode = {});

}  // namespace clipwave
