// The language of the interface: the translations of the program's texts and of Qt's own, chosen by what the
// user set for the desktop.
#pragma once

#include <QStringList>
#include <QTranslator>
#include <memory>
#include <vector>

namespace clipwave {

// Holds for the rest of the program while it lives. Made right behind the QApplication, before the first text
// is asked for and before any thread is started.
class Language {
 public:
  // The first of `languages` ("de-AT", "de") that there is a translation into, or English, which the texts
  // are written in.
  explicit Language(const QStringList& languages);
  Language(const Language&) = delete;
  Language& operator=(const Language&) = delete;

 private:
  bool install(const QString& file, const QString& folder);

  std::vector<std::unique_ptr<QTranslator>> translators_;
};

}  // namespace clipwave
