// What the program was started with: what is to be opened, and what of it makes no sense.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace clipwave {

struct CommandLine {
  std::vector<std::string> items;       // for Arrivals: absolute paths of files, and addresses of feeds
  std::vector<std::string> complaints;  // for standard error: a sentence about each of the rest
  std::optional<int> exitStatus;        // where the process ends with it, and opens nothing
};

// `arguments` are those that the toolkit left. Files are given by their paths, relative ones from the current
// folder, or by file URLs; they are looked for on the disk. What begins with "-" is an option, and there is
// none, unless it names a file or stands behind a "--". An argument that is an option ends the process with
// 2; one that names no file is left out, and where nothing else is left, ends it with 1.
CommandLine commandLineOf(const std::vector<std::string>& arguments);

}  // namespace clipwave
