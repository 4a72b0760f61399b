// Starts the desktop program on the library of the user's home folder and ends as soon as its window is
// painted and takes input: what desktop/bench/start times.
#include <unistd.h>

#include <QApplication>
#include <QLocale>
#include <QTimer>

#include "desktop/DesktopProgram.h"
#include "desktop/Language.h"
#include "platform/foundation/ProcessInfo.h"

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  const clipwave::Language language(QLocale::system().uiLanguages());
  clipwave::DesktopProgram desktop(clipwave::executablePath());
  if (!desktop.start({})) return 1;
  // Behind what was posted so far: painting, and the deferred calls of the start-up.
  QTimer::singleShot(0, [] { QTimer::singleShot(0, [] { ::_exit(0); }); });
  desktop.runLoop().run();
  return 1;
}
