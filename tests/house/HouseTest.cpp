// The house's arrows run down only: which room may include what, held against every file of the tree.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace clipwave {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

// Every room with those that it may include besides itself.
const std::map<std::string, Names>& rooms() {
  static const Names kPlatform = {"platform/foundation", "platform/coredata", "platform/appkit",
                                  "platform/quicktime", "platform/dotmac"};
  static const auto kBelow = [](Names names) {
    names.insert(kPlatform.begin(), kPlatform.end());
    return names;
  };
  static const std::map<std::string, Names> kRooms = {
      {"platform/foundation", {}},
      {"platform/coredata", {"platform/foundation"}},
      {"platform/quicktime", {"platform/foundation"}},
      {"platform/dotmac", {"platform/foundation"}},
      {"platform/appkit", {"platform/foundation", "platform/coredata", "platform/quicktime"}},
      {"model", kBelow({})},
      {"transfer", kBelow({})},
      {"publish", kBelow({"model", "transfer"})},
      {"ui", kBelow({"model", "transfer"})},
      {"record", kBelow({"model", "transfer"})},
      {"app", kBelow({"model", "transfer", "publish", "ui", "record"})},
      {"ctl", kBelow({"model", "transfer", "publish", "ui", "record", "app"})},
      {"desktop", kBelow({"model", "transfer", "publish", "ui", "record", "app"})},
  };
  return kRooms;
}

// The beginnings of third-party headers, and the one room whose .cpp files may include them.
const std::map<std::string, std::string>& libraries() {
  static const std::map<std::string, std::string> kLibraries = {
      {"libxml/", "platform/foundation"}, {"curl/", "platform/foundation"},
      {"date/", "platform/foundation"},   {"nlohmann/", "platform/foundation"},
      {"pugixml", "platform/coredata"},   {"libav", "platform/quicktime"},
      {"libsw", "platform/quicktime"},    {"libsecret/", "platform/dotmac"},
      {"zlib.h", "platform/foundation"}};
  return kLibraries;
}

std::string roomOf(const std::string& path) {
  for (const auto& [room, below] : rooms()) {
    if (path.starts_with(room + "/")) return room;
  }
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
      if (other.empty()) {
        wrong.push_back(path + " includes " + header + ", which is in no room");
      } else if (other != room && !rooms().at(room).contains(other)) {
        wrong.push_back(path + " includes " + header + ": that arrow runs up");
      }
      continue;
    }
    if (std::regex_search(header, std::regex("^(Q[A-Z]|Qt)")) && room != "desktop") {
      wrong.push_back(path + " includes Qt's " + header);
    }
    for (const auto& [library, owner] : libraries()) {
      if (!header.starts_with(library)) continue;
      if (room != owner) wrong.push_back(path + " includes " + header + ", which belongs to " + owner);
      if (path.ends_with(".h")) wrong.push_back(path + " is a header and includes " + header);
    }
  }
  return wrong;
}

std::vector<fs::path> sourceFiles() {
  std::vector<fs::path> files;
  for (const auto& [room, below] : rooms()) {
    const fs::path folder = fs::path(CLIPWAVE_SOURCE_DIR) / room;
    if (!fs::is_directory(folder)) continue;
    for (const auto& entry : fs::directory_iterator(folder)) {
      const auto extension = entry.path().extension();
      if (extension == ".h" || extension == ".cpp") files.push_back(entry.path());
    }
  }
  return files;
}

std::string content(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(House, ArrowsRunDownOnlyAndLibrariesStayInTheirRoom) {
  const auto files = sourceFiles();
  ASSERT_GT(files.size(), 50U);
  for (const fs::path& file : files) {
    const std::string path = fs::relative(file, CLIPWAVE_SOURCE_DIR).generic_string();
    EXPECT_THAT(wrongIncludes(path, content(file)), ::testing::IsEmpty());
  }
}

TEST(House, AnArrowThatRunsUpIsFound) {
  EXPECT_THAT(wrongIncludes("model/Channel.cpp", "#include \"app/Controller.h\"\n"), ::testing::SizeIs(1));
  EXPECT_THAT(wrongIncludes("transfer/X.cpp", "#include \"model/Channel.h\"\n"), ::testing::SizeIs(1));
  EXPECT_THAT(wrongIncludes("publish/X.h", "#include \"ui/MainWindow.h\"\n"), ::testing::SizeIs(1));
  EXPECT_THAT(wrongIncludes("ui/X.cpp",
                            "#include "
                            "<QString>\n"),
              ::testing::SizeIs(1));
  EXPECT_THAT(wrongIncludes("publish/X.cpp", "#include <libxml/tree.h>\n"), ::testing::SizeIs(1));
  EXPECT_THAT(wrongIncludes("platform/foundation/X.h", "#include <libxml/tree.h>\n"), ::testing::SizeIs(1));
  EXPECT_THAT(wrongIncludes("app/X.cpp", "#include \"publish/PublishRun.h\"\n#include <vector>\n"),
              ::testing::IsEmpty());
}

TEST(House, NoFileIsLongerThanAReaderCanHold) {
  for (const fs::path& file : sourceFiles()) {
    const std::string text = content(file);
    EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 420) << file;
  }
}

TEST(House, EveryHeaderBeginsWithWhatItIs) {
  for (const fs::path& file : sourceFiles()) {
    if (file.extension() == ".h") {
      EXPECT_TRUE(content(file).starts_with("// ")) << file;
    }
  }
}

}  // namespace
}  // namespace clipwave
