// Opens the library of the user's home folder in the real windows and takes pictures of them:
//   clipwave-pictures FOLDER [main|instructions|first] [--pseudo TRANSLATIONS]
// main: the main window alone; instructions: each window by itself and what is asked; first: a library's
// first steps. With --pseudo and a file of translations (.ts) the texts are those of the language that nobody
// speaks, which shows what is not translated and what has no room.
#include <QApplication>
#include <QLocale>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>
#include <iostream>

#include "desktop/Language.h"
#include "desktop/pictures/InstructionPictures.h"
#include "desktop/pictures/PseudoTranslator.h"
#include "platform/foundation/ProcessInfo.h"

namespace clipwave {

namespace {

constexpr int kRecordingTime = 4000;  // milliseconds

QPalette darkPalette() {
  QPalette palette(QColor(45, 47, 51));
  palette.setColor(QPalette::Base, QColor(30, 31, 34));
  palette.setColor(QPalette::AlternateBase, QColor(37, 38, 42));
  palette.setColor(QPalette::Highlight, QColor(53, 132, 228));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(120, 174, 237));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
    palette.setColor(role, QColor(238, 238, 236));
  palette.setColor(QPalette::PlaceholderText, QColor(238, 238, 236, 120));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(140, 141, 144));
  return palette;
}

// Gives the first channel the picture that lies in the home folder.
void addArtwork(Photographer& camera) {
  const std::string file = camera.desktop().program().services().process.homeDirectory() + "/artwork.png";
  MainInterface& interface = camera.interface();
  ManagedObject* image = interface.imageController.add();
  if (image == nullptr) return;
  image->setValue("title", "Kitchen");
  image->setValue("url", "file://" + file);
  interface.channelController.selection().setValue("image", image);
  camera.settle();
}

// With the pattern that needs no camera. It becomes an episode, so that it comes last.
void takeRecording(DesktopProgram& desktop, Photographer& camera) {
  UserDefaultsController& defaults = desktop.program().services().defaults;
  for (const char* key : {"captureDevice", "captureSoundDevice"})
    static_cast<void>(defaults.setValue(key, std::string(kTestPatternDevice)));
  desktop.interface().wiring().send("recordMovie:");
  RecordHandOff& handOff = desktop.program().controller().recordHandOff();
  if (!handOff.isOpen()) return;
  RecordWindowController& sheet = handOff.recordWindowController();
  sheet.filenameTextField().edit("A walk at the harbour");
  sheet.recorder().record();
  camera.settle(kRecordingTime);
  camera.takeSheet("record", sheet.window());
  handOff.endRecording();
  camera.settle(300);
}

// The channel that goes onto the online disk comes last.
void takeAll(DesktopProgram& desktop, Photographer& camera) {
  MainInterface& interface = desktop.program().interface();
  InterfaceWiring& wiring = desktop.interface().wiring();
  camera.selectChannel(interface.channelController.arrangedObjects().size() - 1);
  camera.take("main-simple");
  camera.selectChannel(0);
  wiring.send("importRSSFromURL:");
  camera.takeSheet("import", interface.rssFeedWindow);
  wiring.send("cancelRSSFeedSheet:");
  QTimer::singleShot(300, [&] {
    camera.takeSheet("preferences", interface.prefWindow);
    wiring.send("dismissPrefs:");
  });
  wiring.send("showPrefs:");

  QApplication::setPalette(darkPalette());
  camera.settle(300);
  camera.take("main-dark");
  camera.selectChannel(interface.channelController.arrangedObjects().size() - 1);
  camera.take("main-simple-dark");
  camera.selectChannel(0);
  QApplication::setPalette(QApplication::style()->standardPalette());

  interface.publishButton.performClick();
  camera.settleUntil([&] { return interface.statusWindow.isVisible(); });
  camera.takeSheet("report", interface.statusWindow);
  wiring.send("closeStatusSheet:");
  takeRecording(desktop, camera);
}

int run(QStringList arguments) {
  const qsizetype pseudo = arguments.indexOf(QLatin1String("--pseudo"));
  PseudoTranslator translator(pseudo < 0 ? QString() : arguments.value(pseudo + 1));
  if (pseudo > 0) arguments.remove(pseudo, qMin<qsizetype>(2, arguments.size() - pseudo));
  if (arguments.size() < 2 || (pseudo > 0 && translator.isEmpty())) {
    std::cerr << "Usage: clipwave-pictures FOLDER [main|instructions|first] [--pseudo TRANSLATIONS]\n";
    return 2;
  }
  if (pseudo > 0) QCoreApplication::installTranslator(&translator);
  const QString what = arguments.value(2);
  DesktopProgram desktop(executablePath());
  if (!desktop.start({})) return 1;
  desktop.interface().mainWindow().resize(1280, 800);
  Photographer camera(desktop, arguments[1]);
  if (what == QLatin1String("first")) {
    takeFirstPodcast(camera);
    return camera.hasFailed() ? 1 : 0;
  }
  camera.selectChannel(0);
  addArtwork(camera);
  if (what == QLatin1String("instructions")) {
    takeInstructionPictures(camera);
  } else {
    camera.take("main");
    if (what.isEmpty()) takeAll(desktop, camera);
  }
  return camera.hasFailed() ? 1 : 0;
}

}  // namespace

}  // namespace clipwave

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  const clipwave::Language language(QLocale::system().uiLanguages());
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  return clipwave::run(QApplication::arguments());
}
