// Texts and paths between the program, which speaks UTF-8 and knows paths as bytes, and Qt.
#pragma once

#include <QFile>
#include <QObject>
#include <QString>
#include <QVariant>
#include <string>
#include <string_view>

namespace clipwave {

inline QString toQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string toText(const QString& text) {
  return text.toStdString();
}

inline QString pathToQString(std::string_view path) {
  return QFile::decodeName(QByteArray(path.data(), static_cast<qsizetype>(path.size())));
}
inline std::string toPath(const QString& path) {
  return QFile::encodeName(path).toStdString();
}

// A title as a button or a menu entry shows it: an "&" in it marks no shortcut.
inline QString withoutShortcut(QString title) {
  return title.replace(QLatin1Char('&'), QLatin1String("&&"));
}

// A dynamic property of an interface file; "" where it has none of that name.
inline QString propertyText(const QObject& object, const char* name) {
  return object.property(name).toString();
}

}  // namespace clipwave
