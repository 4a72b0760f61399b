#include "platform/foundation/XMLEncoding.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/XMLBounds.h"

namespace clipwave {
namespace {

constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";

// The characters of 0x80 to 0x9F; the five positions that Windows-1252 leaves open are those of Latin-1.
constexpr char16_t kWindows1252[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                       0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

std::uint8_t byteAt(std::string_view text, std::size_t i) {
  return static_cast<std::uint8_t>(text[i]);
}

// Eight bytes of printable ASCII at once: no high bit, and none below a blank.
bool eightArePlain(const char* bytes) {
  std::uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  return ((word | (word - 0x2020202020202020)) & kHighBits) == 0;
}

// Whether a valid sequence stands for a character that XML allows.
bool sequenceFits(std::string_view sequence) {
  const std::uint8_t lead = byteAt(sequence, 0);
  if (sequence.size() == 1) return lead >= 0x20 || lead == '\t' || lead == '\n' || lead == '\r';
  // Only U+FFFE and U+FFFF are excluded of the rest: EF BF BE and EF BF BF.
  return lead != 0xEF || byteAt(sequence, 1) != 0xBF || byteAt(sequence, 2) < 0xBE;
}

std::string upperCased(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

// The label without quotes and blanks, in capitals; empty when it holds anything that no encoding's name
// does.
std::string cleanedLabel(std::string_view label) {
  label = trimmed(label, " \t\r\n\"'");
  const bool sound = std::all_of(label.begin(), label.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           std::string_view("-_.:").find(c) != std::string_view::npos;
  });
  return sound && label.size() <= 40 ? upperCased(label) : std::string();
}

std::string declaredEncoding(std::string_view data) {
  std::string_view head = data.substr(0, 4096);
  const std::size_t start = head.find("<?xml");
  if (start == std::string_view::npos) return {};
  head = head.substr(start, head.find('>', start) - start);
  std::size_t at = head.find("encoding");
  if (at == std::string_view::npos) return {};
  at = head.find_first_of("\"'", at);
  if (at == std::string_view::npos) return {};
  const std::size_t end = head.find(head[at], at + 1);
  return end == std::string_view::npos ? std::string() : cleanedLabel(head.substr(at + 1, end - at - 1));
}

// What text is really in that bears the label: many programs name an encoding's smaller sister.
std::string actualEncoding(const std::string& label) {
  constexpr std::pair<std::string_view, const char*> kActual[] = {
      {"GB2312", "GB18030"},       {"GBK", "GB18030"},       {"X-GBK", "GB18030"},     {"SHIFT_JIS", "CP932"},
      {"SHIFT-JIS", "CP932"},      {"X-SJIS", "CP932"},      {"WINDOWS-31J", "CP932"}, {"EUC-KR", "CP949"},
      {"KS_C_5601-1987", "CP949"}, {"ISO-8859-9", "CP1254"}, {"ISO-8859-11", "CP874"}, {"TIS-620", "CP874"},
      {"X-MAC-ROMAN", "MACINTOSH"}};
  for (const auto& [name, actual] : kActual) {
    if (name == label) return actual;
  }
  return label;
}

bool isUTF8Label(std::string_view label) {
  return label == "UTF-8" || label == "UTF8";
}

bool isLatin1Label(std::string_view label) {
  constexpr std::string_view kLabels[] = {"ISO-8859-1",   "ISO8859-1", "ISO_8859-1", "LATIN1", "LATIN-1",
                                          "WINDOWS-1252", "CP1252",    "US-ASCII",   "ASCII"};
  return std::find(std::begin(kLabels), std::end(kLabels), label) != std::end(kLabels);
}

bool hasWideUnits(std::string_view label) {
  return label.starts_with("UTF-16") || label.starts_with("UTF-32") || label.starts_with("UCS-") ||
         label.starts_with("UTF16") || label.starts_with("UTF32") || label.starts_with("ISO-10646-UCS");
}

std::size_t unitSize(std::string_view label) {
  if (!hasWideUnits(label)) return 1;
  const bool isTwoBytes =
      label.find("16") != std::string_view::npos || label.find("UCS-2") != std::string_view::npos;
  return isTwoBytes ? 2 : 4;
}

bool isValidUTF8(std::string_view data) {
  while (!data.empty()) {
    if (data.size() >= 8 && eightArePlain(data.data())) {
      data.remove_prefix(8);
      continue;
    }
    const std::size_t length = utf8SequenceLength(data);
    if (length == 0) return false;
    data.remove_prefix(length);
  }
  return true;
}

std::string fromWindows1252(std::string_view data) {
  std::string text;
  text.reserve(data.size() + data.size() / 8);
  for (std::size_t i = 0; i < data.size() && text.size() <= kMostXMLBytes; ++i) {
    appendUTF8(text, windows1252Character(byteAt(data, i)));
  }
  return text;
}

// Whether the bytes are the first ones of a character, but not all of them.
bool beginsSequence(std::string_view bytes) {
  const std::uint8_t lead = byteAt(bytes, 0);
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  return lead >= 0xC2 && lead <= 0xF4 && bytes.size() < length &&
         std::all_of(bytes.begin() + 1, bytes.end(), [](char c) { return (c & 0xC0) == 0x80; });
}

std::string fromDoubtfulUTF8(std::string_view data) {
  std::string text;
  text.reserve(data.size() + data.size() / 8);
  while (!data.empty() && text.size() <= kMostXMLBytes) {
    const std::size_t length = utf8SequenceLength(data);
    if (length > 0) {
      text.append(data.substr(0, length));
    } else if (beginsSequence(data)) {
      break;  // cut off within a character
    } else {
      appendUTF8(text, windows1252Character(byteAt(data, 0)));
    }
    data.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return text;
}

// Nothing when the system knows no such encoding or, unless lenient, when bytes do not fit it.
std::optional<std::string> converted(std::string_view data, const std::string& label, bool lenient) {
  const iconv_t converter = ::iconv_open("UTF-8", label.c_str());
  if (converter == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
  const std::size_t unit = unitSize(label);
  std::string text;
  text.reserve(std::min(data.size() * 2, kMostXMLBytes));  // most encodings' text takes no more
  char* in = const_cast<char*>(data.data());
  std::size_t inLeft = data.size();
  bool sound = true;
  while (inLeft > 0 && text.size() <= kMostXMLBytes) {
    char buffer[16384];
    char* out = buffer;
    std::size_t outLeft = sizeof buffer;
    const std::size_t answer = ::iconv(converter, &in, &inLeft, &out, &outLeft);
    const int why = errno;
    text.append(buffer, sizeof buffer - outLeft);
    if (answer != static_cast<std::size_t>(-1) || why == E2BIG) continue;
    sound = false;
    text.append(kReplacementCharacter);
    const std::size_t skipped = std::min(unit, inLeft);
    in += skipped;
    inLeft -= skipped;
  }
  ::iconv_close(converter);
  if (!sound && !lenient) return std::nullopt;
  return text;
}

// The encoding that the first bytes themselves show, and how many of them are a mark.
struct Mark {
  std::string label;
  std::size_t length = 0;
};

Mark markOf(std::string_view data) {
  using namespace std::string_view_literals;
  if (data.starts_with("\xEF\xBB\xBF"sv)) return {"UTF-8", 3};
  if (data.starts_with("\xFF\xFE\0\0"sv)) return {"UTF-32LE", 4};
  if (data.starts_with("\0\0\xFE\xFF"sv)) return {"UTF-32BE", 4};
  if (data.starts_with("\xFF\xFE"sv)) return {"UTF-16LE", 2};
  if (data.starts_with("\xFE\xFF"sv)) return {"UTF-16BE", 2};
  if (data.starts_with("<\0?\0"sv)) return {"UTF-16LE", 0};
  if (data.starts_with("\0<\0?"sv)) return {"UTF-16BE", 0};
  return {};
}

std::optional<std::string> decodedAs(std::string_view data, const std::string& label, bool lenient) {
  if (label.empty()) return std::nullopt;
  const bool reads8Bits = data.substr(0, 4).find('\0') == std::string_view::npos;
  if (hasWideUnits(label) && reads8Bits && !data.empty() && byteAt(data, 0) < 0x80) return std::nullopt;
  if (isLatin1Label(label)) {
    if (lenient && isValidUTF8(data)) return std::string(data);
    return fromWindows1252(data);
  }
  return converted(data, actualEncoding(label), lenient);
}

}  // namespace

std::size_t utf8SequenceLength(std::string_view text) {
  const std::uint8_t lead = byteAt(text, 0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(text, i) & 0xC0) != 0x80) return 0;
  }
  // Overlong forms, surrogates and what lies beyond U+10FFFF show in the second byte.
  const std::uint8_t second = byteAt(text, 1);
  const bool outside = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0) ||
                       (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90);
  return outside ? 0 : length;
}

std::size_t firstUnfitByte(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size()) {
    if (text.size() - at >= 8 && eightArePlain(text.data() + at)) {
      at += 8;
      continue;
    }
    const std::string_view rest = text.substr(at);
    const std::size_t length = utf8SequenceLength(rest);
    if (length == 0 || !sequenceFits(rest.substr(0, length))) return at;
    at += length;
  }
  return std::string_view::npos;
}

