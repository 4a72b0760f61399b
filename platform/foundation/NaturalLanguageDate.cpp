#include "platform/foundation/NaturalLanguageDate.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/CivilDate.h"
#include "platform/foundation/DateTokens.h"

namespace clipwave {
namespace {

constexpr std::int64_t kSecondsPerDay = 86'400;
// No zone lies further from UTC; "3-2009" is a year behind a dash.
constexpr int kMostOffsetHours = 15;
constexpr std::array<std::string_view, 12> kMonths = {"january",   "february", "march",    "april",
                                                      "may",       "june",     "july",     "august",
                                                      "september", "october",  "november", "december"};

struct ZoneName {
  std::string_view name;
  int hours;
};
constexpr std::array<ZoneName, 30> kZones = {{
    {"ut", 0},    {"utc", 0},   {"gmt", 0},   {"z", 0},     {"est", -5},  {"edt", -4},
    {"cst", -6},  {"cdt", -5},  {"mst", -7},  {"mdt", -6},  {"pst", -8},  {"pdt", -7},
    {"wet", 0},   {"west", 1},  {"bst", 1},   {"cet", 1},   {"cest", 2},  {"eet", 2},
    {"eest", 3},  {"jst", 9},   {"aest", 10}, {"aedt", 11}, {"nzst", 12}, {"nzdt", 13},
    {"hst", -10}, {"akst", -9}, {"akdt", -8}, {"mez", 1},   {"mesz", 2},  {"msk", 3},
}};
constexpr std::array<std::string_view, 7> kWeekdays = {"monday", "tuesday",  "wednesday", "thursday",
                                                       "friday", "saturday", "sunday"};
// What may stand behind a clock in capitals and names no zone.
constexpr std::array<std::string_view, 6> kNoZones = {"AM", "PM", "ON", "HRS", "HOURS", "UHR"};

// Whether the word, in any case, is the name or its first letters, `least` of them or more.
bool abbreviates(std::string_view word, std::string_view name, std::size_t least) {
  return word.size() >= least && word.size() <= name.size() &&
         std::equal(word.begin(), word.end(), name.begin(),
                    [](char a, char b) { return lowerCased(a) == b; });
}
// Of at most nine digits.
int valueOf(std::string_view digits) {
  int value = 0;
  for (char c : digits) value = value * 10 + (c - '0');
  return value;
}

// The fraction's digits as microseconds; what is finer is cut off.
int microsecondsOf(std::string_view digits) {
  int value = 0;
  for (std::size_t i = 0; i < 6; ++i) value = value * 10 + (i < digits.size() ? digits[i] - '0' : 0);
  return value;
}

int yearOf(std::string_view digits) {
  const int year = valueOf(digits);
  if (digits.size() == 2) return year < 50 ? 2000 + year : 1900 + year;
  return digits.size() == 3 ? 1900 + year : year;
}

std::optional<int> monthNamed(std::string_view word) {
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    if (abbreviates(word, kMonths[i], 3)) return static_cast<int>(i) + 1;
  }
  return std::nullopt;
}

// Whether a word behind a clock looks like the name of a zone.
bool mayNameZone(std::string_view word) {
  const auto isWeekday = [word](std::string_view day) { return abbreviates(word, day, 3); };
  return word.size() <= 5 &&
         std::all_of(word.begin(), word.end(), [](char c) { return c >= 'A' && c <= 'Z'; }) &&
         word != "J" &&  // the one letter that is no military zone
         std::find(kNoZones.begin(), kNoZones.end(), word) == kNoZones.end() &&
         std::none_of(kWeekdays.begin(), kWeekdays.end(), isWeekday);
}

// The instant at which clocks in the zone show the time. Of one that comes twice it is the first; one that is
// left out is read as if the clocks had not been changed yet.
std::int64_t instantOfLocal(std::int64_t local, const TimeZone& zone) {
  const std::int64_t before = local - zone.secondsFromUTC(Date::fromSeconds(local - kSecondsPerDay));
  const std::int64_t after = local - zone.secondsFromUTC(Date::fromSeconds(local + kSecondsPerDay));
  const auto shows = [&](std::int64_t instant) {
    return instant + zone.secondsFromUTC(Date::fromSeconds(instant)) == local;
  };
  return shows(before) || !shows(after) ? before : after;
}

int daysInMonth(int year, int month) {
  return static_cast<int>(daysFromCivil({year, month + 1, 1}) - daysFromCivil({year, month, 1}));
}

// Takes the tokens one after the other for what they can be where they stand. A field is set by the first
// token that fits it; what fits nothing is passed over.
class Reader {
 public:
  explicit Reader(std::string_view text) : tokens_(dateTokensOf(text)) {}

