#include "platform/foundation/Log.h"

#include <cstdio>

namespace clipwave {
namespace {

// File names and answers of servers end up in log lines; none of them may start a line of its own or command
// the terminal that shows it.
std::string withVisibleControls(std::string_view line) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string visible;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const auto byte = static_cast<unsigned char>(line[i]);
    // The control characters from U+0080 to U+009F are two bytes of UTF-8.
    const bool isLateControl =
        byte == 0xc2 && i + 1 < line.size() && static_cast<unsigned char>(line[i + 1]) < 0xa0;
    if (byte == '\n') {
      visible += "\\n";
    } else if (byte < 0x20 || byte == 0x7f || isLateControl) {
      const auto code = isLateControl ? static_cast<unsigned char>(line[++i]) : byte;
      visible += {'\\', 'x', kDigits[code >> 4], kDigits[code & 15]};
    } else {
      visible += line[i];
    }
  }
  return visible;
}

}  // namespace

void StandardErrorLog::write(std::string_view line) {
  // In one piece, so that the lines of two programs do not mingle.
  const std::string text = program_ + ": " + withVisibleControls(line) + "\n";
  std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace clipwave
