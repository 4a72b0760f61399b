#include "desktop/WindowFrameMirror.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

namespace clipwave {

namespace {

Size sizeOf(QSize size) {
  return {static_cast<double>(size.width()), static_cast<double>(size.height())};
}

// The state counts from the lower left corner of the first screen.
int screenHeight() {
  return QGuiApplication::primaryScreen()->geometry().height();
}

Rect rectOf(const QRect& rect) {
  return {{static_cast<double>(rect.x()), static_cast<double>(screenHeight() - rect.y() - rect.height())},
          sizeOf(rect.size())};
}

QRect qRectOf(const Rect& rect) {
  const auto round = [](double number) { return static_cast<int>(std::lround(number)); };
  const QSize size(round(rect.size.width), round(rect.size.height));
  return {QPoint(round(rect.origin.x), screenHeight() - round(rect.origin.y) - size.height()), size};
}

QRect movedInto(QRect rect, const QRect& room) {
  rect.moveLeft(std::clamp(rect.left(), room.left(), std::max(room.left(), room.right() + 1 - rect.width())));
  rect.moveTop(std::clamp(rect.top(), room.top(), std::max(room.top(), room.bottom() + 1 - rect.height())));
  return rect;
}

}  // namespace

WindowFrameMirror::WindowFrameMirror(QWidget& widget, Window& window)
    : QObject(&widget),
      widget_(widget),
      window_(window),
      shownCenterCount_(window.centerCount()),
      observation_(window.observe([this] { windowChanged(); })) {
  widget.installEventFilter(this);
  widgetChanged();
}

bool WindowFrameMirror::eventFilter(QObject* /*object*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::Show:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::LayoutRequest:
      widgetChanged();
      break;
    case QEvent::UpdateRequest:
      // The window manager puts its frame around a shown window when it likes, and no event tells of it.
      if (rectOf(frameGeometry()) != shownFrame_) widgetChanged();
      break;
    default:
      break;
  }
  return false;
}

// By what the window system says now; the widget's own knowledge of its frame is that of the last event.
QMargins WindowFrameMirror::decorations() const {
  const QWindow* handle = widget_.windowHandle();
  return handle != nullptr && widget_.isVisible() ? handle->frameMargins() : QMargins();
}

QRect WindowFrameMirror::frameGeometry() const {
  return widget_.geometry().marginsAdded(decorations());
}

void WindowFrameMirror::widgetChanged() {
  window_.setDecorations(sizeOf(frameGeometry().size() - widget_.size()));
  window_.setContentMinSize(sizeOf(widget_.minimumSizeHint().expandedTo(widget_.minimumSize())));
  window_.contentView().setFrame({{}, sizeOf(widget_.size())});
  shownFrame_ = rectOf(frameGeometry());
  window_.setFrame(shownFrame_);
}

void WindowFrameMirror::windowChanged() {
  if (std::exchange(shownCenterCount_, window_.centerCount()) != window_.centerCount()) center();
  if (window_.frame() != shownFrame_) place(window_.frame());
}

QRect WindowFrameMirror::room() const {
  return widget_.screen()->availableGeometry();
}

void WindowFrameMirror::place(const Rect& frame) {
  const QRect wanted = qRectOf(frame);
  QRect placed = wanted;
  if (const QSize size = wanted.size().boundedTo(room().size()); size != wanted.size()) {
    placed.setSize(size);
    placed.moveCenter(wanted.center());
  }
  shownFrame_ = frame;
  widget_.setGeometry(movedInto(placed, room()).marginsRemoved(decorations()));
  widgetChanged();
}

void WindowFrameMirror::center() {
  const QWidget* parent = widget_.parentWidget();
  const QRect around = parent != nullptr ? parent->window()->frameGeometry() : room();
  QRect frame = frameGeometry();
  frame.moveTopLeft(around.topLeft() + QPoint((around.width() - frame.width()) / 2,
                                              std::max(0, (around.height() - frame.height()) / 3)));
  widget_.setGeometry(movedInto(frame, room()).marginsRemoved(decorations()));
  widgetChanged();
}

}  // namespace clipwave