  std::optional<Date> read(const TimeZone& zone) {
    std::size_t at = 0;
    while (at < tokens_.size()) at += std::max<std::size_t>(take(at), 1);
    if (!hasDate() || hasNegativeYear_ || !isInCalendar()) return std::nullopt;
    const std::int64_t local = daysFromCivil({*year_, *month_, *day_}) * kSecondsPerDay +
                               std::int64_t{hourOfDay() * 3'600 + minute_ * 60 + second_};
    const std::int64_t instant = offset_ ? local - *offset_ : instantOfLocal(local, zone);
    const Date date{Date::fromSeconds(instant).microseconds + microseconds_};
    // The zone may lead out of the years that can be written.
    return hasFourDigitYear(date) ? std::optional(date) : std::nullopt;
  }

 private:
  // Whether the token there stands right behind the one before, and is such a sign, letter or number.
  bool joins(std::size_t at, char sign) const {
    return at < tokens_.size() && tokens_[at].touchesPrevious && tokens_[at].text.size() == 1 &&
           lowerCased(tokens_[at].text[0]) == sign;
  }
  bool joins(std::size_t at, std::size_t leastDigits, std::size_t mostDigits) const {
    return at < tokens_.size() && tokens_[at].touchesPrevious &&
           tokens_[at].isNumber(leastDigits, mostDigits);
  }
  bool isWordAt(std::size_t at, std::string_view name) const {
    return at < tokens_.size() && tokens_[at].kind == DateToken::Kind::Word &&
           equalIgnoringCase(tokens_[at].text, name);
  }
  // "-0001": publishing tools write a date that was never set as one before our era. No sign is what joins
  // the year to the month, as in "3-Mar-2009".
  bool isNegative(std::size_t at) const {
    return at > 0 && joins(at, 2, 4) && tokens_[at - 1].isSign('-') && !tokens_[at - 1].touchesPrevious;
  }
  int value(std::size_t at) const { return valueOf(tokens_[at].text); }
  bool hasDate() const { return day_ && month_ && year_; }

  bool isInCalendar() const {
    const bool endsDay = hour_ == 24 && minute_ == 0 && second_ == 0 && microseconds_ == 0;
    return *month_ >= 1 && *month_ <= 12 && *day_ >= 1 && *day_ <= daysInMonth(*year_, *month_) &&
           (hour_.value_or(0) < 24 || endsDay) && minute_ < 60 && second_ <= 60;
  }

  int hourOfDay() const {
    const int hour = hour_.value_or(0);
    return isAfternoon_ && hour <= 12 ? hour % 12 + (*isAfternoon_ ? 12 : 0) : hour;
  }

  // Answers how many tokens it understood; 0 when it passes one over.
  std::size_t take(std::size_t at) {
    if (tokens_[at].kind == DateToken::Kind::Word) return takeWord(at);
    if (tokens_[at].kind == DateToken::Kind::Sign) return takeOffset(at);
    std::size_t taken = takeClock(at);
    if (taken == 0) taken = takeNumericDate(at);
    if (taken == 0) taken = takeCompact(at);
    if (taken == 0) takeNumber(at);
    return taken;
  }

  // "2009-03-03", "3/3/2009", "03.03.09".
  std::size_t takeNumericDate(std::size_t at) {
    const bool yearFirst = tokens_[at].isNumber(4, 4);
    if (!yearFirst && !tokens_[at].isNumber(1, 2)) return 0;
    if (at + 1 >= tokens_.size()) return 0;
    const char sign = tokens_[at + 1].text[0];
    if (sign != '-' && sign != '/' && sign != '.' && (sign != ':' || !yearFirst)) return 0;
    if (!joins(at + 1, sign) || !joins(at + 2, 1, 2) || !joins(at + 3, sign)) return 0;
    if (yearFirst ? !joins(at + 4, 1, 2) : !joins(at + 4, 2, 4)) return 0;
    if (day_ || month_ || year_) return 5;
    hasNegativeYear_ = yearFirst && isNegative(at);
    // Dots are written where the day comes first.
    const bool dayFirst = !yearFirst && (value(at) > 12 || (sign == '.' && value(at + 2) <= 12));
    const std::size_t first = yearFirst ? at + 2 : at;
    year_ = yearOf(tokens_[yearFirst ? at : at + 4].text);
    month_ = value(dayFirst ? first + 2 : first);
    day_ = value(dayFirst ? first : first + 2);
    return 5;
  }

  // "18:05", "6:05:09.5", the 6 of "6 PM"; behind a date also "18.05.09" and "18h05".
  std::size_t takeClock(std::size_t at) {
    if (!tokens_[at].isNumber(1, 2)) return 0;
    const char sign = clockSign(at);
    if (sign == 0) return meridiemLength(at + 1) > 0 ? setClock(at, at + 1, value(at), 0, 0) : 0;
    if (!joins(at + 3, sign == 'h' ? 'm' : sign) || !joins(at + 4, 1, 2)) {
      return setClock(at, at + 3, value(at), value(at + 2), 0);
    }
    return setClock(at, at + 5, value(at), value(at + 2), value(at + 4));
  }

  // What parts the hours there from the minutes behind them; 0 when they are no clock.
  char clockSign(std::size_t at) const {
    if (joins(at + 1, ':') && joins(at + 2, 1, 2)) return ':';
    const bool mayBeClock =
        hasDate() && !hour_ && joins(at + 2, 2, 2) && value(at) < 24 && value(at + 2) < 60;
    if (!mayBeClock) return 0;
    const bool isDate = joins(at + 3, '.') && joins(at + 4, 3, std::string::npos);
    if (joins(at + 1, '.') && !isDate) return '.';
    return joins(at + 1, 'h') ? 'h' : '\0';
  }

  // "20090303", "20090303180509", and "180509", "1805" or "18" behind a "T" or a date.
  std::size_t takeCompact(std::size_t at) {
    const std::string_view digits = tokens_[at].text;
    const auto part = [digits](std::size_t from) {
      return from < digits.size() ? valueOf(digits.substr(from, 2)) : 0;
    };
    const bool isEven = digits.size() % 2 == 0;
    const bool behindT = at > 0 && tokens_[at].touchesPrevious && isWordAt(at - 1, "t");
    if (isEven && digits.size() <= 6 && (behindT || (hasDate() && !hour_ && digits.size() == 6))) {
      return setClock(at, at + 1, part(0), part(2), part(4));
    }
    if (digits.size() != 8 && digits.size() != 12 && digits.size() != 14) return 0;
    const bool isAlone = std::count_if(tokens_.begin(), tokens_.end(), [](const DateToken& token) {
                           return token.kind != DateToken::Kind::Sign;
                         }) == 1;
    if (isAlone || day_ || month_ || year_) return 0;
    year_ = valueOf(digits.substr(0, 4));
    month_ = part(4);
    day_ = part(6);
    return digits.size() > 8 ? setClock(at, at + 1, part(8), part(10), part(12)) : 1;
  }

  // The time of day in the tokens from `at` to `end`; a fraction of a second and the half of the day may
  // follow.
  std::size_t setClock(std::size_t at, std::size_t end, int hour, int minute, int second) {
    const bool hasFraction = (joins(end, '.') || joins(end, ',')) && joins(end + 1, 1, std::string::npos);
    const std::size_t behind = hasFraction ? end + 2 : end;
    const std::size_t meridiem = meridiemLength(behind);
    if (!hour_) {
      hour_ = hour;
      minute_ = minute;
      second_ = second;
      if (hasFraction) microseconds_ = microsecondsOf(tokens_[end + 1].text);
      if (meridiem > 0) isAfternoon_ = lowerCased(tokens_[behind].text[0]) == 'p';
      clockEnd_ = behind + meridiem;
    }
    return behind + meridiem - at;
  }

  // How many tokens "AM" or "p.m." are there; 0 for anything else.
  std::size_t meridiemLength(std::size_t at) const {
    if (isWordAt(at, "am") || isWordAt(at, "pm")) return 1;
    const bool isSpelt = (isWordAt(at, "a") || isWordAt(at, "p")) && joins(at + 1, '.');
    return isSpelt && isWordAt(at + 2, "m") && tokens_[at + 2].touchesPrevious ? 3 : 0;
  }

  void takeNumber(std::size_t at) {
    const DateToken& number = tokens_[at];
    if (number.isNumber(1, 2) && !day_) {
      day_ = value(at);
    } else if (number.isNumber(2, 4) && !year_) {
      year_ = yearOf(number.text);
      hasNegativeYear_ = isNegative(at);
    }
  }

  // Left alone are weekdays, which the date decides, and words like "of" and "at".
  std::size_t takeWord(std::size_t at) {
    const std::string_view word = tokens_[at].text;
    if (const std::optional<int> month = monthNamed(word)) {
      if (!month_) month_ = month;
      return 1;
    }
    const auto* zone = std::find_if(kZones.begin(), kZones.end(), [word](const ZoneName& known) {
      return equalIgnoringCase(word, known.name);
    });
    if (zone != kZones.end()) {
      if (!offset_) offset_ = zone->hours * 3'600;
    } else if (at == clockEnd_ && mayNameZone(word)) {
      // As RFC 2822 has it: a date is not to depend on where it is read. Nor do the military letters say
      // more, which were once defined with the wrong sign.
      if (!offset_) offset_ = 0;
    }
    return 1;
  }

  // "+0200", "-08:00", "+2".
  std::size_t takeOffset(std::size_t at) {
    if ((!tokens_[at].isSign('-') && !tokens_[at].isSign('+')) || !joins(at + 1, 1, 4)) return 0;
    // "3-Mar-09"
    if (at > 0 && tokens_[at].touchesPrevious && monthNamed(tokens_[at - 1].text)) return 0;
    const std::string_view digits = tokens_[at + 1].text;
    const bool hasColon = digits.size() <= 2 && joins(at + 2, ':') && joins(at + 3, 2, 2);
    // Behind a date alone much else may begin with a sign.
    const bool isBehindDate =
        hasDate() && (hasColon ? tokens_[at].touchesPrevious : digits.size() == 4 && !joins(at + 2, ':'));
    if (!hour_ && !isBehindDate) return 0;
    const std::size_t hourDigits = digits.size() <= 2 ? digits.size() : digits.size() - 2;
    const int hours = valueOf(digits.substr(0, hourDigits));
    const int minutes = hasColon ? value(at + 3) : valueOf(digits.substr(hourDigits));
    const bool isInRange = hours <= kMostOffsetHours && minutes < 60;
    // Four digits behind the clock are an offset all the same, of which nothing is known.
    if (!isInRange && (at != clockEnd_ || digits.size() != 4)) return 0;
    const int seconds = isInRange ? hours * 3'600 + minutes * 60 : 0;
    // A name before it is what it counts from: "GMT+0200".
    if (!hasNumericOffset_) offset_ = tokens_[at].isSign('-') ? -seconds : seconds;
    hasNumericOffset_ = true;
    return hasColon ? 4 : 2;
  }

  std::vector<DateToken> tokens_;
  std::optional<int> year_, month_, day_, hour_;
  bool hasNegativeYear_ = false;
  int minute_ = 0, second_ = 0, microseconds_ = 0;
  std::optional<bool> isAfternoon_;
  std::optional<int> offset_;  // of the local time from UTC, in seconds
  bool hasNumericOffset_ = false;
  std::optional<std::size_t> clockEnd_;
};

}  // namespace

std::optional<Date> dateWithNaturalLanguageString(std::string_view text, const TimeZone& zone) {
  return Reader(text).read(zone);
}

}  // namespace clipwave
