#include "desktop/CommandLine.h"

#include <QUrl>
#include <filesystem>

#include "desktop/Arrivals.h"
#include "desktop/Text.h"

namespace clipwave {

namespace {

constexpr int kNothingToOpen = 1;
constexpr int kNoSuchOption = 2;

// "" where there is no such file; a folder is none.
std::string absolutePathOf(const std::string& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  const bool isFile = std::filesystem::exists(status) && !std::filesystem::is_directory(status);
  return isFile ? std::filesystem::absolute(path, error).string() : std::string();
}

// What of Arrivals' the argument is; "" where it is nothing of the kind.
std::string itemOf(const std::string& argument) {
  if (const std::string path = absolutePathOf(argument); !path.empty()) return path;
  if (Arrivals::isFeedAddress(argument)) return argument;
  // As some file managers hand files over.
  const QUrl url(toQString(argument));
  return url.isLocalFile() ? absolutePathOf(toPath(url.toLocalFile())) : std::string();
}

}  // namespace

CommandLine commandLineOf(const std::vector<std::string>& arguments) {
  CommandLine line;
  bool mayBeOption = true;
  for (const std::string& argument : arguments) {
    if (mayBeOption && argument == "--") {
      mayBeOption = false;
    } else if (const std::string item = itemOf(argument); !item.empty()) {
      line.items.push_back(item);
    } else if (mayBeOption && argument.starts_with('-')) {
      line.complaints.push_back("There is no option " + argument + ". See man clipwave.");
      line.exitStatus = kNoSuchOption;
    } else {
      line.complaints.push_back("There is no file " + argument + ".");
    }
  }
  if (line.items.empty() && !line.complaints.empty() && !line.exitStatus) line.exitStatus = kNothingToOpen;
  return line;
}

}  // namespace clipwave
