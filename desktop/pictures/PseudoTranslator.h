// A language that nobody speaks: every text in brackets, with accents, and longer than English. What stays
// plain never went through the translations, and what is cut off would be cut off in a wordy language.
// tests/desktop uses it, too.
#pragma once

#include <QSet>
#include <QTranslator>

namespace clipwave {

class PseudoTranslator final : public QTranslator {
 public:
  // Knows the texts that the file of translations (a .ts) has, in their contexts, and no others.
  explicit PseudoTranslator(const QString& file);

  bool isEmpty() const override { return known_.isEmpty(); }
  QString translate(const char* context, const char* text, const char* comment, int count) const override;

 private:
  QSet<QString> known_;
};

}  // namespace clipwave
