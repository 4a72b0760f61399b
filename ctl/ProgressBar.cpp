#include "ctl/ProgressBar.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/foundation/XMLEncoding.h"

namespace clipwave {

namespace {

constexpr std::string_view kCompleted = " completed ";
constexpr std::string_view kEllipsis = "...";
constexpr std::size_t kPercentWidth = 5;  // with the blank before it
constexpr std::size_t kWidestBar = 30;    // without its brackets
constexpr std::size_t kNarrowestBar = 8;  // a shorter one tells nothing
constexpr std::size_t kUnknownColumns = 80;

struct Progress {
  std::string_view name;
  std::size_t percent;
};

std::optional<Progress> progressOf(std::string_view statusLine) {
  const std::size_t end = statusLine.rfind(kCompleted);
  if (end == statusLine.npos) return std::nullopt;
  const std::string_view digits = statusLine.substr(end + kCompleted.size());
  std::size_t percent = 0;
  const auto [last, error] = std::from_chars(digits.data(), digits.data() + digits.size(), percent);
  if (error != std::errc() || last != digits.data() + digits.size() || percent > 100) return std::nullopt;
  return Progress{statusLine.substr(0, end), percent};
}

// The controls of ASCII, and those that UTF-8 writes as C2 80 to C2 9F.
bool isControl(std::string_view character) {
  const auto byte = [&character](std::size_t i) { return static_cast<unsigned char>(character[i]); };
  return byte(0) < 0x20 || byte(0) == 0x7f || (byte(0) == 0xc2 && byte(1) < 0xa0);
}

// As much of the text as goes into `columns`.
std::string fitted(std::string_view text, std::size_t columns) {
  std::string shown;
  std::size_t used = 0;
  std::size_t cut = 0;  // how much of what is shown leaves room for the ellipsis
  const std::size_t room = columns - std::min(columns, kEllipsis.size());
  while (!text.empty()) {
    const std::size_t length = utf8SequenceLength(text);
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    text.remove_prefix(character.size());
    const bool isHarmless = length > 0 && !isControl(character);
    // None of the wide characters is written in fewer than three bytes.
    used += isHarmless && length >= 3 ? 2 : 1;
    if (used > columns) {
      shown.resize(cut);
      return shown.append(kEllipsis.substr(0, columns));
    }
    shown.append(isHarmless ? character : "?");
    if (used <= room) cut = shown.size();
  }
  return shown;
}

}  // namespace

std::string progressText(std::string_view statusLine, std::size_t columns) {
  const auto progress = progressOf(statusLine);
  if (!progress || columns <= kPercentWidth) return fitted(statusLine, columns);
  std::string percent = std::to_string(progress->percent) + "%";
  percent.insert(0, kPercentWidth - percent.size(), ' ');
  const std::size_t width = std::min(columns / 3, kWidestBar);
  std::string bar;
  if (width >= kNarrowestBar) {
    const std::size_t filled = width * progress->percent / 100;
    bar = " [" + std::string(filled, '#') + std::string(width - filled, '-') + "]";
  }
  return fitted(progress->name, columns - bar.size() - percent.size()) + bar + percent;
}

std::size_t terminalColumns() {
  winsize size{};
  if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUnknownColumns;
  return size.ws_col;
}

}  // namespace clipwave
