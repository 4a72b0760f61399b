// The house's arrows run down only: which room may include what, held against every file of the tree.
#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using ::testing::IsEmpty;

namespace fs = std::filesystem;

// The rooms by their floors: a room may include itself and all that lie on lower floors.
const std::map<std::string, int> kFloors = {{"platform/foundation", 0},
                                            {"platform/coredata", 1},
                                            {"platform/quicktime", 1},
                                            {"platform/dotmac", 1},
                                            {"platform/appkit", 2},
                                            {"model", 3},
                                            {"transfer", 3},
                                            {"publish", 4},
                                            {"ui", 4},
                                            {"record", 4},
                                            {"app", 5},
                                            {"ctl", 6},
                                            {"desktop", 6}};

// The beginnings of third-party headers, and the one room whose .cpp files may include them.
const std::map<std::string, std::string> kLibraries = {
    {"libxml/", "platform/foundation"}, {"curl/", "platform/foundation"},
    {"date/", "platform/foundation"},   {"nlohmann/", "platform/foundation"},
    {"pugixml", "platform/coredata"},   {"libav", "platform/quicktime"},
    {"libsw", "platform/quicktime"},    {"libsecret/", "platform/dotmac"},
    {"zlib.h", "platform/foundation"},  {"Q", "desktop"}};

std::string roomOf(const std::string& path) {
  for (const auto& [room, floor] : kFloors)
    if (path.starts_with(room + "/")) return room;
  return {};
}

// What is wrong with the includes of a file, one sentence each.
std::vector<std::string> wrongIncludes(const std::string& path, const std::string& text) {
  static const std::regex kInclude(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])", std::regex::multiline);
  const std::string room = roomOf(path);
  std::vector<std::string> wrong;
  for (std::sregex_iterator match(text.begin(), text.end(), kInclude), end; match != end; ++match) {
    const std::string header = (*match)[2];
    if ((*match)[1] == "\"") {
      const std::string other = roomOf(header);
      const bool isAllowed = other == room || (!other.empty() && kFloors.at(other) < kFloors.at(room));
      if (!isAllowed) wrong.push_back(path + " includes " + header);
      continue;
    }
    for (const auto& [library, owner] : kLibraries)
      if (header.starts_with(library) && (room != owner || (path.ends_with(".h") && room != "desktop")))
        wrong.push_back(path + " includes " + header + ", which .cpp files of " + owner + " may");
  }
  return wrong;
}

TEST(House, ArrowsRunDownOnlyAndLibrariesStayInTheirRoom) {
  int files = 0;
  for (const auto& [room, floor] : kFloors) {
    const fs::path folder = fs::path(CLIPWAVE_SOURCE_DIR) / room;
    if (!fs::is_directory(folder)) continue;
    for (const auto& entry : fs::directory_iterator(folder)) {
      const std::string name = entry.path().filename();
      if (!name.ends_with(".h") && !name.ends_with(".cpp")) continue;
      EXPECT_THAT(wrongIncludes(room + "/" + name, testing::readFile(entry.path().string())), IsEmpty());
      ++files;
    }
  }
  EXPECT_GT(files, 50);
}

}  // namespace
}  // namespace clipwave
