#include "tests/desktop/RunningDesktop.h"

#include <sys/stat.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QUrl>
#include <filesystem>
#include <stdexcept>

#include "desktop/AlertDialog.h"
#include "desktop/OpenPanelDialog.h"
#include "desktop/Text.h"
#include "desktop/WindowMirror.h"

namespace clipwave::testing {

namespace {

constexpr int kLongestTest = 60000;  // milliseconds; a question that nobody answers must not last for ever
constexpr int kLook = 10;            // for dialogs, in milliseconds

std::string textIn(const QDialog& dialog, const char* name) {
  const auto* text = dialog.findChild<QTextEdit*>(name);
  return text != nullptr ? toText(text->toPlainText()) : "";
}

}  // namespace

RunningDesktop::RunningDesktop() {
  ::chmod(home.write("bin/xdg-open", "#!/bin/sh\necho \"$1\" >> '" + home / "opened" + "'\n").c_str(), 0755);
  const std::string path = home / "bin:" + qgetenv("PATH").toStdString();
  const std::pair<const char*, std::string> variables[] = {
      {"HOME", home.path()}, {"XDG_DATA_HOME", home / "data"}, {"XDG_CONFIG_HOME", home / "config"},
      {"PATH", path},        {"SDL_AUDIODRIVER", "dummy"},     {"TZ", "Europe/Berlin"}};
  for (const auto& [name, value] : variables)
    environment_.push_back(std::make_unique<EnvironmentVariable>(name, value.c_str()));
  set({{"shouldCheckForUpdate", false}});
  QTimer::singleShot(kLongestTest, &guard_, [] { qFatal("the test takes too long"); });
  watchForDialogs();
}

RunningDesktop::~RunningDesktop() {
  EXPECT_TRUE(allReplied()) << "a question was not asked";
}

void RunningDesktop::set(Dictionary settings) {
  settings.try_emplace("shouldCheckForUpdate", false);
  home.write("config/Clipwave/defaults.plist", dataFromPropertyList(settings));
}

void RunningDesktop::start(const std::vector<std::string>& paths) {
  desktop_.reset();
  desktop_ = std::make_unique<DesktopProgram>(executablePath());
  ASSERT_TRUE(desktop_->start(paths));
  window().resize(1024, 640);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  turn();
}

void RunningDesktop::turn() {
  for (int i = 0; i < 3; ++i) {
    desktop_->runLoop().runOnce(Seconds(0));
    QCoreApplication::processEvents();
    // What a window manager does when a dialog has come or gone.
    QWidget* modal = QApplication::activeModalWidget();
    if (hasQuit() || (modal == nullptr && QApplication::activeWindow() != nullptr)) continue;
    QWidget& front = modal != nullptr ? *modal : window();
    if (front.isActiveWindow() || QApplication::activePopupWidget() != nullptr) continue;
    front.activateWindow();
    (void)QTest::qWaitForWindowActive(&front, 1000);
  }
}

bool RunningDesktop::until(const std::function<bool()>& holds, int milliseconds) {
  return QTest::qWaitFor(
      [&] {
        turn();
        return holds();
      },
      milliseconds);
}

std::vector<std::string> RunningDesktop::titles(const ArrayController& list) {
  std::vector<std::string> texts;
  for (ManagedObject* record : list.arrangedObjects())
    texts.emplace_back(record->value("vcTitle").stringValue());
  return texts;
}

// A menu closes by its deferred deletion; the windows of an earlier program are gone by then.
QWidget& RunningDesktop::widgetNamed(const char* name) {
  std::vector<QWidget*> places;
  if (QWidget* modal = QApplication::activeModalWidget()) places.push_back(modal);
  places.push_back(&window());
  for (QWidget* place : places)
    if (auto* widget = place->findChild<QWidget*>(name)) return *widget;
  throw std::runtime_error(std::string("no widget ") + name);
}

void RunningDesktop::click(QWidget& widget, QPoint place, Qt::KeyboardModifiers modifiers) {
  reveal(widget);
  turn();
  // A check box is pressed at its box, however wide it is.
  if (qobject_cast<QCheckBox*>(&widget) != nullptr) place = QPoint(10, widget.height() / 2);
  // What stands there gets the click, as on the screen.
  const QPoint inWindow = widget.mapTo(widget.window(), place.isNull() ? widget.rect().center() : place);
  QWidget* under = widget.window()->childAt(inWindow);
  ASSERT_TRUE(under == &widget || widget.isAncestorOf(under)) << toText(widget.objectName());
  QTest::mouseClick(under, Qt::LeftButton, modifiers, under->mapFrom(widget.window(), inWindow));
  turn();
}

void RunningDesktop::clickRow(const char* name, int row, Qt::KeyboardModifiers modifiers) {
  auto& table = find<RecordTable>(name);
  turn();
  for (int column = 0; column < table.model()->columnCount(); ++column) {
    const QModelIndex index = table.model()->index(row, column);
    if (index.data(Qt::CheckStateRole).isValid()) continue;
    return click(*table.viewport(), table.visualRect(index).center(), modifiers);
  }
}

void RunningDesktop::type(const char* name, const QString& text) {
  QWidget& field = find(name);
  auto* combo = qobject_cast<QComboBox*>(&field);
  QWidget& entry = combo != nullptr ? *combo->lineEdit() : field;
  click(entry);
  // A window that has just come up gets the keys when its desktop says so.
  ASSERT_TRUE(QTest::qWaitFor([&] { return field.hasFocus() || entry.hasFocus(); })) << name;
  press(Qt::Key_A, Qt::ControlModifier);
  text.isEmpty() ? press(Qt::Key_Delete) : QTest::keyClicks(QApplication::focusWidget(), text);
  turn();
}

void RunningDesktop::press(int key, Qt::KeyboardModifiers modifiers) {
  // A real desktop says some time after a window came or went who gets the keys from then on.
  until([] {
    const QWidget* active = QApplication::activeWindow();
    const QWidget* modal = QApplication::activeModalWidget();
    return active != nullptr && active->isVisible() && (modal == nullptr || modal == active);
  });
  QWidget* focus = QApplication::focusWidget();
  QTest::keyClick(focus != nullptr ? focus : QApplication::activeWindow(), static_cast<Qt::Key>(key),
                  modifiers);
  turn();
}

std::string RunningDesktop::choose(const char* name) {
  auto* action = window().findChild<QAction*>(name);
  for (QObject* object : action != nullptr ? action->associatedObjects() : QList<QObject*>()) {
    auto* menu = qobject_cast<QMenu*>(object);
    if (menu == nullptr) continue;
    menu->popup(window().mapToGlobal(QPoint(20, 20)));
    turn();
    const QString text = action->text();
    EXPECT_TRUE(action->isEnabled()) << name;
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    turn();
    return toText(QString(text).remove(QLatin1Char('&')));
  }
  throw std::runtime_error(std::string("no menu has ") + name);
}

void RunningDesktop::pick(const char* name, const QString& text) {
  auto& combo = find<QComboBox>(name);
  reveal(combo);
  combo.setFocus();
  turn();
  combo.showPopup();
  turn();
  const int index = combo.findText(text);
  ASSERT_GE(index, 0) << toText(text);
  const QModelIndex choice = combo.model()->index(index, combo.modelColumn());
  combo.view()->setCurrentIndex(choice);
  QTest::keyClick(combo.view(), Qt::Key_Return);
  turn();
}

bool RunningDesktop::drop(const char* name, QPoint place, const QStringList& paths) {
  QWidget* viewport = find<RecordTable>(name).viewport();
  QMimeData files;
  QList<QUrl> urls;
  for (const QString& path : paths) urls << QUrl::fromLocalFile(path);
  files.setUrls(urls);
  const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
  QDragEnterEvent enter(place, actions, &files, Qt::LeftButton, {});
  QApplication::sendEvent(viewport, &enter);
  QDragMoveEvent move(place, actions, &files, Qt::LeftButton, {});
  QApplication::sendEvent(viewport, &move);
  if (!move.isAccepted()) {
    QDragLeaveEvent leave;
    QApplication::sendEvent(viewport, &leave);
    return false;
  }
  QDropEvent let(place, actions, &files, Qt::LeftButton, {});
  QApplication::sendEvent(viewport, &let);
  EXPECT_NE(let.dropAction(), Qt::MoveAction) << "the user's file would be deleted";
  turn();
  return let.isAccepted();
}

bool RunningDesktop::dropped(const char* name, const std::vector<std::string>& paths) {
  QStringList files;
  for (const std::string& path : paths) files << toQString(path);
  return drop(name, find<RecordTable>(name).viewport()->rect().bottomLeft() + QPoint(20, -20), files);
}

void clickButton(QWidget& dialog, const QString& title) {
  for (auto* button : dialog.findChildren<QAbstractButton*>())
    if (button->text().remove(QLatin1Char('&')) == title) return QTest::mouseClick(button, Qt::LeftButton);
  ADD_FAILURE() << "no button " << toText(title);
}

void RunningDesktop::answer(const QString& button) {
  reply([button](QDialog& dialog) { clickButton(dialog, button); });
}

void RunningDesktop::choosePath(const std::string& path) {
  reply([path](QDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    ASSERT_NE(name, nullptr) << "not an Open panel";
    if (path.empty()) return QTest::keyClick(&dialog, Qt::Key_Escape);
    name->setFocus();
    name->setText(toQString(path));  // typed, its completions would take the focus on this platform
    QTest::keyClick(name, Qt::Key_Return);
  });
}

std::vector<std::string> RunningDesktop::alerts() {
  return std::exchange(alerts_, {});
}

void RunningDesktop::watchForDialogs() {
  QTimer::singleShot(kLook, &guard_, [this] {
    watchForDialogs();  // the next look comes also while this one is busy
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible() || std::ranges::count(handled_, dialog) > 0) return;
    handle(*dialog);
  });
}

void RunningDesktop::handle(QDialog& dialog) {
  const bool isAlert = qobject_cast<AlertDialog*>(&dialog) != nullptr;
  // The program's own sheets hold nothing up: the test drives them itself.
  const bool isPanel = qobject_cast<OpenPanelDialog*>(&dialog) != nullptr;
  if (!isAlert && !isPanel && (replies_.empty() || dialog.windowModality() != Qt::ApplicationModal)) return;
  if (isAlert) alerts_.push_back(textIn(dialog, "alertTitle") + "|" + textIn(dialog, "alertMessage"));
  handled_.push_back(&dialog);
  dialog.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
  if (replies_.empty()) {
    ADD_FAILURE() << "a question that nobody expected: " << (isAlert ? alerts_.back() : "a panel");
    dialog.done(0);
  } else {
    const Reply reply = std::move(replies_.front());
    replies_.pop_front();
    reply(dialog);
  }
  std::erase(handled_, &dialog);
}

}  // namespace clipwave::testing
