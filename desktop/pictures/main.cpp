// Opens the library of the user's home folder in the real windows and takes pictures of them:
//   clipwave-pictures FOLDER [main] [--pseudo TRANSLATIONS]
// With "main" the main window alone. With --pseudo and a file of translations (.ts) the texts are those of
// the language that nobody speaks, which shows what is not translated and what has no room.
#include <QApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <QPainter>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>
#include <iostream>

#include "desktop/DesktopProgram.h"
#include "desktop/Language.h"
#include "desktop/pictures/PseudoTranslator.h"
#include "platform/foundation/ProcessInfo.h"

namespace clipwave {

namespace {

constexpr int kSettle = 1500;  // milliseconds: movies are opened, pictures loaded
constexpr int kRecordingTime = 4000;
constexpr int kPublishTime = 60000;  // at the longest

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

class Photographer {
 public:
  Photographer(DesktopProgram& desktop, QString folder) : desktop_(desktop), folder_(std::move(folder)) {}

  void settle(int milliseconds = kSettle) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds) QApplication::processEvents(QEventLoop::AllEvents, 20);
  }

  // The main window, and what stands before it.
  void take(const QString& name, QWidget* sheet = nullptr) {
    QPixmap picture = desktop_.interface().mainWindow().grab();
    if (sheet != nullptr) {
      const QPixmap front = sheet->grab();
      const QSizeF room = picture.deviceIndependentSize() - front.deviceIndependentSize();
      QPainter painter(&picture);
      painter.fillRect(QRectF(QPointF(), picture.deviceIndependentSize()), QColor(0, 0, 0, 90));
      painter.drawPixmap(QPointF(room.width() / 2, room.height() / 3), front);
    }
    save(picture, name);
  }

  void selectChannel(std::size_t index) {
    desktop_.program().interface().channelController.setSelectionIndex(index);
    settle();
  }

  void takeSheet(const QString& name, const Window& window) {
    settle(300);
    take(name, desktop_.interface().widgetOf(window));
  }

  // Gives the first channel the picture that lies in the home folder.
  void addArtwork() {
    const std::string file = desktop_.program().services().process.homeDirectory() + "/artwork.png";
    MainInterface& interface = desktop_.program().interface();
    ManagedObject* image = interface.imageController.add();
    if (image == nullptr) return;
    image->setValue("title", "artwork.png");
    image->setValue("url", "file://" + file);
    interface.channelController.selection().setValue("image", image);
    settle();
  }

  bool hasFailed() const { return failed_; }

 private:
  void save(const QPixmap& picture, const QString& name) {
    const QString path = folder_ + QLatin1Char('/') + name + QStringLiteral(".png");
    if (!picture.save(path)) failed_ = true;
    std::cout << path.toStdString() << '\n';
  }

  DesktopProgram& desktop_;
  QString folder_;
  bool failed_ = false;
};

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
  QElapsedTimer timer;
  timer.start();
  while (!interface.statusWindow.isVisible() && timer.elapsed() < kPublishTime) camera.settle(50);
  camera.takeSheet("report", interface.statusWindow);
  wiring.send("closeStatusSheet:");
  takeRecording(desktop, camera);
}

int run(QStringList arguments) {
  const qsizetype pseudo = arguments.indexOf(QLatin1String("--pseudo"));
  PseudoTranslator translator(pseudo < 0 ? QString() : arguments.value(pseudo + 1));
  if (pseudo > 0) arguments.remove(pseudo, qMin<qsizetype>(2, arguments.size() - pseudo));
  if (arguments.size() < 2 || (pseudo > 0 && translator.isEmpty())) {
    std::cerr << "Usage: clipwave-pictures FOLDER [main] [--pseudo TRANSLATIONS]\n";
    return 2;
  }
  if (pseudo > 0) QCoreApplication::installTranslator(&translator);
  DesktopProgram desktop(executablePath());
  if (!desktop.start({})) return 1;
  desktop.interface().mainWindow().resize(1280, 800);
  Photographer camera(desktop, arguments[1]);
  camera.selectChannel(0);
  camera.addArtwork();
  camera.take("main");
  if (arguments.size() == 2) takeAll(desktop, camera);
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
