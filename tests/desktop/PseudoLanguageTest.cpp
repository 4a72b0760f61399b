// Every window in a language that nobody speaks: each text went through the translations, and has room in
// them that is longer than English. With CLIPWAVE_TEST_PICTURES, a folder, the windows are kept there to be
// looked at.
#include <QAbstractButton>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

#include "desktop/ElidedLabel.h"
#include "desktop/Text.h"
#include "desktop/pictures/PseudoTranslator.h"
#include "tests/desktop/RunningDesktop.h"
#include "tests/support/RealMovies.h"

namespace clipwave::testing {
namespace {
using namespace ::testing;

// What stays as it is: agreed texts, names, and what the user entered.
const QSet<QString> kFixed = {"Clipwave",
                              ".Mac",
                              "Publish",
                              "Cancel",
                              "OK",
                              "Summary",
                              "Subtitle",
                              "Replace",
                              "More Info",
                              "Choose",
                              "Select a feed file",
                              "Please select a feed file to import.",
                              "Select a folder to publish to:"};
const QRegularExpression kData(
    "^(/.*|itpc:.*|https?:.*|Channel 01|Movie1|soup.*|Time:.*|[A-Z][a-z]+/[A-Za-z_]+|English|KB|\\.mov)$");

class PseudoLanguage : public RunningDesktop {
 protected:
  PseudoLanguage() {
    QCoreApplication::installTranslator(&pseudo_);
    set({{"captureDevice", "test-pattern"}, {"captureSoundDevice", "test-pattern"}});
  }
  ~PseudoLanguage() override { QCoreApplication::removeTranslator(&pseudo_); }

  // Notes what of the window is not translated or has no room.
  void look(QWidget& root, const QString& name);
  void lookAtMenus();
  void lookAtMenu(QMenu& menu);
  // Shows every page of the tabs in turn.
  void lookAtPages(QTabWidget& tabs, const QString& name);
  void expectTranslated(const QWidget& widget, const QString& text);
  void expectRoom(const QWidget& widget, const QString& text, int needed, int there) {
    EXPECT_LE(needed, there) << place(widget) << ": " << toText(text);
  }
  std::string place(const QWidget& widget) {
    return toText(name_ + '/' + widget.metaObject()->className() + '/' + widget.objectName());
  }

 private:
  // Qt translates what it made of the panel that opens files.
  static bool isOurs(const QWidget& widget) {
    return qobject_cast<QFileDialog*>(widget.window()) == nullptr ||
           widget.objectName() == "openPanelMessage";
  }
  void lookAt(QWidget& widget);
  void lookAtText(const QLabel& label);
  void lookAtTabs(const QTabBar& tabs);
  void lookAtHeader(const QHeaderView& header);

