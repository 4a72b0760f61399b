// Texts between the program, which speaks UTF-8, and Qt.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace clipwave {

inline QString toQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string toText(const QString& text) {
  return text.toStdString();
}

}  // namespace clipwave
