// Whole folders at once: removing them, and copying them to another volume. Internal to this room.
#pragma once

#include <string>
#include <vector>

#include "platform/foundation/Error.h"

namespace clipwave {

// Names in the folder without "." and "..". Paths here are as systemPath() gives them.
Result<std::vector<std::string>> namesInFolder(const std::string& path);

// Removes a file, a link, or a folder with all that it holds; never follows a link, also when somebody puts
// one in the way meanwhile. Refuses the root folder.
Result<void> removeTree(const std::string& path);

// Copies a file, a link (as a link) or a folder with all that it holds to `to`, which must not exist, with
// permissions and modification dates, flushed to the disk. A failed copy may leave a part of itself at `to`.
// Anything else than these three is an error.
Result<void> copyTree(const std::string& from, const std::string& to);

// Moves by copying, for two paths on different volumes; as FileManager::movePath.
Result<void> moveAcrossVolumes(const std::string& from, const std::string& to);

// rename() that replaces nothing; answers 0 or the errno value.
int renameWithoutReplacing(const std::string& from, const std::string& to);

}  // namespace clipwave
