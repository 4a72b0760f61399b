#include "desktop/EditActions.h"

#include <QApplication>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPlainTextEdit>
#include <QTextDocument>

#include "desktop/Text.h"

namespace clipwave {

namespace {

enum class Direction { Undo, Redo };

// Does it, or only tells whether it could be done, in the text that has the focus.
bool inFocusedText(Direction direction, bool perform) {
  QWidget* focus = QApplication::focusWidget();
  if (auto* line = qobject_cast<QLineEdit*>(focus)) {
    const bool can = direction == Direction::Undo ? line->isUndoAvailable() : line->isRedoAvailable();
    if (can && perform) direction == Direction::Undo ? line->undo() : line->redo();
    // Taking typing back is typing, too.
    if (can && perform) emit line->textEdited(line->text());
    return can;
  }
  if (auto* edit = qobject_cast<QPlainTextEdit*>(focus)) {
    const QTextDocument& document = *edit->document();
    const bool can = direction == Direction::Undo ? document.isUndoAvailable() : document.isRedoAvailable();
    if (can && perform) direction == Direction::Undo ? edit->undo() : edit->redo();
    return can;
  }
  return false;
}

QString title(const QString& verb, const std::string& change) {
  return change.empty() ? verb : verb + QLatin1Char(' ') + toQString(change);
}

}  // namespace

void undoLastChange(UndoManager* manager) {
  if (!inFocusedText(Direction::Undo, true) && manager != nullptr) manager->undo();
}

void redoLastChange(UndoManager* manager) {
  if (!inFocusedText(Direction::Redo, true) && manager != nullptr) manager->redo();
}

bool canUndoChange(UndoManager* manager) {
  return inFocusedText(Direction::Undo, false) || (manager != nullptr && manager->canUndo());
}

bool canRedoChange(UndoManager* manager) {
  return inFocusedText(Direction::Redo, false) || (manager != nullptr && manager->canRedo());
}

QString undoTitle(UndoManager* manager) {
  const QString verb = QApplication::translate("EditActions", "&Undo");
  if (inFocusedText(Direction::Undo, false))
    return title(verb, toText(QApplication::translate("EditActions", "Typing")));
  return title(verb, manager != nullptr ? manager->undoActionName() : std::string());
}

QString redoTitle(UndoManager* manager) {
  const QString verb = QApplication::translate("EditActions", "&Redo");
  if (inFocusedText(Direction::Redo, false))
    return title(verb, toText(QApplication::translate("EditActions", "Typing")));
  return title(verb, manager != nullptr ? manager->redoActionName() : std::string());
}

void sendToFocus(const char* operation) {
  QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr) return;
  const QByteArray signature = QByteArray(operation) + "()";
  if (focus->metaObject()->indexOfMethod(signature) >= 0) QMetaObject::invokeMethod(focus, operation);
}

}  // namespace clipwave
