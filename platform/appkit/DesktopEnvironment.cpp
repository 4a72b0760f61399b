#include "platform/appkit/DesktopEnvironment.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/FileManager.h"

namespace clipwave {
namespace {

std::vector<std::string> partsOf(const std::string& list) {
  std::vector<std::string> parts;
  for (std::size_t start = 0; start <= list.size();) {
    const std::size_t end = std::min(list.find(':', start), list.size());
    if (end > start) parts.push_back(list.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

// The user's own folder, then those of the system; what is no absolute path does not count.
std::vector<std::string> folders(const char* own, const char* ownInHome, const char* systems,
                                 const char* usual) {
  std::string home = environmentVariable(own);
  if (!home.starts_with('/')) home = environmentVariable("HOME") + ownInHome;
  std::string list = environmentVariable(systems);
  if (list.empty()) list = usual;
  std::vector<std::string> paths = partsOf(list);
  paths.insert(paths.begin(), home);
  std::erase_if(paths, [](const std::string& path) { return !path.starts_with('/'); });
  return paths;
}

}  // namespace

std::string environmentVariable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::vector<std::string> applicationFolders() {
  auto paths = folders("XDG_DATA_HOME", "/.local/share", "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
  for (std::string& path : paths) path = stringByAppendingPathComponent(path, "applications");
  return paths;
}

std::vector<std::string> configurationFolders() {
  return folders("XDG_CONFIG_HOME", "/.config", "XDG_CONFIG_DIRS", "/etc/xdg");
}

std::vector<std::string> currentDesktops() {
  return partsOf(lowerCased(environmentVariable("XDG_CURRENT_DESKTOP")));
}

}  // namespace clipwave
