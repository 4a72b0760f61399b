// The program's windows: made from the interface files, wired, and dressed.
#pragma once

#include <QMainWindow>
#include <QObject>
#include <QStringList>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "app/ClipwaveProgram.h"
#include "app/Preferences.h"
#include "desktop/InterfaceWiring.h"
#include "platform/appkit/InterfaceLoader.h"

class QDialog;
class QLabel;
class QMenu;

namespace clipwave {

class MovieFacts;
class RecordTable;
class WindowMemory;
class WindowMirror;

// Hands the windows that are made on first use to whoever makes them.
class DesktopInterfaceLoader final : public InterfaceLoader {
 public:
  using Maker = std::function<void(WindowController&)>;
  void setMaker(Maker maker) { maker_ = std::move(maker); }
  void loadWindow(WindowController& controller) override {
    if (maker_) maker_(controller);
  }

 private:
  Maker maker_;
};

class DesktopInterface final : public QObject {
  Q_OBJECT

 public:
  // Makes every window but those that are made on first use. Before the program awakes, and outlived by it.
  DesktopInterface(ClipwaveProgram& program, DesktopInterfaceLoader& loader);
  ~DesktopInterface() override;

  // What the interface files say that nothing answers to, one sentence each. Empty, or the program is broken.
  const QStringList& refused() const { return refused_; }
  QMainWindow& mainWindow() { return *mainWindow_; }
  // The widget that shows a window; null for one that has none.
  QWidget* widgetOf(const Window& window) const;
  InterfaceWiring& wiring() { return wiring_; }
  // Shows the main window where and as large as it was last.
  void show();
  // Brings the main window to the front, as far as the desktop allows with that token.
  void raise(const QByteArray& activationToken);
  // The quit sequence. A recording that goes on becomes an episode; a publish run that goes on is cancelled
  // first, and waited for.
  void quit();
  // Whether quitting waits for a publish run's end.
  bool isQuitting() const { return isQuitting_; }

 private:
  void makeDialog(Window& window, void (*setUp)(QDialog&));
  void makeReport();
  void wire(QWidget& root, Window& window, InterfaceWiring& wiring);
  bool wireOutlet(const QString& outlet, QWidget& widget);
  bool wireTable(const QString& outlet, RecordTable& table);
  void addContextMenu(RecordTable& table, const QString& outlet);
  void addListChoices(QMenu& menu);
  void loadWindow(WindowController& controller);
  void loadAbout(WindowController& controller);
  void loadRecordSheet(RecordWindowController& controller);
  void loadCaptureSettings(CaptureSettings::WindowParts& parts);
  void refreshEditMenu();
  void refreshPublishAction();
  void followUndo();
  void tell(const std::string& message);
  void publishRunEnded(PublishOutcome outcome);
  void terminate();
  void showPendingEntry();

  ClipwaveProgram& program_;
  DesktopInterfaceLoader& loader_;
  Preferences preferences_;
  std::unique_ptr<QMainWindow> mainWindow_;
  InterfaceWiring wiring_;
  std::unique_ptr<MovieFacts> facts_;
  std::unique_ptr<WindowMemory> memory_;
  // Shows the images in their sheet; no part of the program asks for it.
  TableView imageTable_;
  RecordTable* channelTable_ = nullptr;
  QLabel* summaryLabel_ = nullptr;  // of the report
  std::map<const Window*, WindowMirror*> mirrors_;
  QStringList refused_;
  bool isQuitting_ = false;
  std::string told_;  // the last passing word
  bool refreshQueued_ = false;
  UndoManager* undoManager_ = nullptr;  // only compared
  Observation undoObservation_;
  std::vector<Observation> observations_;
};

}  // namespace clipwave