std::string textFitForXML(std::string_view text) {
  std::string fit;
  fit.reserve(text.size());
  for (;;) {
    const std::size_t at = firstUnfitByte(text);
    fit.append(text.substr(0, at));
    if (at == std::string_view::npos) return fit;
    text.remove_prefix(at);
    const std::size_t length = utf8SequenceLength(text);
    if (length == 0) fit.append(kReplacementCharacter);
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
}

bool isXMLCharacter(char32_t c) {
  if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
  return c < 0xD800 || (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

void appendUTF8(std::string& text, char32_t c) {
  const auto continuation = [&text](char32_t bits) { text += static_cast<char>(0x80 | (bits & 0x3F)); };
  if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < 0x800) {
    text += static_cast<char>(0xC0 | (c >> 6));
    continuation(c);
  } else if (c < 0x10000) {
    text += static_cast<char>(0xE0 | (c >> 12));
    continuation(c >> 6);
    continuation(c);
  } else {
    text += static_cast<char>(0xF0 | (c >> 18));
    continuation(c >> 12);
    continuation(c >> 6);
    continuation(c);
  }
}

char32_t windows1252Character(std::uint8_t byte) {
  return byte >= 0x80 && byte < 0xA0 ? static_cast<char32_t>(kWindows1252[byte - 0x80]) : byte;
}

std::optional<std::string> decodedXML(std::string_view data, std::string_view charset, bool lenient) {
  const Mark mark = markOf(data);
  data.remove_prefix(mark.length);
  std::optional<std::string> text;
  if (!mark.label.empty() && !isUTF8Label(mark.label)) return converted(data, mark.label, lenient);
  if (mark.label.empty()) {
    const std::string outside = cleanedLabel(charset);
    if (!isUTF8Label(outside)) {
      text = decodedAs(data, outside, lenient);
      const std::string declared = text ? std::string() : declaredEncoding(data);
      if (!text && !isUTF8Label(declared)) text = decodedAs(data, declared, lenient);
    }
  }
  if (text) return text;
  if (isValidUTF8(data)) return std::string(data.substr(0, kMostXMLBytes + 1));
  if (!lenient) return std::nullopt;
  return fromDoubtfulUTF8(data);
}

}  // namespace clipwave
