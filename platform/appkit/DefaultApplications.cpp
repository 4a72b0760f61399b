#include "platform/appkit/DefaultApplications.h"

#include <algorithm>

#include "platform/appkit/DesktopEnvironment.h"
#include "platform/foundation/ASCII.h"
#include "platform/foundation/FolderCreation.h"

namespace clipwave {
namespace {

constexpr std::string_view kDefaults = "Default Applications";
// A default counts only for an application that is associated with the type.
constexpr std::string_view kAdded = "Added Associations";
constexpr std::string_view kRemoved = "Removed Associations";

std::vector<std::string> listsIn(const std::string& folder) {
  std::vector<std::string> lists;
  for (const std::string& desktop : currentDesktops())
    lists.push_back(stringByAppendingPathComponent(folder, desktop + "-mimeapps.list"));
  lists.push_back(stringByAppendingPathComponent(folder, "mimeapps.list"));
  return lists;
}

// Walks through the lines of a list, and tells those that speak of a type in a group.
class Lines {
 public:
  Lines(std::string_view text, std::string_view group, std::string_view type)
      : rest_(text), header_("[" + std::string(group) + "]"), type_(type) {}

  bool next() {
    if (rest_.empty()) return false;
    line_ = rest_.substr(0, rest_.find('\n'));
    rest_.remove_prefix(std::min(rest_.size(), line_.size() + 1));
    isHeader_ = trimmed(line_).starts_with('[');
    if (isHeader_) isInGroup_ = trimmed(line_) == header_;
    return true;
  }
  std::string_view line() const { return line_; }
  bool isHeaderOfGroup() const { return isHeader_ && isInGroup_; }
  bool isOfType() const {
    const std::size_t equals = line_.find('=');
    return isInGroup_ && !isHeader_ && equals != line_.npos && trimmed(line_.substr(0, equals)) == type_;
  }
  std::vector<std::string> applications() const {
    std::vector<std::string> names;
    for (std::string_view value = line_.substr(line_.find('=') + 1); !value.empty();) {
      const std::string_view name = value.substr(0, value.find(';'));
      value.remove_prefix(std::min(value.size(), name.size() + 1));
      if (!trimmed(name).empty()) names.emplace_back(trimmed(name));
    }
    return names;
  }

 private:
  std::string_view rest_;
  std::string header_;
  std::string_view type_;
  std::string_view line_;
  bool isHeader_ = false;
  bool isInGroup_ = false;
};

// Of several lines the last one counts.
std::vector<std::string> applicationsIn(std::string_view text, std::string_view group,
                                        std::string_view type) {
  std::vector<std::string> names;
  for (Lines lines(text, group, type); lines.next();) {
    if (lines.isOfType()) names = lines.applications();
  }
  return names;
}

int countOfLines(std::string_view text, std::string_view group, std::string_view type) {
  int count = 0;
  for (Lines lines(text, group, type); lines.next();) count += lines.isOfType() ? 1 : 0;
  return count;
}

std::string lineOf(std::string_view type, const std::vector<std::string>& applications) {
  std::string line = std::string(type) + "=";
  for (const std::string& name : applications) line += name + ";";
  return line + "\n";
}

// The text without the application for that type in that group.
std::string without(std::string_view text, std::string_view group, std::string_view type,
                    std::string_view application) {
  std::string result;
  for (Lines lines(text, group, type); lines.next();) {
    if (lines.isOfType()) {
      auto names = lines.applications();
      if (std::erase(names, application) > 0) {
        if (!names.empty()) result += lineOf(type, names);
        continue;
      }
    }
    result.append(lines.line()).push_back('\n');
  }
  return result;
}

// The text with the application as the first one for that type in that group.
std::string with(std::string_view text, std::string_view group, std::string_view type,
                 std::string_view application) {
  const std::string others = without(text, group, type, application);
  int linesToCome = countOfLines(others, group, type);
  const bool hasLine = linesToCome > 0;
  const std::string own = lineOf(type, {std::string(application)});
  std::string result;
  bool isDone = false;
  for (Lines lines(others, group, type); lines.next();) {
    if (lines.isOfType() && --linesToCome == 0) {
      auto names = lines.applications();
      names.insert(names.begin(), std::string(application));
      result += lineOf(type, names);
      isDone = true;
      continue;
    }
    result.append(lines.line()).push_back('\n');
    if (hasLine || isDone || !lines.isHeaderOfGroup()) continue;
    result += own;
    isDone = true;
  }
  if (!isDone) result += (result.empty() ? "[" : "\n[") + std::string(group) + "]\n" + own;
  return result;
}

}  // namespace

std::string DefaultApplications::applicationForType(std::string_view type) const {
  std::vector<std::string> folders = configurationFolders();
  for (std::string& folder : applicationFolders()) folders.push_back(std::move(folder));
  for (const std::string& folder : folders) {
    for (const std::string& list : listsIn(folder)) {
      const auto text = contentsOf(list);
      if (!text) continue;
      for (const std::string& name : applicationsIn(*text, kDefaults, type))
        if (isInstalled(name)) return name;
    }
  }
  return {};
}

Result<void> DefaultApplications::choose(std::string_view application, std::string_view type) {
  if (!isInstalled(application))
    return cocoaError(kFileNoSuchFileError, std::string(application) + " is not installed.");
  const std::vector<std::string> lists = ownLists();
  // A list that speaks of the type already, for this desktop alone perhaps, goes before the others.
  std::string chosen = lists.back();
  for (const std::string& list : lists) {
    const auto text = contentsOf(list);
    if (!text) return text.error();
    if (applicationsIn(*text, kDefaults, type).empty()) continue;
    chosen = list;
    break;
  }
  // Associations stand in the list for every desktop alone. They come first: without a choice they choose
  // nothing.
  auto associated = change(lists.back(), [&](const std::string& text) {
    return with(without(text, kRemoved, type, application), kAdded, type, application);
  });
  if (!associated) return associated;
  return change(chosen, [&](const std::string& text) { return with(text, kDefaults, type, application); });
}

Result<void> DefaultApplications::forget(std::string_view application, std::string_view type) {
  for (const std::string& list : ownLists()) {
    auto changed = change(list, [&](const std::string& text) {
      return without(without(text, kDefaults, type, application), kAdded, type, application);
    });
    if (!changed) return changed;
  }
  return {};
}

bool DefaultApplications::isInstalled(std::string_view application) const {
  return std::ranges::any_of(applicationFolders(), [&](const std::string& folder) {
    if (files_.fileExistsAtPath(stringByAppendingPathComponent(folder, application))) return true;
    // An entry in a folder of its own, which stands before the hyphen.
    std::string path(application);
    const std::size_t hyphen = path.find('-');
    if (hyphen == std::string::npos) return false;
    path[hyphen] = '/';
    return files_.fileExistsAtPath(stringByAppendingPathComponent(folder, path));
  });
}

std::vector<std::string> DefaultApplications::ownLists() const {
  return listsIn(configurationFolders().front());
}

Result<std::string> DefaultApplications::contentsOf(const std::string& list) const {
  if (!files_.fileExistsAtPath(list)) return std::string();
  return files_.contentsAtPath(list);
}

Result<void> DefaultApplications::change(const std::string& list,
                                         const std::function<std::string(const std::string&)>& edit) {
  const auto before = contentsOf(list);
  if (!before) return before.error();
  const std::string after = edit(*before);
  if (after == *before) return {};
  const std::string folder = stringByDeletingLastPathComponent(list);
  if (auto made = createFolderWithParents(files_, folder, 0700); !made) return made;
  return files_.writeAtomically(after, list);
}

}  // namespace clipwave
