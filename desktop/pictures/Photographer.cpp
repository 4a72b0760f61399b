#include "desktop/pictures/Photographer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QTimer>
#include <iostream>

namespace clipwave {

namespace {

constexpr int kSettle = 1500;     // milliseconds: movies are opened, pictures loaded
constexpr int kDialogTime = 500;  // until a dialogue stands
constexpr int kLongest = 60000;

// The one in front.
QDialog* visibleDialog(const QWidgetList& before) {
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    auto* dialog = qobject_cast<QDialog*>(window);
    if (dialog != nullptr && dialog->isVisible() && !before.contains(window)) return dialog;
  }
  return nullptr;
}

QWidgetList visibleWindows() {
  QWidgetList windows = QApplication::topLevelWidgets();
  windows.removeIf([](const QWidget* window) { return !window->isVisible(); });
  return windows;
}

bool press(QDialog& dialog, const QString& title) {
  for (QAbstractButton* button : dialog.findChildren<QAbstractButton*>()) {
    if (button->text().remove(QLatin1Char('&')) != title) continue;
    button->click();
    return true;
  }
  return false;
}

}  // namespace

void Photographer::settle() {
  settle(kSettle);
}

void Photographer::settle(int milliseconds) {
  QElapsedTimer timer;
  timer.start();
  while (timer.elapsed() < milliseconds) QApplication::processEvents(QEventLoop::AllEvents, 20);
}

void Photographer::settleUntil(const std::function<bool()>& isSo) {
  QElapsedTimer timer;
  timer.start();
  while (!isSo() && timer.elapsed() < kLongest) settle(50);
  if (!isSo()) fail(QStringLiteral("What was waited for did not come"));
}

void Photographer::selectChannel(std::size_t index) {
  interface().channelController.setSelectionIndex(index);
  settle();
}

void Photographer::take(const QString& name, QWidget* sheet) {
  QPixmap picture = mainWindow().grab();
  if (sheet != nullptr) {
    const QPixmap front = sheet->grab();
    const QSizeF room = picture.deviceIndependentSize() - front.deviceIndependentSize();
    QPainter painter(&picture);
    painter.fillRect(QRectF(QPointF(), picture.deviceIndependentSize()), QColor(0, 0, 0, 90));
    painter.drawPixmap(QPointF(room.width() / 2, room.height() / 3), front);
  }
  save(picture, name);
}

void Photographer::takeSheet(const QString& name, const Window& window) {
  settle(300);
  take(name, desktop_.interface().widgetOf(window));
}

void Photographer::takeAlone(const QString& name, QWidget& widget, int height) {
  save(widget.grab(QRect(0, 0, widget.width(), height < 0 ? widget.height() : height)), name);
}

void Photographer::takeAlone(const QString& name, const Window& window) {
  settle(300);
  QWidget* widget = desktop_.interface().widgetOf(window);
  if (widget == nullptr || !widget->isVisible()) return fail(name + QStringLiteral(" is not on the screen"));
  takeAlone(name, *widget);
}

void Photographer::takeDialog(const QString& name, const QString& button,
                              const std::function<void()>& question,
                              const std::function<void(QWidget&)>& prepare) {
  const QWidgetList before = visibleWindows();
  bool isTaken = false;
  QTimer timer;
  // Again and again: some questions come only after the disk or a server was asked.
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    QDialog* dialog = visibleDialog(before);
    if (dialog == nullptr || isTaken) return;
    isTaken = true;
    if (prepare) prepare(*dialog);
    takeAlone(name, *dialog);
    if (!press(*dialog, button)) fail(name + QStringLiteral(" has no button ") + button);
  });
  timer.start(kDialogTime);
  question();
  settleUntil([&] { return isTaken; });
  settle(300);
}

void Photographer::save(const QPixmap& picture, const QString& name) {
  const QString path = folder_ + QLatin1Char('/') + name + QStringLiteral(".png");
  // Opaque, and of no resolution that a viewer would scale by.
  QImage image = picture.toImage().convertToFormat(QImage::Format_RGB32);
  image.setDevicePixelRatio(1);
  constexpr int kSmallestFile = 0;  // the "quality" of a format that loses nothing
  if (!image.save(path, "PNG", kSmallestFile)) return fail(path + QStringLiteral(" cannot be written"));
  std::cout << path.toStdString() << '\n';
}

void Photographer::fail(const QString& what) {
  failed_ = true;
  std::cerr << what.toStdString() << ".\n";
}

}  // namespace clipwave
