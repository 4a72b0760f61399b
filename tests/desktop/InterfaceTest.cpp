// The windows as they are made from the interface files: every name means something, and everything can be
// reached, named and read.
#include <QAbstractButton>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>
#include <set>

#include "app/Preferences.h"
#include "desktop/ProgramNames.h"
#include "desktop/Text.h"
#include "desktop/WindowMirror.h"
#include "tests/desktop/RunningDesktop.h"

namespace clipwave::testing {
namespace {
using namespace ::testing;

class Interface : public RunningDesktop {
 protected:
  void SetUp() override {
    start();
    window().activateWindow();
  }
  // Every window of the program, shown once.
  std::vector<QWidget*> windows() {
    desktop().program().controller().showAboutWindow();
    std::vector<QWidget*> all = {&window(),
                                 shown(desktop().program().controller().aboutWindowController().window())};
    for (const Window* other :
         {&state().prefWindow, &state().rssFeedWindow, &state().editImagePropsWindow, &state().statusWindow})
      all.push_back(shown(*other));
    RecordWindowController& record =
        desktop().program().controller().recordHandOff().recordWindowController();
    for (const Window* other : {&record.window(), &record.recorder().sizePanel}) all.push_back(shown(*other));
    for (QWidget* each : all) each->show();
    turn();
    return all;
  }
  // Calls `look` with every widget of the window while it is in sight: each page in its turn.
  void lookThrough(QWidget& root, const std::function<void(QWidget&)>& look) {
    std::set<QWidget*> seen;
    const auto lookAtVisible = [&] {
      turn();
      for (QWidget* widget : root.findChildren<QWidget*>())
        if (widget->window() == &root && widget->isVisible() && seen.insert(widget).second) look(*widget);
    };
    lookAtVisible();
    for (auto* tabs : root.findChildren<QTabWidget*>())
      for (int page = 0; page < tabs->count(); ++page) {
        tabs->setCurrentIndex(page);
        lookAtVisible();
      }
  }
  static void expectNoMnemonicTwice(const QStringList& texts, const QString& where) {
    std::map<QString, QStringList> mnemonics;
    for (const QString& text : texts) mnemonics[QKeySequence::mnemonic(text).toString()] << text;
    mnemonics.erase("");
    for (const auto& [keys, entries] : mnemonics)
      EXPECT_EQ(entries.size(), 1) << toText(where + ": " + keys + " " + entries.join(", "));
  }
  static std::string nameOf(const QWidget& widget) {
    return toText(widget.window()->objectName() + "/" + widget.parentWidget()->objectName() + "/" +
                  widget.objectName() + " (" + widget.metaObject()->className() + ")");
  }
};

TEST_F(Interface, EveryNameInTheInterfaceFilesIsAnsweredTo) {
  EXPECT_THAT(desktop().interface().refused(), IsEmpty());
  EXPECT_THAT(windows(), Each(NotNull()));
  EXPECT_THAT(desktop().interface().refused(), IsEmpty()) << "with the window About";
}

TEST_F(Interface, ANameThatNothingAnswersToIsRefusedInASentence) {
  Preferences preferences(desktop().program().services().defaults, desktop().program().services().secrets);
  InterfaceWiring wiring(namesOfProgram(desktop().program(), preferences, {}));
  struct Case {
    QWidget* widget;
    std::map<const char*, const char*> properties;
    const char* sentence;
  };
  constexpr const char* kTitle = "channelController.selection.vcTitle";
  const Case cases[] = {
      {new QLineEdit, {{"outlet", "noSuchField"}}, "W of the interface: there is no outlet noSuchField."},
      {new QLabel, {{"outlet", "publishButton"}}, "W of the interface: it cannot show publishButton."},
      {new QPushButton, {{"action", "explode:"}}, "W of the interface: there is no action explode:."},
      {new QLabel, {{"action", "save:"}}, "W of the interface: it sends no actions."},
      {new QLineEdit,
       {{"binding", "channelController.selection.colour"}},
       "channelController.selection.colour."},
      {new QLineEdit, {{"binding", "defaults.noSuchSetting"}}, "there is no value defaults.noSuchSetting."},
      {new QLineEdit, {{"binding", kTitle}, {"enabledBinding", "a.b"}}, "there is no value a.b."},
      {new QLineEdit, {{"binding", kTitle}, {"validator", "strict"}}, "there is no check strict."},
      {new QLineEdit,
       {{"binding", "defaults.updateURL"}, {"validator", "strict"}},
       "there is no check strict."},
      {new QPushButton, {{"binding", kTitle}}, "W of the interface: it cannot show a value."},
      {new QComboBox, {{"choices", "colours"}}, "W of the interface: there are no choices colours."},
      {new QWidget, {{"closeAction", "explode:"}}, "there is no action explode:."}};
  for (const auto& [widget, properties, sentence] : cases) {
    QWidget root;
    const bool isRoot = properties.contains("closeAction");
    QWidget& named = isRoot ? root : *widget;
    widget->setParent(&root);
    named.setObjectName("W");
    for (const auto& [name, value] : properties) named.setProperty(name, value);
    Window shownThere;
    const QStringList refused = wiring.wire(root, *new WindowMirror(root, shownThere),
                                            [](const QString&, QWidget&) { return false; });
    EXPECT_THAT(toText(refused.join('|')), EndsWith(sentence));
    EXPECT_EQ(refused.size(), 1) << sentence;
  }
}

TEST_F(Interface, EverythingThatCanBeUsedHasANameForTheScreenReader) {
  int count = 0;
  for (QWidget* root : windows())
    lookThrough(*root, [&](QWidget& widget) {
      const bool isButton = qobject_cast<QAbstractButton*>(&widget) != nullptr;
      if ((widget.focusPolicy() == Qt::NoFocus && !isButton) || widget.objectName().startsWith("qt_")) return;
      // What a control is made of speaks with its voice.
      if (qobject_cast<QComboBox*>(widget.parentWidget()) != nullptr) return;
      const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&widget);
      ASSERT_NE(accessible, nullptr) << nameOf(widget);
      EXPECT_NE(accessible->text(QAccessible::Name), "") << nameOf(widget);
      ++count;
    });
  EXPECT_GT(count, 100);
}

TEST_F(Interface, NoTwoEntriesOrMnemonicsCollide) {
  std::map<QString, QStringList> shortcuts;
  for (const QAction* action : window().findChildren<QAction*>())
    for (const QKeySequence& keys : action->shortcuts()) shortcuts[keys.toString()] << action->text();
  for (const auto& [keys, entries] : shortcuts)
    EXPECT_EQ(entries.size(), 1) << toText(keys + entries.join(','));
  EXPECT_GT(shortcuts.size(), 15U);
  for (QWidget* root : windows()) {
    auto* tabs = root->findChild<QTabWidget*>();
    for (int page = 0; page < (tabs != nullptr ? tabs->count() : 1); ++page) {
      if (tabs != nullptr) tabs->setCurrentIndex(page);
      QStringList texts;
      for (const auto* label : root->findChildren<QLabel*>())
        if (label->isVisible() && label->window() == root && label->buddy() != nullptr)
          texts << label->text();
      for (const auto* button : root->findChildren<QAbstractButton*>())
        if (button->isVisible() && button->window() == root) texts << button->text();
      for (const QAction* menu : window().menuBar()->actions())
        if (root == &window()) texts << menu->text();
      expectNoMnemonicTwice(texts, root->objectName() + QString::number(page));
    }
  }
  for (const QMenu* menu : window().findChildren<QMenu*>()) {
    QStringList texts;
    for (const QAction* entry : menu->actions()) texts << entry->text();
    expectNoMnemonicTwice(texts, menu->title());
  }
}

TEST_F(Interface, TheTabulatorReachesEverythingOnEveryPage) {
  auto& tabs = find<QTabWidget>("lowerTabs");
  for (int page = 0; page < tabs.count(); ++page) {
    tabs.setCurrentIndex(page);
    turn();
    std::set<QWidget*> wanted;
    for (QWidget* widget : window().findChildren<QWidget*>())
      if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) &&
          widget->focusProxy() == nullptr && widget->window() == &window())
        wanted.insert(widget);
    find("channelTableView").setFocus();
    for (int steps = 0; steps < 200 && !wanted.empty(); ++steps) {
      wanted.erase(QApplication::focusWidget());
      press(Qt::Key_Tab);
    }
    for (QWidget* left : wanted) ADD_FAILURE() << page << ": " << nameOf(*left);
  }
}

