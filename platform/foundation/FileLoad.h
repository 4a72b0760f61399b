// Reading what a file URL names, without ever waiting for a pipe or device. Internal to this room.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/foundation/URLLoading.h"

namespace clipwave {

// The content of the regular file that a URL with the scheme "file" names. Fails, with an error of
// NSURLErrorDomain, for a larger one than `mostBytes`, a folder, a pipe or device, one that is missing or may
// not be read, and for a URL that names a file of another machine.
Result<LoadedData> contentsOfFileURL(std::string_view url, FileManager& files, std::int64_t mostBytes);

}  // namespace clipwave
