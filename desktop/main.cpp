// clipwave: the desktop program.
#include <QApplication>
#include <QLocale>

#include "desktop/DesktopProgram.h"
#include "desktop/Language.h"
#include "platform/foundation/ProcessInfo.h"

int main(int argc, char** argv) {
  // Takes its own arguments out of the list; what is left are files, whose names need not be text.
  QApplication qt(argc, argv);
  const clipwave::Language language(QLocale::system().uiLanguages());
  clipwave::DesktopProgram program(clipwave::executablePath());
  return program.run({argv + 1, argv + argc});
}