TEST_F(Interface, NothingIsCutOffInASmallWindow) {
  for (QWidget* root : windows()) {
    if (root == &window()) window().resize(1024, 640);
    lookThrough(*root, [&](QWidget& widget) {
      const bool hasText = qobject_cast<QPushButton*>(&widget) || qobject_cast<QCheckBox*>(&widget) ||
                           (qobject_cast<QLabel*>(&widget) && !widget.inherits("clipwave::ElidedLabel"));
      const auto* label = qobject_cast<QLabel*>(&widget);
      if (!hasText || (label != nullptr && label->wordWrap()) ||
          widget.parentWidget()->inherits("clipwave::MoviePreview"))
        return;
      EXPECT_GE(widget.width(), widget.minimumSizeHint().width()) << nameOf(widget);
      EXPECT_GE(widget.height(), widget.minimumSizeHint().height()) << nameOf(widget);
      for (QWidget* around = widget.parentWidget(); around != nullptr && around != root;
           around = around->parentWidget()) {
        if (qobject_cast<QScrollArea*>(around->parentWidget()) ||
            around->objectName() == "qt_scrollarea_viewport") {
          // Down is scrolled to; aside nothing may lie.
          EXPECT_LE(widget.mapTo(around, QPoint(widget.width(), 0)).x(), around->width()) << nameOf(widget);
          break;
        }
        EXPECT_TRUE(around->rect().contains(QRect(widget.mapTo(around, QPoint()), widget.size())))
            << nameOf(widget);
      }
    });
  }
}

}  // namespace
}  // namespace clipwave::testing
