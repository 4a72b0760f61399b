// Keys and clicks in a table.
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include "desktop/RecordTable.h"

namespace clipwave {
namespace {

constexpr unsigned kDeleteCharacter = 127;

unsigned modifiersOf(const QKeyEvent& event) {
  unsigned modifiers = 0;
  if (event.modifiers() & Qt::ShiftModifier) modifiers |= KeyEvent::Shift;
  if (event.modifiers() & Qt::ControlModifier) modifiers |= KeyEvent::Control;
  if (event.modifiers() & Qt::AltModifier) modifiers |= KeyEvent::Option;
  if (event.modifiers() & Qt::MetaModifier) modifiers |= KeyEvent::Command;
  return modifiers;
}

}  // namespace

// The rows under an event are to be those of the list.
bool RecordTable::viewportEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::ContextMenu:
    case QEvent::DragMove:
    case QEvent::Drop:
      if (syncQueued_) sync();
      break;
    default:
      break;
  }
  return QTreeView::viewportEvent(event);
}

void RecordTable::keyPressEvent(QKeyEvent* event) {
  if (syncQueued_) sync();
  const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (opens && event->modifiers().testFlags(Qt::NoModifier) && !selectionModel()->selection().isEmpty()) {
    emit recordOpened();
  } else if (event->key() != Qt::Key_Backspace || !passToTable(*event)) {
    QTreeView::keyPressEvent(event);
  }
}

bool RecordTable::passToTable(const QKeyEvent& event) {
  return table_ != nullptr && table_->keyDown({kDeleteCharacter, modifiersOf(event)});
}

// The base class looks in the first column. One letter again and again goes from title to title.
void RecordTable::keyboardSearch(const QString& search) {
  const int count = model_ == nullptr ? 0 : model_->rowCount();
  const bool goesOn =
      sinceSearch_.isValid() && sinceSearch_.elapsed() < QApplication::keyboardInputInterval();
  if (search.isEmpty()) {
    searched_.clear();
    return;
  }
  if (!goesOn) searched_.clear();
  if (count == 0 || (searched_.isEmpty() && search.trimmed().isEmpty())) return;
  sinceSearch_.start();
  const bool repeats = !searched_.isEmpty() && searched_ == search;
  if (!repeats) searched_ += search;
  const int current = currentIndex().isValid() ? currentIndex().row() : -1;
  const int start = searched_.size() > 1 ? std::max(current, 0) : current + 1;
  for (int step = 0; step < count; ++step) {
    const int row = (start + step) % count;
    const QString title = model_->index(row, model_->titleColumn()).data().toString();
    if (!title.startsWith(searched_, Qt::CaseInsensitive)) continue;
    selectRow(row);
    return;
  }
}

QModelIndex RecordTable::checkBoxAt(const QPoint& position) const {
  const QModelIndex index = indexAt(position);
  return index.isValid() && model_->column(index.column()).kind == Column::Kind::CheckBox ? index
                                                                                          : QModelIndex();
}

// A click on a check box is for that box alone and leaves the selection as it is.
void RecordTable::mousePressEvent(QMouseEvent* event) {
  pressedCheckBox_ = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier
                         ? checkBoxAt(event->pos())
                         : QModelIndex();
  if (!pressedCheckBox_.isValid()) QTreeView::mousePressEvent(event);
}

void RecordTable::mouseMoveEvent(QMouseEvent* event) {
  if (!pressedCheckBox_.isValid()) QTreeView::mouseMoveEvent(event);
}

void RecordTable::mouseReleaseEvent(QMouseEvent* event) {
  if (!pressedCheckBox_.isValid()) {
    QTreeView::mouseReleaseEvent(event);
    return;
  }
  const QModelIndex pressed = std::exchange(pressedCheckBox_, QPersistentModelIndex());
  if (checkBoxAt(event->pos()) != pressed) return;
  const bool isOn = pressed.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  model_->setData(pressed, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void RecordTable::mouseDoubleClickEvent(QMouseEvent* event) {
  // The second click of two quick ones on a check box.
  if (checkBoxAt(event->pos()).isValid()) {
    mousePressEvent(event);
    return;
  }
  QTreeView::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid()) emit recordOpened();
}

bool RecordTable::event(QEvent* event) {
  // The user may have put a file back in another program.
  if (event->type() == QEvent::WindowActivate && facts_ != nullptr) {
    facts_->forgetTroubles();
    repaintLater();
  }
  return QTreeView::event(event);
}

}  // namespace clipwave
