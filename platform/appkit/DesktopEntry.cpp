#include "platform/appkit/DesktopEntry.h"

#include <algorithm>
#include <cstddef>
#include <map>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/URLEscapes.h"

namespace clipwave {
namespace {

std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      result += text[i];
      continue;
    }
    switch (text[++i]) {
      case 's':
        result += ' ';
        break;
      case 'n':
        result += '\n';
        break;
      case 't':
        result += '\t';
        break;
      case 'r':
        result += '\r';
        break;
      case '\\':
        result += '\\';
        break;
      default:  // for the command line's own quoting
        result += '\\';
        result += text[i];
    }
  }
  return result;
}

// The command line's words, their quotes resolved; nothing for a quote that does not end.
std::optional<std::vector<std::string>> wordsOf(std::string_view exec) {
  std::vector<std::string> words;
  bool inWord = false;
  bool quoted = false;
  for (std::size_t i = 0; i < exec.size(); ++i) {
    const char c = exec[i];
    if (!quoted && (c == ' ' || c == '\t')) {
      inWord = false;
      continue;
    }
    if (!inWord) words.emplace_back();
    inWord = true;
    if (c == '"') {
      quoted = !quoted;
    } else if (quoted && c == '\\' && i + 1 < exec.size()) {
      words.back() += exec[++i];
    } else {
      words.back() += c;
    }
  }
  if (quoted) return std::nullopt;
  return words;
}

}  // namespace

std::optional<DesktopEntry> DesktopEntry::parse(std::string_view text, std::string_view path) {
  std::map<std::string, std::string, std::less<>> values;
  bool inMainGroup = false;
  while (!text.empty()) {
    const std::string_view line = trimmed(text.substr(0, text.find('\n')));
    text.remove_prefix(
        std::min(text.size(), text.find('\n') == text.npos ? text.size() : text.find('\n') + 1));
    if (line.empty() || line.front() == '#') continue;
    if (line.front() == '[') {
      inMainGroup = line == "[Desktop Entry]";
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!inMainGroup || equals == std::string_view::npos) continue;
    values.try_emplace(std::string(trimmed(line.substr(0, equals))),
                       unescaped(trimmed(line.substr(equals + 1))));
  }
  if (values["Type"] != "Application" || values["Hidden"] == "true" || values["Terminal"] == "true")
    return {};
  if (values["Name"].empty() || values["Exec"].empty()) return {};
  return DesktopEntry{std::string(path), values["Name"], values["Exec"], values["Icon"]};
}

std::vector<std::string> DesktopEntry::commandLineForFile(std::string_view file) const {
  const auto words = wordsOf(exec);
  if (!words || words->empty()) return {};
  std::vector<std::string> arguments;
  bool takesFiles = false;
  for (const std::string& word : *words) {
    if (word == "%i") {
      if (!icon.empty()) arguments.insert(arguments.end(), {"--icon", icon});
      continue;
    }
    std::string argument;
    for (std::size_t i = 0; i < word.size(); ++i) {
      if (word[i] != '%' || i + 1 == word.size()) {
        argument += word[i];
        continue;
      }
      const char code = word[++i];
      if (code == 'f' || code == 'F') {
        argument += file;
      } else if (code == 'u' || code == 'U') {
        argument += "file://" + stringByAddingPercentEscapes(file, "", "?;");
      } else if (code == 'c') {
        argument += name;
      } else if (code == 'k') {
        argument += path;
      } else if (code == '%') {
        argument += '%';
      }
      takesFiles = takesFiles || code == 'f' || code == 'F' || code == 'u' || code == 'U';
    }
    // A code that stands for nothing (any more) is no argument.
    const bool isLoneCode = word.size() == 2 && word[0] == '%';
    if (!argument.empty() || !isLoneCode) arguments.push_back(std::move(argument));
  }
  if (!takesFiles) arguments.emplace_back(file);
  return arguments;
}

}  // namespace clipwave
