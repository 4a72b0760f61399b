// One application as the desktop describes it: its name, and the command line that opens a file with it.
// Internal to this room.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace clipwave {

struct DesktopEntry {
  std::string path;  // of the entry's own file
  std::string name;
  std::string exec;  // as it stands in the file, its string escapes resolved
  std::string icon;

  // The main group of a ".desktop" file. Nothing for what starts no application, is hidden or needs a
  // terminal.
  static std::optional<DesktopEntry> parse(std::string_view text, std::string_view path);

  // Program and arguments for opening the file at an absolute path, field codes filled in; a command line
  // without a place for files gets the path at its end. Empty when the command line is malformed.
  std::vector<std::string> commandLineForFile(std::string_view file) const;
};

}  // namespace clipwave
