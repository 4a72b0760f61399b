#include "desktop/ListText.h"

#include <QDateTime>

#include "desktop/Text.h"

namespace clipwave {

QString dayFormat(const QLocale& locale) {
  // The locale's short form has no month's name, the long one is too long for a list.
  QString format = locale.dateFormat(QLocale::LongFormat);
  format.replace("MMMM", "MMM").remove("dddd");
  while (!format.isEmpty() && (format.front().isSpace() || format.front() == ',')) format.remove(0, 1);
  while (!format.isEmpty() && (format.back().isSpace() || format.back() == ',')) format.chop(1);
  return format;
}

QString dayText(Date date, const QLocale& locale) {
  return locale.toString(QDateTime::fromSecsSinceEpoch(date.wholeSeconds()).date(), dayFormat(locale));
}

QString shortDurationText(std::string_view stored) {
  const bool hasHours = stored.size() == 8 && stored[2] == ':' && stored[5] == ':';
  if (hasHours && stored.starts_with("00:")) stored.remove_prefix(3);
  if (hasHours && stored.starts_with("0") && stored.size() == 8) stored.remove_prefix(1);
  return toQString(stored);
}

QString shortSizeText(std::int64_t bytes, const QLocale& locale) {
  // One place where it tells something: 1.4 GB, but 310 MB.
  std::int64_t inUnit = bytes;
  while (inUnit >= 1024) inUnit /= 1024;
  const int places = bytes >= 1024 && inUnit < 10 ? 1 : 0;
  return locale.formattedDataSize(bytes, places, QLocale::DataSizeTraditionalFormat);
}

}  // namespace clipwave
