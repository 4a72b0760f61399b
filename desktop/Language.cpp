#include "desktop/Language.h"

#include <QCoreApplication>
#include <QLibraryInfo>

#include "desktop/Text.h"
#include "platform/foundation/Localization.h"

// Outside the namespace, as the macro wants it.
static void loadTranslations() {
  Q_INIT_RESOURCE(translations);
}

namespace clipwave {

namespace {

std::string translated(const char* context, const char* text, const char* comment, int count) {
  return toText(QCoreApplication::translate(context, text, comment, count));
}

}  // namespace

Language::Language(const QStringList& languages) {
  loadTranslations();
  const QString ours = QStringLiteral(":/translations");
  // Beneath every other: what the plural of an English text is.
  install(QStringLiteral("clipwave_en"), ours);
  for (QString language : languages) {
    language.replace(QLatin1Char('-'), QLatin1Char('_'));
    if (language == QLatin1String("C") || language.section(QLatin1Char('_'), 0, 0) == QLatin1String("en"))
      break;
    // A longer name falls back on the shorter one: "de_AT" on "de".
    if (!install(QStringLiteral("clipwave_") + language, ours)) continue;
    install(QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    break;
  }
  setTranslation(translated);
}

bool Language::install(const QString& file, const QString& folder) {
  auto translator = std::make_unique<QTranslator>();
  if (!translator->load(file, folder)) return false;
  QCoreApplication::installTranslator(translator.get());
  translators_.push_back(std::move(translator));
  return true;
}

}  // namespace clipwave
