// The desktop program as its user meets it: the real platform and the real windows in a home folder of the
// test's own, driven with keys and clicks. Questions are answered as they come up.
#pragma once

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/DesktopProgram.h"
#include "desktop/RecordTable.h"
#include "platform/foundation/PropertyList.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

class RunningDesktop : public ::testing::Test {
 protected:
  RunningDesktop();
  ~RunningDesktop() override;

  // Settings of the user's before the start.
  void set(Dictionary settings);
  void start(const std::vector<std::string>& paths = {});
  // Ends the process, as far as a test can, without the quit sequence.
  void end() { desktop_.reset(); }

  DesktopProgram& desktop() { return *desktop_; }
  QMainWindow& window() { return desktop_->interface().mainWindow(); }
  MainInterface& state() { return desktop_->program().interface(); }
  QWidget* shown(const Window& window) { return desktop_->interface().widgetOf(window); }
  bool hasQuit() { return desktop_->program().services().application.isTerminated(); }
  ArrayController& channels() { return state().channelController; }
  ArrayController& episodes() { return state().vodcastController; }
  Value channelValue(std::string_view key) { return channels().selection().value(key); }
  Value episodeValue(std::string_view key) { return episodes().selection().value(key); }
  std::vector<std::string> titles(const ArrayController& list);
  std::string saved() { return readFile(home / "data/Clipwave/Clipwave.xml"); }
  // What was handed to other programs, one line each.
  std::string opened() { return readFile(home / "opened"); }

  // A widget of any window by its name; throws where there is none.
  template <class Widget = QWidget>
  Widget& find(const char* name) {
    return dynamic_cast<Widget&>(widgetNamed(name));
  }
  // Brings the widget in sight, and clicks it.
  void click(QWidget& widget, QPoint place = {}, Qt::KeyboardModifiers modifiers = {});
  void click(const char* name) { click(find(name)); }
  void clickRow(const char* table, int row, Qt::KeyboardModifiers modifiers = {});
  // Clicks into the field, and types in place of what it holds.
  void type(const char* name, const QString& text);
  void press(int key, Qt::KeyboardModifiers modifiers = {});
  // Opens the menu of the entry and clicks it; answers what it said there.
  std::string choose(const char* action);
  // Picks an entry of a list of choices with the keyboard.
  void pick(const char* combo, const QString& text);
  // Drags files over the table and lets go of them there; false where they are not welcome.
  bool drop(const char* table, QPoint place, const QStringList& paths);
  // Below the last row.
  bool dropped(const char* table, const std::vector<std::string>& paths);

  // What is done to the alerts, panels and modal windows that come up from now on, in their order. One that
  // nobody told of fails the test.
  using Reply = std::function<void(QDialog&)>;
  void reply(Reply reply) { replies_.push_back(std::move(reply)); }
  void answer(const QString& button);
  void choosePath(const std::string& path);  // "": the panel is cancelled
  // Whether all of them came; "title|message" of the alerts so far, which are then forgotten.
  bool allReplied() { return replies_.empty(); }
  std::vector<std::string> alerts();

  void turn();
  bool until(const std::function<bool()>& holds, int milliseconds = 10000);

  const TemporaryFolder home;

 private:
  void watchForDialogs();
  void handle(QDialog& dialog);
  QWidget& widgetNamed(const char* name);

  std::vector<std::unique_ptr<EnvironmentVariable>> environment_;
  std::unique_ptr<DesktopProgram> desktop_;
  QObject guard_;
  std::deque<Reply> replies_;
  std::vector<QDialog*> handled_;
  std::vector<std::string> alerts_;
};

// Presses the button of that title, or adds a failure.
void clickButton(QWidget& dialog, const QString& title);

}  // namespace clipwave::testing
