// The application's shell on the desktop: alerts and Open panels are dialogues.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <map>
#include <vector>

#include "platform/appkit/Application.h"
#include "platform/foundation/FileManager.h"

class QDialog;
class QWidget;

namespace clipwave {

class OpenPanelDialog;

// Must end before the QApplication and the run loop do. Sheets that are open at its end are closed, and
// nobody is called back.
class DesktopShell final : public ApplicationShell {
 public:
  // The widget that shows a window; null for none.
  using WidgetOfWindow = std::function<QWidget*(const Window&)>;

  // The run loop and the file manager must outlive the shell.
  DesktopShell(RunLoop& runLoop, FileManager& files, WidgetOfWindow widgetOfWindow = {});
  ~DesktopShell() override;
  DesktopShell(const DesktopShell&) = delete;
  DesktopShell& operator=(const DesktopShell&) = delete;
  void setWidgetOfWindow(WidgetOfWindow widgetOfWindow) { widgetOfWindow_ = std::move(widgetOfWindow); }

  // A modal run that is ended over the dialogue's head (quitting) answers as AlertDialog::answer says, or
  // nothing chosen, and ends the modal run around it, if any.
  Alert::Answer runAlert(Alert& alert) override;
  OpenPanelAnswer runOpenPanel(const OpenPanel& panel) override;
  // A sheet is modal for the window's widget only. Where that widget ends, the sheet ends likewise.
  void beginAlertSheet(Alert alert, Window& window, std::function<void(Alert::Answer)> ended) override;
  void beginOpenPanelSheet(OpenPanel panel, Window& window,
                           std::function<void(OpenPanelAnswer)> ended) override;
  void beep() override;
  void exitProcess(int status) override;

 private:
  void runModally(const QPointer<QDialog>& dialog);
  void beginSheet(QDialog* dialog, std::function<void(bool isAlive)> ended);
  QWidget* widgetOf(const Window& window) const;
  OpenPanelDialog* makeOpenPanelDialog(const OpenPanel& panel, QWidget* parent);
  OpenPanelAnswer remembered(const OpenPanel& panel, OpenPanelAnswer answer);

  RunLoop& runLoop_;
  FileManager& files_;
  WidgetOfWindow widgetOfWindow_;
  std::map<std::string, QString> lastFolders_;  // by the kind of panel
  std::vector<QPointer<QDialog>> sheets_;
  QObject context_;  // what the dialogues' signals are connected to: none comes after the shell's end
};

}  // namespace clipwave
