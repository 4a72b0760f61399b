#include "desktop/FieldMirror.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTextDocument>
#include <algorithm>
#include <utility>

#include "desktop/Text.h"

namespace clipwave {
namespace {

// Far more than a line edit takes by itself, which would cut off what is stored.
constexpr int kLongestLine = 1 << 24;

bool isLineBreak(QChar character) {
  return character == QLatin1Char('\n') || character == QLatin1Char('\r') ||
         character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
}

}  // namespace

FieldMirror::FieldMirror(QWidget& widget, TextField& field)
    : QObject(&widget),
      widget_(widget),
      field_(field),
      observation_(field.observe([this] { fieldChanged(); })) {
  widget_.installEventFilter(this);
  connectKeystrokes();
  fieldChanged();
}

bool FieldMirror::canShow(const QWidget& widget) {
  const auto* combo = qobject_cast<const QComboBox*>(&widget);
  return (combo != nullptr && combo->isEditable()) || qobject_cast<const QLineEdit*>(&widget) != nullptr ||
         qobject_cast<const QPlainTextEdit*>(&widget) != nullptr;
}

void FieldMirror::connectKeystrokes() {
  if (auto* line = qobject_cast<QLineEdit*>(&widget_)) {
    line->setMaxLength(kLongestLine);
    connect(line, &QLineEdit::textEdited, this, [this, line] { lineEdited(*line); });
  } else if (auto* edit = qobject_cast<QPlainTextEdit*>(&widget_)) {
    edit->setTabChangesFocus(true);
    connect(edit, &QPlainTextEdit::textChanged, this, [this] { field_.edit(toText(shownText())); });
  } else if (auto* combo = qobject_cast<QComboBox*>(&widget_)) {
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->lineEdit()->installEventFilter(this);
    // Not only what is typed: what is completed behind it is to be stored as it is seen.
    connect(combo->lineEdit(), &QLineEdit::textChanged, this,
            [this](const QString& text) { field_.edit(toText(text)); });
    connect(combo, &QComboBox::textActivated, this, [this](const QString& text) {
      field_.edit(toText(text));
      field_.commitEditing();
    });
  }
}

// A line break that comes with a pasted text becomes a blank; one that is stored already stays.
void FieldMirror::lineEdited(QLineEdit& line) {
  const QString before = toQString(field_.stringValue());
  const QString now = line.text();
  if (std::ranges::count_if(now, isLineBreak) > std::ranges::count_if(before, isLineBreak)) {
    const auto same = std::ranges::mismatch(before, now);
    const auto first = same.in2 - now.begin();
    const qsizetype room = std::min(before.size(), now.size()) - first;
    qsizetype behind = 0;
    while (behind < room && before[before.size() - 1 - behind] == now[now.size() - 1 - behind]) ++behind;
    QString added = now.mid(first, now.size() - behind - first);
    while (!added.isEmpty() && isLineBreak(added.back())) added.chop(1);
    added.replace(QLatin1String("\r\n"), QLatin1String(" "));
    for (QChar& character : added)
      if (isLineBreak(character)) character = QLatin1Char(' ');
    line.setSelection(static_cast<int>(first), static_cast<int>(now.size() - behind - first));
    line.insert(added);
  }
  field_.edit(toText(line.text()));
}

// What was typed cannot be taken back once it is stored: from then on the library's own undo does that.
void FieldMirror::forgetTyping() {
  if (auto* line = qobject_cast<QLineEdit*>(&widget_)) {
    const QSignalBlocker silent(line);
    const int place = line->cursorPosition();
    line->setText(line->text());
    line->setCursorPosition(place);
  } else if (auto* edit = qobject_cast<QPlainTextEdit*>(&widget_)) {
    edit->document()->clearUndoRedoStacks();
  }
}

bool FieldMirror::canTakeTypingBack(const QKeyEvent& key) const {
  const bool isUndo = key.matches(QKeySequence::Undo);
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget_))
    return isUndo ? line->isUndoAvailable() : line->isRedoAvailable();
  if (const auto* edit = qobject_cast<const QPlainTextEdit*>(&widget_))
    return isUndo ? edit->document()->isUndoAvailable() : edit->document()->isRedoAvailable();
  return true;
}

void FieldMirror::setPlaceholder(QWidget& widget, const QString& text) {
  QWidget* shown = &widget;
  if (auto* combo = qobject_cast<QComboBox*>(shown)) shown = combo->lineEdit();
  shown->setProperty("placeholderText", text);
}

QString FieldMirror::placeholder(const QWidget& widget) {
  const QWidget* shown = &widget;
  if (const auto* combo = qobject_cast<const QComboBox*>(shown)) shown = combo->lineEdit();
  return shown->property("placeholderText").toString();
}

QString FieldMirror::shownText() const {
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget_)) return line->text();
  if (const auto* edit = qobject_cast<const QPlainTextEdit*>(&widget_)) {
    // The plain text would have ordinary blanks in place of those that keep words together.
    return edit->document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
  }
  return qobject_cast<const QComboBox*>(&widget_)->currentText();
}

void FieldMirror::showText(const QString& text) {
  const QSignalBlocker silent(&widget_);
  if (auto* line = qobject_cast<QLineEdit*>(&widget_)) {
    line->setText(text);
    // A long text is read from its beginning.
    line->setCursorPosition(0);
  } else if (auto* edit = qobject_cast<QPlainTextEdit*>(&widget_)) {
    edit->setPlainText(text);
  } else if (auto* combo = qobject_cast<QComboBox*>(&widget_)) {
    const QSignalBlocker silentLine(combo->lineEdit());
    combo->setCurrentText(text);
    combo->lineEdit()->setCursorPosition(0);
  }
}

void FieldMirror::fieldChanged() {
  const QString text = toQString(field_.stringValue());
  if (text != shownText()) showText(text);
  widget_.setEnabled(field_.isEnabled());
  if (widget_.isHidden() != field_.isHidden()) widget_.setHidden(field_.isHidden());
  if (std::exchange(wasEditing_, field_.isEditing()) && !field_.isEditing()) forgetTyping();
}

bool FieldMirror::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) return false;
  auto& key = static_cast<QKeyEvent&>(*event);
  const bool isPress = event->type() == QEvent::KeyPress;
  // With nothing typed to take back, the keys are the menu's.
  if (!isPress && (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)))
    return !canTakeTypingBack(key);
  if (isPress && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)) {
    // A refused entry is told of once: the sheet's default button would ask for it again.
    return qobject_cast<QPlainTextEdit*>(&widget_) == nullptr && !field_.commitEditing();
  }
  if (key.key() != Qt::Key_Escape || !field_.isEditing()) return false;
  // Escape ends the edit, not the sheet that the field stands in.
  if (isPress) field_.discardEditing();
  event->accept();
  return true;
}

}  // namespace clipwave
