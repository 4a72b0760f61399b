// How days, durations and sizes read in a list: pure rules.
#pragma once

#include <QLocale>
#include <QString>
#include <cstdint>
#include <string_view>

#include "platform/foundation/Date.h"

namespace clipwave {

// The order of day, month and year in the locale, with the month's short name.
QString dayFormat(const QLocale& locale);
// The day in local time as the locale orders it, with the month's short name: "22 Nov 2026".
QString dayText(Date date, const QLocale& locale);
// "00:12:31" as "12:31", "01:02:03" as "1:02:03"; every other text as it is.
QString shortDurationText(std::string_view stored);
// "310 MB", "1.4 GB"; powers of 1024.
QString shortSizeText(std::int64_t bytes, const QLocale& locale);

}  // namespace clipwave
