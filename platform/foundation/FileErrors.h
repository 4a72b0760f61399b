// Turns the system's error numbers into errors that a person understands. Internal to this room.
#pragma once

#include <string_view>

#include "platform/foundation/Error.h"

namespace clipwave {

enum class FileOperation { Read, Write, Make, Remove, Move };

// The error for `errorNumber` (an errno value) met while doing `operation` to the file or folder at `path`.
// The code tells reading from writing; the description names the path and the cause.
Error fileError(int errorNumber, FileOperation operation, std::string_view path);

}  // namespace clipwave