  PseudoTranslator pseudo_{CLIPWAVE_TRANSLATIONS "/clipwave_de.ts"};
  QString name_;
};

void PseudoLanguage::expectTranslated(const QWidget& widget, const QString& text) {
  static const QRegularExpression kLetters("[A-Za-z]{2}");
  const QString plain = QString(text).remove('&').trimmed();
  if (!plain.contains(kLetters) || plain.contains('[') || kFixed.contains(plain) ||
      kData.match(plain).hasMatch())
    return;
  ADD_FAILURE() << place(widget) << " is not translated: " << toText(text);
}

void PseudoLanguage::look(QWidget& root, const QString& name) {
  name_ = name;
  turn();
  if (const QString folder = qEnvironmentVariable("CLIPWAVE_TEST_PICTURES"); !folder.isEmpty())
    root.grab().save(folder + '/' + name + ".png");
  EXPECT_LE(root.width(), 1024) << toText(name);
  EXPECT_LE(root.height(), 720) << toText(name);
  expectTranslated(root, root.windowTitle());
  for (auto* widget : root.findChildren<QWidget*>())
    if (widget->isVisible() && widget->window() == &root && isOurs(*widget)) lookAt(*widget);
}

void PseudoLanguage::lookAt(QWidget& widget) {
  for (const QString& text : {widget.toolTip(), widget.accessibleName()}) expectTranslated(widget, text);
  if (const auto* label = qobject_cast<QLabel*>(&widget)) {
    lookAtText(*label);
  } else if (const auto* button = qobject_cast<QAbstractButton*>(&widget)) {
    expectTranslated(widget, button->text());
    expectRoom(widget, button->text(), widget.minimumSizeHint().width(), widget.width());
    if (!button->text().isEmpty())
      expectRoom(widget, button->text(), widget.sizeHint().width(), widget.width());
    EXPECT_NE(widget.objectName(), "qt_toolbar_ext_button") << "the tool bar has no room";
  } else if (const auto* line = qobject_cast<QLineEdit*>(&widget)) {
    expectTranslated(widget, line->placeholderText());
    const QMargins text = line->textMargins();
    expectRoom(widget, line->placeholderText(),
               line->fontMetrics().horizontalAdvance(line->placeholderText()) + 8,
               line->width() - text.left() - text.right());
  } else if (const auto* combo = qobject_cast<QComboBox*>(&widget);
             combo != nullptr && !combo->isEditable()) {
    QStyleOptionComboBox option;
    option.initFrom(combo);
    const QRect room =
        combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo);
    expectRoom(widget, combo->currentText(), combo->fontMetrics().horizontalAdvance(combo->currentText()),
               room.width());
    expectTranslated(widget, combo->currentText());
  } else if (const auto* area = qobject_cast<QScrollArea*>(&widget)) {
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << place(widget) << " scrolls sideways";
  } else if (const auto* tabs = qobject_cast<QTabBar*>(&widget)) {
    lookAtTabs(*tabs);
  } else if (const auto* header = qobject_cast<QHeaderView*>(&widget)) {
    lookAtHeader(*header);
  }
}

void PseudoLanguage::lookAtText(const QLabel& label) {
  expectTranslated(label, label.text());
  if (qobject_cast<const ElidedLabel*>(&label) != nullptr || label.text().isEmpty()) return;
  if (!label.wordWrap()) expectRoom(label, label.text(), label.sizeHint().width(), label.width());
  const int height = label.wordWrap() ? label.heightForWidth(label.width()) : label.sizeHint().height();
  expectRoom(label, label.text(), height, label.height());
}

void PseudoLanguage::lookAtTabs(const QTabBar& tabs) {
  int right = 0;
  for (int i = 0; i < tabs.count(); ++i) {
    expectTranslated(tabs, tabs.tabText(i));
    expectRoom(tabs, tabs.tabText(i), tabs.fontMetrics().horizontalAdvance(tabs.tabText(i)),
               tabs.tabRect(i).width());
    right = std::max(right, tabs.tabRect(i).right());
  }
  expectRoom(tabs, "all tabs", right, tabs.width());
}

void PseudoLanguage::lookAtHeader(const QHeaderView& header) {
  for (int i = 0; i < header.count(); ++i) {
    if (header.orientation() == Qt::Vertical || header.isSectionHidden(i)) continue;
    const QString title = header.model()->headerData(i, Qt::Horizontal).toString();
    expectTranslated(header, title);
    // What is left over belongs to the column that stretches; its title is shortened where that is little.
    if (header.sectionResizeMode(i) != QHeaderView::Stretch || header.textElideMode() == Qt::ElideNone)
      expectRoom(header, title, header.fontMetrics().horizontalAdvance(title), header.sectionSize(i));
  }
}

void PseudoLanguage::lookAtMenus() {
  const QMenuBar& bar = *window().menuBar();
  for (const QAction* entry : bar.actions())
    EXPECT_TRUE(bar.rect().contains(bar.actionGeometry(const_cast<QAction*>(entry))))
        << "the menu bar has no room";
  for (QMenu* menu : window().findChildren<QMenu*>()) lookAtMenu(*menu);
}

void PseudoLanguage::lookAtMenu(QMenu& menu) {
  emit menu.aboutToShow();
  expectTranslated(menu, menu.title());
  for (const QAction* entry : menu.actions())
    for (const QString& text : {entry->text(), entry->iconText(), entry->toolTip()})
      expectTranslated(menu, text);
}

void PseudoLanguage::lookAtPages(QTabWidget& tabs, const QString& name) {
  for (int page = 0; page < tabs.count(); ++page) {
    tabs.setCurrentIndex(page);
    look(*tabs.window(), name + QString::number(page + 1));
  }
}

TEST_F(PseudoLanguage, TheMainWindowIsTranslatedAndHasRoom) {
  start();
  lookAtPages(find<QTabWidget>("lowerTabs"), "main-empty");
  ASSERT_TRUE(dropped("vcastTableView", {makeMovie(home, "soup.mov")}));
  clickRow("vcastTableView", 0);
  type("titleTextField", "Soup");
  press(Qt::Key_Return);
  lookAtPages(find<QTabWidget>("lowerTabs"), "main");
  lookAtMenus();
  state().channelController.selection().setValue("protocolTag", kDotMacMethod);
  desktop().program().controller().windowLayout().updateWindowSize();
  lookAtPages(find<QTabWidget>("lowerTabs"), "main-simple");
}

TEST_F(PseudoLanguage, TheOtherWindowsAreTranslatedAndHaveRoom) {
  start();
  InterfaceWiring& wiring = desktop().interface().wiring();
  const auto lookAtSheet = [&](const char* open, const Window& sheet, const char* close) {
    wiring.send(open);
    look(*shown(sheet), QString(open).remove(':'));
    wiring.send(close);
    turn();
  };
  lookAtSheet("importRSSFromURL:", state().rssFeedWindow, "cancelRSSFeedSheet:");
  lookAtSheet("editImageProps:", state().editImagePropsWindow, "closeEditImagePropsSheet:");
  lookAtSheet("showAboutWindow:", desktop().program().controller().aboutWindowController().window(),
              "closeAboutWindow:");
  state().statusWindow.makeKeyAndOrderFront();
  look(*shown(state().statusWindow), "report");
  state().statusWindow.orderOut();
  reply([&](QDialog& dialog) {
    lookAtPages(*dialog.findChild<QTabWidget*>(), "preferences");
    wiring.send("dismissPrefs:");
  });
  wiring.send("showPrefs:");
  const auto lookAndLeave = [this](const char* name) {
    reply([this, name](QDialog& dialog) {
      look(dialog, name);
      QTest::keyClick(&dialog, Qt::Key_Escape);
    });
  };
  for (const char* panel :
       {"openMovies:", "addEpisodes:", "importRSSFromFile:", "chooseDestination:", "removeChannels:"}) {
    lookAndLeave(panel);
    wiring.send(panel);
    EXPECT_TRUE(until([&] { return allReplied(); })) << panel;
  }
}

TEST_F(PseudoLanguage, RecordingIsTranslatedAndHasRoom) {
  start();
  InterfaceWiring& wiring = desktop().interface().wiring();
  wiring.send("recordMovie:");
  RecordWindowController& sheet = desktop().program().controller().recordHandOff().recordWindowController();
  Recorder& recorder = sheet.recorder();
  ASSERT_TRUE(until([&] { return recorder.image() != nullptr && sheet.window().isVisible(); }));
  look(*shown(sheet.window()), "record");
  lookAtMenu(*find<QPushButton>("optionsButton").menu());
  sheet.filenameTextField().edit("");
  look(*shown(sheet.window()), "record-no-name");
  sheet.filenameTextField().edit("Soup");
  const auto lookAndLeave = [this](const char* name) {
    reply([this, name](QDialog& dialog) {
      look(dialog, name);
      QTest::keyClick(&dialog, Qt::Key_Escape);
    });
  };
  lookAndLeave("size-panel");
  recorder.showSizePanel();
  lookAndLeave("video-settings");
  recorder.showVideoSettings();
  lookAndLeave("sound-settings");
  recorder.showSoundSettings();
  recorder.record();
  ASSERT_TRUE(until([&] { return sheet.elapsedTimeTextField().stringValue() == "0:01"; }));
  look(*shown(sheet.window()), "recording");
  desktop().program().controller().recordHandOff().endRecording();
}

}  // namespace
}  // namespace clipwave::testing
