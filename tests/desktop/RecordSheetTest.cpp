// Recording as its user meets it: the record sheet over the main window, with the test pattern for a camera.
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTimer>

#include "desktop/LivePicture.h"
#include "desktop/RecordNames.h"
#include "desktop/WindowMirror.h"
#include "tests/desktop/RunningDesktop.h"

namespace clipwave::testing {
namespace {
using namespace ::testing;

class RecordSheetTest : public RunningDesktop {
 protected:
  void SetUp() override {
    set({{"captureDevice", "test-pattern"}, {"captureSoundDevice", "test-pattern"}});
    start();
  }
  RecordHandOff& handOff() { return desktop().program().controller().recordHandOff(); }
  RecordWindowController& sheet() { return handOff().recordWindowController(); }
  Recorder& recorder() { return sheet().recorder(); }
  LivePicture& picture() { return find<LivePicture>("recorder"); }
  void open() {
    press(Qt::Key_R, Qt::ControlModifier);
    ASSERT_TRUE(handOff().isOpen());
    ASSERT_TRUE(until([&] { return recorder().image() != nullptr && sheet().window().isVisible(); }));
  }
  QAction& entry(const char* name) { return *shown(sheet().window())->findChild<QAction*>(name); }
  // Opens the options with the mouse, and clicks an entry while the menu holds the program up.
  void chooseOption(const char* name) {
    QMenu* menu = find<QPushButton>("optionsButton").menu();
    QTimer::singleShot(50, menu, [this, menu, name] {
      QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(&entry(name)).center());
    });
    click("optionsButton");
  }
  QSize pictureSize() {
    turn();
    const Size size = recorder().frame().size;
    EXPECT_EQ(picture().size(), QSize(static_cast<int>(size.width), static_cast<int>(size.height)));
    return picture().size();
  }
  void startRecording() {
    press(Qt::Key_R);
    ASSERT_TRUE(recorder().isRecording());
  }
};

TEST_F(RecordSheetTest, ARecordingIsNamedMadeWithTheKeysAndBecomesTheNewestEpisode) {
  home.write("Movies/Clipwave/Channel 01/Taken.mov", "a movie");
  open();
  const int painted = picture().paintCount();
  EXPECT_TRUE(until([&] { return picture().paintCount() > painted + 3; })) << "the picture moves";

  find("filenameTextField").setFocus();
  QApplication::clipboard()->setText("Har/bour..");
  press(Qt::Key_A, Qt::ControlModifier);
  press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(find<QLineEdit>("filenameTextField").text(), "Harbour") << "a name stays in its folder";
  EXPECT_EQ(recorder().filename(), home / "Movies/Clipwave/Channel 01/Harbour.mov");
  type("filenameTextField", "../Inter/view.");
  EXPECT_EQ(find<QLineEdit>("filenameTextField").text(), "Interview");
  type("filenameTextField", "Taken");
  EXPECT_FALSE(find("recordButton").isEnabled());
  EXPECT_EQ(find<QLabel>("nameHintTextField").text(), "“Taken” exists already.");
  press(Qt::Key_Escape);
  EXPECT_EQ(find<QLineEdit>("filenameTextField").text(), "Interview") << "Escape takes the entry back";
  EXPECT_EQ(recorder().filename(), home / "Movies/Clipwave/Channel 01/Interview.mov");
  EXPECT_TRUE(find("recordButton").isEnabled());
  type("filenameTextField", "Harbour");
  EXPECT_TRUE(find("recordButton").isEnabled());
  press(Qt::Key_Return);
  EXPECT_FALSE(recorder().isRecording()) << "Return ends the entry, no more";
  click(*shown(sheet().window()), find("stateLabel").geometry().bottomLeft());

  startRecording();
  EXPECT_FALSE(find("filenameTextField").isEnabled());
  EXPECT_EQ(find<QLineEdit>("filenameTextField").text(), "Harbour");
  EXPECT_TRUE(find("recordingDot").isVisible());
  EXPECT_EQ(find<QPushButton>("recordButton").text(), "&Stop");
  EXPECT_TRUE(until([&] { return find<QLabel>("elapsedTimeTextField").text() == "0:01"; }));
  press(Qt::Key_Escape);
  press(Qt::Key_R, Qt::ShiftModifier);
  press(Qt::Key_Space);
  EXPECT_TRUE(recorder().isRecording()) << "neither Escape nor another key ends it";

  press(Qt::Key_R);
  EXPECT_FALSE(handOff().isOpen());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_THAT(titles(episodes()), ElementsAre("Harbour"));
  EXPECT_TRUE(find("titleTextField").hasFocus());
}

TEST_F(RecordSheetTest, TheOptionsDecideWhatIsRecordedAndHowLargeItIs) {
  open();
  EXPECT_EQ(pictureSize(), QSize(320, 240));
  chooseOption("actionFullSize");
  EXPECT_EQ(pictureSize(), QSize(640, 480));
  const QPoint centre = shown(sheet().window())->geometry().center();
  chooseOption("actionHalfSize");
  EXPECT_EQ(pictureSize(), QSize(320, 240));
  EXPECT_LE((shown(sheet().window())->geometry().center() - centre).manhattanLength(), 2);
  shown(sheet().window())->resize(400, 560);
  turn();
  EXPECT_EQ(sheet().window().contentView().frame().size, (Size{400, 560}));

  chooseOption("actionRecordSound");
  EXPECT_FALSE(recorder().recordSound());
  EXPECT_FALSE(entry("actionRecordSound").isChecked());
  EXPECT_EQ(find<QLabel>("stateLabel").text(), "Ready, no sound");
  chooseOption("actionSoundClock");
  EXPECT_TRUE(recorder().useSoundClock());

  reply([&](QDialog& dialog) {
    dialog.findChild<QSlider*>("volumeSlider")->setValue(128);
    EXPECT_EQ(dialog.findChild<QLabel*>("volumeLabelValue")->text(), "50 %");
    clickButton(dialog, "OK");
  });
  chooseOption("actionSoundSettings");
  EXPECT_EQ(recorder().volume(), 128);
  reply([&](QDialog& dialog) {
    EXPECT_FALSE(dialog.findChild<QSlider*>("volumeSlider")->isVisible());
    EXPECT_EQ(dialog.findChild<QComboBox*>("devicePopUp")->currentText(), "Test Pattern");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  chooseOption("actionVideoSettings");
  EXPECT_THAT(desktop().interface().refused(), IsEmpty());
}

TEST_F(RecordSheetTest, TheSizePanelTakesWholeNumbersFromTheKeyboard) {
  open();
  const auto answerPanel = [&](int key) {
    reply([key](QDialog& dialog) {
      EXPECT_EQ(dialog.findChild<QLineEdit*>("wSizeField")->text(), "640");
      QTest::keyClicks(QApplication::focusWidget(), "5x01");
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      QTest::keyClicks(QApplication::focusWidget(), "333");
      QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
      if (key == Qt::Key_Escape) QTest::keyClick(&dialog, Qt::Key_Escape);  // the first ended the entry
    });
    chooseOption("actionOtherSize");
  };
  answerPanel(Qt::Key_Escape);
  EXPECT_EQ(pictureSize(), QSize(320, 240));
  answerPanel(Qt::Key_Return);
  EXPECT_EQ(pictureSize(), QSize(501, 333));
  reply([](QDialog& dialog) {
    QTest::keyClicks(QApplication::focusWidget(), "0");
    clickButton(dialog, "OK");
  });
  chooseOption("actionOtherSize");
  EXPECT_TRUE(until([&] { return !find<QLabel>("nameHintTextField").text().isEmpty(); }))
      << "it stands still";
  chooseOption("actionHalfSize");
  EXPECT_TRUE(until([&] { return find<QLabel>("nameHintTextField").text().isEmpty(); }));
}

TEST_F(RecordSheetTest, QuittingInTheMiddleOfARecordingKeepsIt) {
  open();
  startRecording();
  ASSERT_TRUE(until([&] { return recorder().recordedTime() > 0.5; }));
  desktop().interface().quit();
  turn();
  EXPECT_TRUE(hasQuit());
  EXPECT_THAT(saved(), HasSubstr("Movie1"));
}

TEST_F(RecordSheetTest, TheSheetComesAndGoesWithoutLeavingAnythingBehind) {
  qsizetype widgets = 0;
  for (int i = 0; i < 20; ++i) {
    open();
    ASSERT_THAT(desktop().interface().refused(), IsEmpty());
    const Window* window = &sheet().window();
    i % 2 == 0 ? click("closeButton") : press(Qt::Key_Escape);
    ASSERT_TRUE(until([&] { return QApplication::activeModalWidget() == nullptr; }));
    EXPECT_EQ(shown(*window), nullptr);
    if (i == 0) widgets = QApplication::allWidgets().size();
  }
  EXPECT_EQ(QApplication::allWidgets().size(), widgets);
  open();
  end();  // the windows go first, whatever is open
}

TEST_F(RecordSheetTest, AMenuEntryThatNothingAnswersToIsRefused) {
  open();
  QWidget root;
  QPushButton button(&root);
  button.setProperty("outlet", "optionsButton");
  QAction unknown(&root);
  unknown.setObjectName("unknown");
  unknown.setProperty("action", "toggleOption:");
  unknown.setProperty("tag", 7);
  button.addAction(&unknown);
  Window window;
  InterfaceWiring wiring(namesOfRecordSheet(sheet()));
  const QStringList refused =
      wiring.wire(root, *new WindowMirror(root, window), [](const QString&, QWidget&) { return false; });
  EXPECT_EQ(refused.join('|'),
            "unknown of the interface: there is no menu entry toggleOption: with the tag 7.");
}

TEST_F(RecordSheetTest, AChosenDeviceThatIsGoneStaysChosen) {
  set({{"captureDevice", "attic"}});
  start();
  reply([&](QDialog& dialog) {
    auto& camera = find<QComboBox>("captureDeviceBox");
    EXPECT_EQ(camera.currentText(), "attic (not connected)");
    EXPECT_EQ(camera.itemText(0), "First camera found");
    EXPECT_EQ(find<QComboBox>("captureSoundDeviceBox").currentText(), "First microphone found");
    pick("captureDeviceBox", "Test Pattern");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  press(Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_EQ(desktop().program().services().defaults.string("captureDevice"), kTestPatternDevice);
}

TEST(LivePictureTest, APictureIsShownPixelByPixelOnBlackAndPaintedOnlyWhenItIsNew) {
  const auto bitmap = [](std::uint8_t red, std::uint8_t alpha) {
    auto made = std::make_shared<Bitmap>(4, 2);
    for (int i = 0; i < 8; ++i) {
      const std::uint8_t pixel[] = {red, static_cast<std::uint8_t>(i), 0, alpha};
      std::copy(pixel, pixel + 4, made->bytes.get() + i * 4);
    }
    return made;
  };
  ImageView view;
  LivePicture picture;
  picture.attach(view);
  picture.resize(8, 6);
  picture.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&picture));
  EXPECT_EQ(view.frame(), (Rect{{0, 0}, {8, 6}}));
  const auto painted = [&](std::shared_ptr<const Bitmap> image) {
    QTest::qWait(30);
    const int before = picture.paintCount();
    view.setImage(std::move(image));
    QTest::qWait(30);
    return picture.paintCount() - before;
  };
  EXPECT_EQ(painted(bitmap(200, 255)), 1);
  const QImage grabbed = picture.grab().toImage();
  EXPECT_EQ(grabbed.pixelColor(1, 2), QColor(Qt::black));
  EXPECT_EQ(grabbed.pixelColor(2, 2), QColor(200, 0, 0));
  EXPECT_EQ(grabbed.pixelColor(5, 3), QColor(200, 7, 0));
  EXPECT_EQ(painted(bitmap(200, 255)), 0) << "nothing new to see";
  EXPECT_EQ(painted(bitmap(90, 128)), 1);
  EXPECT_EQ(picture.grab().toImage().pixelColor(2, 2), QColor(90, 0, 0)) << "premultiplied, over black";
  picture.hide();
  EXPECT_EQ(painted(bitmap(10, 255)), 0) << "nobody sees it";
}

}  // namespace
}  // namespace clipwave::testing
