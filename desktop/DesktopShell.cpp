#include "desktop/DesktopShell.h"

#include <QApplication>
#include <QCursor>
#include <QDialog>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <utility>

#include "desktop/AlertDialog.h"
#include "desktop/OpenPanelDialog.h"
#include "desktop/Text.h"
#include "platform/appkit/Workspace.h"

namespace clipwave {
namespace {

// Panels of one kind go on where the last of them ended.
std::string kindOf(const OpenPanel& panel) {
  if (!panel.canChooseFiles) return "folders";
  return panel.allowedTypes.empty() ? "files" : "movies";
}

}  // namespace

DesktopShell::DesktopShell(RunLoop& runLoop, FileManager& files, WidgetOfWindow widgetOfWindow)
    : runLoop_(runLoop), files_(files), widgetOfWindow_(std::move(widgetOfWindow)) {}

DesktopShell::~DesktopShell() {
  const auto open = std::exchange(sheets_, {});
  for (const auto& sheet : open) {
    if (sheet == nullptr) continue;
    sheet->disconnect(&context_);
    delete sheet.data();
  }
}

QWidget* DesktopShell::widgetOf(const Window& window) const {
  return widgetOfWindow_ ? widgetOfWindow_(window) : nullptr;
}

Alert::Answer DesktopShell::runAlert(Alert& alert) {
  const QPointer<AlertDialog> dialog = new AlertDialog(alert, QApplication::activeWindow());
  Alert::Answer answer = dialog->answer();  // also of a dialogue that its parent took along
  runModally(dialog.data());
  if (dialog == nullptr) return answer;
  if (alert.checkBox) alert.checkBox->isOn = dialog->isCheckBoxOn();
  answer = dialog->answer();
  delete dialog.data();
  return answer;
}

OpenPanelAnswer DesktopShell::runOpenPanel(const OpenPanel& panel) {
  const QPointer<OpenPanelDialog> dialog = makeOpenPanelDialog(panel, QApplication::activeWindow());
  runModally(dialog.data());
  if (dialog == nullptr) return {};
  OpenPanelAnswer answer = dialog->answer();
  delete dialog.data();
  return remembered(panel, std::move(answer));
}

void DesktopShell::runModally(const QPointer<QDialog>& dialog) {
  bool hasEnded = false;
  const auto end = [this, &hasEnded] {
    if (!std::exchange(hasEnded, true)) runLoop_.stopModal();
  };
  const QObject connections;
  QObject::connect(dialog, &QDialog::finished, &connections, end);
  QObject::connect(dialog, &QObject::destroyed, &connections, end);
  dialog->setWindowModality(Qt::ApplicationModal);
  dialog->show();
  // What keeps the user waiting pauses for the question.
  const bool isWaiting = QApplication::overrideCursor() != nullptr;
  if (isWaiting) QApplication::setOverrideCursor(Qt::ArrowCursor);
  runLoop_.runModal();
  if (isWaiting) QApplication::restoreOverrideCursor();
  if (!hasEnded && runLoop_.mode() == RunLoop::Mode::Modal) runLoop_.stopModal();
}

void DesktopShell::beginAlertSheet(Alert alert, Window& window, std::function<void(Alert::Answer)> ended) {
  auto* dialog = new AlertDialog(alert, widgetOf(window));
  const Alert::Answer untouched = dialog->answer();
  beginSheet(dialog, [this, dialog, untouched, ended = std::move(ended)](bool isAlive) {
    const Alert::Answer answer = isAlive ? dialog->answer() : untouched;
    if (ended) runLoop_.performLater([ended, answer] { ended(answer); });
  });
}

void DesktopShell::beginOpenPanelSheet(OpenPanel panel, Window& window,
                                       std::function<void(OpenPanelAnswer)> ended) {
  auto* dialog = makeOpenPanelDialog(panel, widgetOf(window));
  beginSheet(dialog, [this, dialog, panel, ended = std::move(ended)](bool isAlive) {
    OpenPanelAnswer answer = remembered(panel, isAlive ? dialog->answer() : OpenPanelAnswer());
    if (ended) runLoop_.performLater([ended, answer = std::move(answer)] { ended(answer); });
  });
}

// Calls `ended` once: when the user has ended the dialogue, or when it was destroyed with its parent.
void DesktopShell::beginSheet(QDialog* dialog, std::function<void(bool isAlive)> ended) {
  std::erase_if(sheets_, [](const auto& sheet) { return sheet == nullptr; });
  sheets_.emplace_back(dialog);
  const auto call = std::make_shared<std::function<void(bool)>>(std::move(ended));
  const auto callOnce = [call](bool isAlive) {
    if (const auto function = std::exchange(*call, nullptr)) function(isAlive);
  };
  QObject::connect(dialog, &QDialog::finished, &context_, [dialog, callOnce] {
    callOnce(true);
    dialog->deleteLater();
  });
  QObject::connect(dialog, &QObject::destroyed, &context_, [callOnce] { callOnce(false); });
  dialog->open();
}

OpenPanelDialog* DesktopShell::makeOpenPanelDialog(const OpenPanel& panel, QWidget* parent) {
  auto isAllowed = [this, panel](const QString& path) {
    return isAllowedFile(panel, toPath(path),
                         [this](const std::string& file) { return HFSTypeOfFile(files_, file); });
  };
  return new OpenPanelDialog(panel, std::move(isAllowed), lastFolders_[kindOf(panel)], parent);
}

OpenPanelAnswer DesktopShell::remembered(const OpenPanel& panel, OpenPanelAnswer answer) {
  if (!answer.empty()) {
    const QFileInfo chosen(pathToQString(answer.front()));
    lastFolders_[kindOf(panel)] = chosen.isDir() ? chosen.absoluteFilePath() : chosen.absolutePath();
  }
  return answer;
}

void DesktopShell::beep() {
  QApplication::beep();
}

void DesktopShell::exitProcess(int status) {
  std::cout.flush();
  std::cerr << "Error: The feed could not be written to /tmp. The library was not saved.\n" << std::flush;
  std::fflush(nullptr);
  std::_Exit(status);
}

}  // namespace clipwave
