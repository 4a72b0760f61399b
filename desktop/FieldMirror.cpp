#include "desktop/FieldMirror.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "desktop/Text.h"

namespace clipwave {

FieldMirror::FieldMirror(QWidget& widget, TextField& field)
    : QObject(&widget),
      widget_(widget),
      field_(field),
      observation_(field.observe([this] { fieldChanged(); })) {
  const auto* edit = qobject_cast<QPlainTextEdit*>(&widget_);
  placeholder_ = edit != nullptr ? edit->placeholderText() : line()->placeholderText();
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
    connect(line, &QLineEdit::textEdited, this, [this](const QString& text) { field_.edit(toText(text)); });
    connect(line, &QLineEdit::returnPressed, this, [this] { field_.commitEditing(); });
  } else if (auto* edit = qobject_cast<QPlainTextEdit*>(&widget_)) {
    edit->setTabChangesFocus(true);
    connect(edit, &QPlainTextEdit::textChanged, this, [this] { field_.edit(toText(shownText())); });
  } else if (auto* combo = qobject_cast<QComboBox*>(&widget_)) {
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->lineEdit()->installEventFilter(this);
    connect(combo->lineEdit(), &QLineEdit::textEdited, this,
            [this](const QString& text) { field_.edit(toText(text)); });
    connect(combo->lineEdit(), &QLineEdit::returnPressed, this, [this] { field_.commitEditing(); });
    connect(combo, &QComboBox::textActivated, this, [this](const QString& text) {
      field_.edit(toText(text));
      field_.commitEditing();
    });
  }
}

QLineEdit* FieldMirror::line() const {
  if (auto* combo = qobject_cast<QComboBox*>(&widget_)) return combo->lineEdit();
  return qobject_cast<QLineEdit*>(&widget_);
}

void FieldMirror::setShowsSeveralValues(bool shows) {
  const QString text = shows ? severalValuesText() : placeholder_;
  if (line() != nullptr) {
    line()->setPlaceholderText(text);
  } else if (auto* edit = qobject_cast<QPlainTextEdit*>(&widget_)) {
    edit->setPlaceholderText(text);
  }
}

QString FieldMirror::shownText() const {
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget_)) return line->text();
  if (const auto* edit = qobject_cast<const QPlainTextEdit*>(&widget_)) return edit->toPlainText();
  return qobject_cast<const QComboBox*>(&widget_)->currentText();
}

void FieldMirror::showText(const QString& text) {
  const QSignalBlocker silent(&widget_);
  if (auto* line = qobject_cast<QLineEdit*>(&widget_)) {
    // What would be typed in place of the old text is typed in place of the new one.
    const bool isSelected = line->window()->focusWidget() == line && line->selectedText() == line->text();
    line->setText(text);
    // A long text is read from its beginning.
    line->setCursorPosition(0);
    if (isSelected) line->selectAll();
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
}

bool FieldMirror::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) return false;
  if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape || !field_.isEditing()) return false;
  // Escape ends the edit, not the sheet that the field stands in.
  if (event->type() == QEvent::KeyPress) field_.discardEditing();
  event->accept();
  return true;
}

}  // namespace clipwave
