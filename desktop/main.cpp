// clipwave: the desktop program.
#include <QApplication>
#include <filesystem>

#include "app/RealPlatform.h"
#include "desktop/DesktopProgram.h"

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  std::error_code error;
  const std::string executable = std::filesystem::read_symlink("/proc/self/exe", error).string();
  clipwave::DesktopProgram program(executable);
  return program.run(QApplication::arguments().mid(1));
}
