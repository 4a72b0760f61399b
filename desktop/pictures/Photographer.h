// Takes pictures of the program's real windows into a folder.
#pragma once

#include <QString>
#include <cstddef>
#include <functional>
#include <utility>

#include "desktop/DesktopProgram.h"

class QWidget;

namespace clipwave {

class Photographer {
 public:
  // `desktop` has been started, and outlives this object.
  Photographer(DesktopProgram& desktop, QString folder) : desktop_(desktop), folder_(std::move(folder)) {}

  DesktopProgram& desktop() { return desktop_; }
  MainInterface& interface() { return desktop_.program().interface(); }
  void send(const char* action) { desktop_.interface().wiring().send(action); }
  QWidget& mainWindow() { return desktop_.interface().mainWindow(); }

  // Lets the program run; without an argument as long as movies and pictures take to be loaded.
  void settle();
  void settle(int milliseconds);
  // Lets it run until `isSo`, at the longest a minute.
  void settleUntil(const std::function<bool()>& isSo);

  void selectChannel(std::size_t index);

  // The main window, and what stands before it.
  void take(const QString& name, QWidget* sheet = nullptr);
  void takeSheet(const QString& name, const Window& window);
  // A widget alone, or as much of it as `height` points from the top.
  void takeAlone(const QString& name, QWidget& widget, int height = -1);
  void takeAlone(const QString& name, const Window& window);
  // What `question` brings up before the windows, alone; then `button` of it is pressed. `prepare` may change
  // it before.
  void takeDialog(const QString& name, const QString& button, const std::function<void()>& question,
                  const std::function<void(QWidget&)>& prepare = {});

  // Whether something could not be shown or saved.
  bool hasFailed() const { return failed_; }

 private:
  void save(const QPixmap& picture, const QString& name);
  void fail(const QString& what);

  DesktopProgram& desktop_;
  QString folder_;
  bool failed_ = false;
};

}  // namespace clipwave
