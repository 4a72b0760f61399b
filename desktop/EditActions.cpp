#include "desktop/EditActions.h"

#include <QApplication>
#include <QCoreApplication>
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

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(EditActions)
};

// What the next undo takes back; a change without a name has the empty one.
QString nameOfChange(Direction direction, UndoManager* manager) {
  if (inFocusedText(direction, false)) return Texts::tr("Typing");
  if (manager == nullptr) return {};
  return toQString(direction == Direction::Undo ? manager->undoActionName() : manager->redoActionName());
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
  const QString change = nameOfChange(Direction::Undo, manager);
  return change.isEmpty() ? Texts::tr("&Undo") : Texts::tr("&Undo %1").arg(withoutShortcut(change));
}

QString redoTitle(UndoManager* manager) {
  const QString change = nameOfChange(Direction::Redo, manager);
  return change.isEmpty() ? Texts::tr("&Redo") : Texts::tr("&Redo %1").arg(withoutShortcut(change));
}

void sendToFocus(const char* operation) {
  QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr) return;
  const QByteArray signature = QByteArray(operation) + "()";
  if (focus->metaObject()->indexOfMethod(signature) >= 0) QMetaObject::invokeMethod(focus, operation);
}

}  // namespace clipwave
