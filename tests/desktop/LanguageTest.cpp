// Which language the program speaks.
#include "desktop/Language.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QLibraryInfo>

#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

TEST(Language, IsTheFirstOfTheUsersThatThereIsATranslationInto) {
  struct {
    QStringList languages;
    std::string cancel, one, several;
  } const kCases[] = {{{"C"}, "Cancel", "1 episode", "3 episodes"},
                      {{"en-GB", "de"}, "Cancel", "1 episode", "3 episodes"},
                      {{"xx-YY", "xx"}, "Cancel", "1 episode", "3 episodes"},
                      {{"xx", "de-AT", "en"}, "Abbrechen", "1 Episode", "3 Episoden"}};
  for (const auto& [languages, cancel, one, several] : kCases) {
    const Language language(languages);
    EXPECT_EQ(localized("Alerts", "Cancel"), cancel);
    for (const auto& [count, text] : {std::pair(1, one), std::pair(3, several)}) {
      EXPECT_EQ(localizedCount("Editing", "%n episodes", "%n episode", count), text);
      EXPECT_EQ(QCoreApplication::translate("clipwave::RecordTableModel", "%n episodes", nullptr, count),
                QString::fromStdString(text));
    }
    // The words of Qt's own dialogues follow, where they are installed.
    if (QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm")) {
      EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel").toStdString(), cancel);
    }
  }
  EXPECT_EQ(localized("Alerts", "Cancel"), "Cancel") << "it goes with its object";
}

}  // namespace
}  // namespace clipwave
