#include "desktop/pictures/PseudoTranslator.h"

#include <QFile>
#include <QXmlStreamReader>

namespace clipwave {

namespace {

constexpr double kLonger = 0.4;

QString keyOf(const QString& context, const QString& text, const QString& comment) {
  return context + QChar(0) + text + QChar(0) + comment;
}

// Placeholders, the mark of a shortcut and its letter stay.
QString accented(const QString& text) {
  static const QString kPlain = QStringLiteral("aeiouAEIOUcnyCN");
  static const QString kAccented = QStringLiteral("áëîöûÀÉÏÔÜçñÿÇÑ");
  QString result;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar sign = text[i];
    const bool isKept = i > 0 && (text[i - 1] == QLatin1Char('%') || text[i - 1] == QLatin1Char('&'));
    const qsizetype place = kPlain.indexOf(sign);
    result += isKept || place < 0 ? sign : kAccented[place];
  }
  return result;
}

// So many more letters, in words of a usual length where the text is more than a word.
QString padding(qsizetype length, bool isSentence) {
  static const QString kWords = QStringLiteral(" loñgër wörds îñ spëëçh");
  QString result;
  while (result.size() < length) result += isSentence ? kWords : QStringLiteral("ömë");
  return result.left(length);
}

}  // namespace

PseudoTranslator::PseudoTranslator(const QString& file) {
  QFile source(file);
  if (file.isEmpty() || !source.open(QIODevice::ReadOnly)) return;
  QXmlStreamReader reader(&source);
  QString context, text, comment;
  while (!reader.atEnd()) {
    reader.readNext();
    if (reader.isStartElement()) {
      if (reader.name() == QLatin1String("name")) context = reader.readElementText();
      if (reader.name() == QLatin1String("message")) comment.clear();
      if (reader.name() == QLatin1String("source")) text = reader.readElementText();
      if (reader.name() == QLatin1String("comment")) comment = reader.readElementText();
    } else if (reader.isEndElement() && reader.name() == QLatin1String("message")) {
      known_.insert(keyOf(context, text, comment));
    }
  }
}

QString PseudoTranslator::translate(const char* context, const char* text, const char* comment,
                                    int /*count*/) const {
  const QString plain = QString::fromUtf8(text);
  if (!known_.contains(keyOf(QString::fromUtf8(context), plain, QString::fromUtf8(comment)))) return {};
  const auto more = static_cast<qsizetype>(kLonger * static_cast<double>(plain.size()));
  const bool isSentence = plain.contains(QLatin1Char(' '));
  // The last line grows with the others: nothing tells which of them is the widest.
  QStringList lines = plain.split(QLatin1Char('\n'));
  for (QString& line : lines)
    line = accented(line) + padding(more * line.size() / qMax<qsizetype>(1, plain.size()), isSentence);
  return QLatin1Char('[') + lines.join(QLatin1Char('\n')) + QLatin1Char(']');
}

}  // namespace clipwave
