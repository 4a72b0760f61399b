// Where the desktop keeps its applications and settings, and what the session says of itself. Internal to
// this room.
#pragma once

#include <string>
#include <vector>

namespace clipwave {

// "" where it is not set.
std::string environmentVariable(const char* name);

// Each list has the most important one first. The user's own folder is the first one.
std::vector<std::string> applicationFolders();
std::vector<std::string> configurationFolders();
// The desktops that the session says it is, in lower case.
std::vector<std::string> currentDesktops();

}  // namespace clipwave
