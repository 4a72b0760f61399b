// A paragraph of plain text in a dialogue, as wide as reads well, wrapped wherever it must be, and no taller
// than the screen allows.
#pragma once

#include <QTextEdit>

namespace clipwave {

// Of a fixed size, which follows from the text. The text is never read as markup; it can be selected and
// copied. What would not fit the screen is reached by scrolling.
class PlainTextView final : public QTextEdit {
  Q_OBJECT

 public:
  PlainTextView(const QString& text, bool isBold, QWidget* parent);
};

}  // namespace clipwave
