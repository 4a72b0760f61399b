// The house's arrows run down only: which room may include what, held against every file of the tree.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace fs = std::filesystem;
using Names = std::set<std::string>;

// Every room with the beginnings of those that it may include besides itself.
const std::map<std::string, Names> kRooms = {
    {"platform/foundation", {}},
    {"platform/coredata", {"platform/foundation"}},
    {"platform/quicktime", {"platform/foundation"}},
    {"platform/dotmac", {"platform/foundation"}},
    {"platform/appkit", {"platform/foundation", "platform/coredata", "platform/quicktime"}},
    {"model", {"platform"}},
    {"transfer", {"platform"}},
    {"publish", {"platform", "model", "transfer"}},
    {"ui", {"platform", "model", "transfer"}},
    {"record", {"platform", "model", "transfer"}},
    {"app", {"platform", "model", "transfer", "publish", "ui", "record"}},
    {"ctl", {"platform", "model", "transfer", "publish", "ui", "record", "app"}},
    {"desktop", {"platform", "model", "transfer", "publish", "ui", "record", "app"}},
};

// The beginnings of third-party headers, and the one room whose .cpp files may include them.
const std::map<std::string, std::string> kLibraries = {{"libxml/", "platform/foundation"},
                                                       {"curl/", "platform/foundation"},
                                                       {"date/", "platform/foundation"},
                                                       {"nlohmann/", "platform/foundation"},
                                                       {"pugixml", "platform/coredata"},
                                                       {"libav", "platform/quicktime"},
                                                       {"libsw", "platform/quicktime"},
                                                       {"libsecret/", "platform/dotmac"},
                                                       {"SDL", "platform/quicktime"},
                                                       {"zlib.h", "platform/foundation"},
                                                       {"Q", "desktop"}};

std::string roomOf(const std::string& path) {
  for (const auto& [room, below] : kRooms)
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
      // What uic makes of the interface files.
      if (room == "desktop" && header.starts_with("ui_") && path.ends_with(".cpp")) continue;
      const std::string other = roomOf(header);
      const bool isBelow = std::ranges::any_of(
          kRooms.at(room), [&](const std::string& below) { return header.starts_with(below + "/"); });
      if (other.empty() || (other != room && !isBelow)) wrong.push_back(path + " includes " + header);
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
  for (const auto& [room, below] : kRooms) {
    const fs::path folder = fs::path(CLIPWAVE_SOURCE_DIR) / room;
    if (!fs::is_directory(folder)) continue;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      const std::string name = fs::relative(entry.path(), folder);
      if (!name.ends_with(".h") && !name.ends_with(".cpp")) continue;
      if (name.starts_with("bench/")) continue;  // measures, and may use what measures elsewhere
      EXPECT_THAT(wrongIncludes(room + "/" + name, testing::readFile(entry.path().string())), IsEmpty());
      ++files;
    }
  }
  EXPECT_GT(files, 50);
}

TEST(House, AnArrowThatRunsUpIsFound) {
  const std::pair<const char*, const char*> kWrong[] = {{"model/Channel.cpp", "\"app/Controller.h\""},
                                                        {"transfer/X.cpp", "\"model/Channel.h\""},
                                                        {"ui/X.cpp", "<QString>"},
                                                        {"publish/X.cpp", "<libxml/tree.h>"},
                                                        {"platform/foundation/X.h", "<libxml/tree.h>"}};
  for (const auto& [path, header] : kWrong)
    EXPECT_THAT(wrongIncludes(path, std::string("#include ") + header + "\n"), SizeIs(1)) << path;
}

// Outside the rooms' own folders, too.
TEST(House, OnlyTheDesktopAndItsTestsKnowQt) {
  int files = 0;
  for (const char* folder : {"bench", "fuzz", "tests"}) {
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(CLIPWAVE_SOURCE_DIR) / folder)) {
      const std::string path = entry.path().string();
      if (!entry.is_regular_file() || path.find("/tests/desktop/") != std::string::npos) continue;
      EXPECT_EQ(testing::readFile(path).find("\n#include <Q"), std::string::npos) << path;
      ++files;
    }
  }
  EXPECT_GT(files, 50);
}

// What the pattern's group caught, of every match.
Names found(const std::string& text, const char* pattern) {
  const std::regex expression(pattern);
  Names names;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
    names.insert((*match)[1]);
  return names;
}

TEST(House, TheDesktopEntryNamesEveryMovieTypeThatTheProgramTakes) {
  const std::string root = CLIPWAVE_SOURCE_DIR;
  const std::string entry = testing::readFile(root + "/packaging/clipwave.desktop");
  const std::string types = entry.substr(entry.find("MimeType=") + 9);
  Names taken = found(testing::readFile(root + "/resources/Info.plist.in"),
                      "<key>CFBundleTypeMIMETypes</key>\\s*<string>([^<]+)</string>");
  EXPECT_GT(taken.size(), 10U);
  taken.insert("video/dv");  // feeds say video/x-dv, the desktop's database of types does not
  EXPECT_EQ(found(types, "([^;\\s]+);"), taken);
}

// The files of a folder of the tree, one behind the other.
std::string textOf(const std::string& folder, const std::string& ending) {
  std::string text;
  for (const auto& entry : fs::directory_iterator(fs::path(CLIPWAVE_SOURCE_DIR) / folder))
    if (entry.path().string().ends_with(ending)) text += testing::readFile(entry.path().string());
  return text;
}

TEST(House, TheInstructionsShowEveryPictureAndNameWhatTheWindowsSay) {
  std::string instructions = textOf("docs/instructions", ".html");
  Names pictures;
  const fs::path folder = fs::path(CLIPWAVE_SOURCE_DIR) / "docs/pictures/instructions";
  for (const auto& entry : fs::directory_iterator(folder)) pictures.insert(entry.path().filename());
  EXPECT_EQ(found(instructions, "src=\"../pictures/instructions/([^\"]+)\""), pictures);

  std::string said = textOf("resources", ".ui");
  for (const char* room : {"desktop", "app", "publish", "record", "transfer", "ui", "platform/quicktime"})
    said += textOf(room, ".cpp");
  said = std::regex_replace(said, std::regex("&amp;|&"), "");
  // The names of the interface are set in bold; a road through menus has an arrow between them.
  instructions = std::regex_replace(instructions, std::regex("(&nbsp;|\\s)+"), " ");
  instructions = std::regex_replace(instructions, std::regex(" › "), "</b><b>");
  const Names names = found(instructions, "<b>([^<]+)</b>");
  EXPECT_GT(names.size(), 100U);
  for (const std::string& name : names)
    EXPECT_TRUE(said.find(">" + name + "<") != said.npos || said.find("\"" + name + "\"") != said.npos)
        << name;
}

}  // namespace
}  // namespace clipwave
