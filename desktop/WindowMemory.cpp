#include "desktop/WindowMemory.h"

#include <QMainWindow>
#include <QSplitter>

#include "desktop/Text.h"

namespace clipwave {

namespace {

constexpr const char* kGeometry = "windowGeometry";
constexpr const char* kDividers = "windowDividers";

}  // namespace

void WindowMemory::restore() {
  const auto bytes = [](const Value& value) {
    return QByteArray::fromBase64(QByteArray::fromStdString(std::string(value.stringValue())));
  };
  if (const Value geometry = defaults_.value(kGeometry); geometry.isString())
    window_.restoreGeometry(bytes(geometry));
  const Dictionary dividers = defaults_.value(kDividers).dictionaryValue();
  for (QSplitter* splitter : window_.findChildren<QSplitter*>()) {
    const auto kept = dividers.find(toText(splitter->objectName()));
    if (kept != dividers.end()) splitter->restoreState(bytes(kept->second));
  }
}

void WindowMemory::keep() {
  const auto text = [](const QByteArray& bytes) { return Value(bytes.toBase64().toStdString()); };
  Dictionary dividers;
  for (QSplitter* splitter : window_.findChildren<QSplitter*>())
    dividers[toText(splitter->objectName())] = text(splitter->saveState());
  // Settings that cannot be written are told of where the user sets them, not on the way out.
  static_cast<void>(defaults_.setValue(kGeometry, text(window_.saveGeometry())));
  static_cast<void>(defaults_.setValue(kDividers, dividers));
}

}  // namespace clipwave
