#include "platform/coredata/StoreText.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/CivilDate.h"
#include "platform/foundation/XMLEncoding.h"
#include "platform/foundation/XMLText.h"

namespace clipwave::storetext {
namespace {

void appendPadded(std::string& out, std::int64_t number, std::size_t width) {
  std::array<char, 20> digits;
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  const auto length = static_cast<std::size_t>(end - digits.data());
  if (length < width) out.append(width - length, '0');
  out.append(digits.data(), length);
}

// Takes exactly `width` digits and the character `after` off the front.
std::optional<std::int64_t> takeNumber(std::string_view& text, std::size_t width, char after) {
  if (text.size() <= width || text[width] != after) return std::nullopt;
  std::int64_t number = 0;
  for (const char c : text.substr(0, width)) {
    if (c < '0' || c > '9') return std::nullopt;
    number = number * 10 + (c - '0');
  }
  text.remove_prefix(width + 1);
  return number;
}

std::optional<Date> dateFrom(std::int64_t seconds, std::int64_t microseconds) {
  // From the second above for dates before 1970, so that the smallest date does not overflow on the way.
  if (seconds < 0) {
    ++seconds;
    microseconds -= 1'000'000;
  }
  std::int64_t total = 0;
  if (__builtin_mul_overflow(seconds, std::int64_t{1'000'000}, &total) ||
      __builtin_add_overflow(total, microseconds, &total))
    return std::nullopt;
  return Date{total};
}

// Whether a reference ("&amp;", "&#13;") stands at the start of `text`.
bool isReference(std::string_view text) {
  const std::size_t end = text.substr(0, 12).find(';');
  if (end == std::string_view::npos) return false;
  std::string_view name = text.substr(1, end - 1);
  if (!name.starts_with('#')) {
    constexpr std::string_view kNames[] = {"amp", "lt", "gt", "quot", "apos"};
    return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
  }
  const bool isHexadecimal = name.starts_with("#x");
  name.remove_prefix(isHexadecimal ? 2 : 1);
  std::uint32_t code = 0;
  const auto [last, error] =
      std::from_chars(name.data(), name.data() + name.size(), code, isHexadecimal ? 16 : 10);
  return error == std::errc() && last == name.data() + name.size() && isXMLCharacter(code);
}

// Where the CDATA section or the comment ends that the byte at `at` lies in; npos outside of one.
std::size_t endOfLiteralSection(std::string_view text, std::size_t at) {
  const std::size_t start = text.rfind("<!", at);
  if (start == text.npos) return text.npos;
  const bool isComment = text.substr(start).starts_with("<!--");
  if (!isComment && !text.substr(start).starts_with("<![CDATA[")) return text.npos;
  const std::size_t end = text.find(isComment ? "-->" : "]]>", start);
  return end != text.npos && end > at ? end : text.npos;
}

}  // namespace

bool appendText(std::string& out, std::string_view text) {
  if (firstUnfitByte(text) != text.npos) return false;
  appendEscapedXML(out, text, XMLPlace::Content);
  return true;
}

void appendAttribute(std::string& out, std::string_view name, std::string_view value) {
  out.append(" ").append(name).append("=\"");
  appendEscapedXML(out, textFitForXML(value), XMLPlace::Attribute);
  out += '"';
}

void appendDate(std::string& out, Date date) {
  const std::int64_t seconds = date.wholeSeconds();
  const std::int64_t microseconds = (date.microseconds % 1'000'000 + 1'000'000) % 1'000'000;
  const std::int64_t secondOfDay = (seconds % 86'400 + 86'400) % 86'400;
  const CivilDate civil = civilFromDays((seconds - secondOfDay) / 86'400);
  if (civil.year < 0) out += '-';
  if (civil.year > 9999) out += '+';
  appendPadded(out, civil.year < 0 ? -civil.year : civil.year, 4);
  out += '-';
  appendPadded(out, civil.month, 2);
  out += '-';
  appendPadded(out, civil.day, 2);
  out += 'T';
  appendPadded(out, secondOfDay / 3600, 2);
  out += ':';
  appendPadded(out, secondOfDay / 60 % 60, 2);
  out += ':';
  appendPadded(out, secondOfDay % 60, 2);
  if (microseconds != 0) {
    out += '.';
    appendPadded(out, microseconds, 6);
  }
  out += 'Z';
}

std::optional<Date> parseDate(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t yearDigits = text.find('-');
  if (yearDigits < 4 || yearDigits > 6) return std::nullopt;
  const auto year = takeNumber(text, yearDigits, '-');
  const auto month = takeNumber(text, 2, '-');
  const auto day = takeNumber(text, 2, 'T');
  const auto hour = takeNumber(text, 2, ':');
  const auto minute = takeNumber(text, 2, ':');
  const bool hasFraction = text.size() > 2 && text[2] == '.';
  const auto second = takeNumber(text, 2, hasFraction ? '.' : 'Z');
  const auto microsecond = hasFraction ? takeNumber(text, 6, 'Z') : 0;
  if (!year || !month || !day || !hour || !minute || !second || !microsecond || !text.empty())
    return std::nullopt;
  if (*hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
  const std::int64_t days =
      daysFromCivil({isNegative ? -*year : *year, static_cast<int>(*month), static_cast<int>(*day)});
  // What is no day of the calendar comes back as another one.
  if (*month > 12) return std::nullopt;
  const CivilDate civil = civilFromDays(days);
  if (civil.month != *month || civil.day != *day) return std::nullopt;
  return dateFrom(days * 86'400 + *hour * 3600 + *minute * 60 + *second, *microsecond);
}

void appendInteger(std::string& out, std::int64_t number) {
  std::array<char, 20> digits;
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<std::size_t> findIllFormed(std::string_view text) {
  for (std::size_t at = text.find('&'); at != text.npos; at = text.find('&', at + 1)) {
    if (isReference(text.substr(at))) continue;
    const std::size_t end = endOfLiteralSection(text, at);
    if (end == text.npos) return at;
    at = end;
  }
  if (const std::size_t unfit = firstUnfitByte(text); unfit != text.npos) return unfit;
  const std::size_t byteOrderMark = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  const std::size_t first = text.find_first_not_of(kBlanks, byteOrderMark);
  if (first == text.npos || text[first] != '<') return byteOrderMark;
  // The parser passes over text behind the last tag: what is left of an older, longer file, say.
  const std::size_t end = text.find('>', text.rfind('<'));
  if (end == text.npos) return text.size();
  const std::size_t after = text.find_first_not_of(kBlanks, end + 1);
  return after == text.npos ? std::nullopt : std::optional(after);
}

}  // namespace clipwave::storetext
