// Runs the tests of the desktop shell: without a display, with a home folder and settings of their own.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QApplication>

#include "desktop/Language.h"
#include "tests/support/TemporaryFolder.h"

int main(int argc, char** argv) {
  const clipwave::testing::TemporaryFolder home;
  qputenv("HOME", home.path().c_str());
  for (const char* folder : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME"})
    qputenv(folder, home.makeFolder(folder).c_str());
  ::chmod(qgetenv("XDG_RUNTIME_DIR").constData(), 0700);
  qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  // Whatever the developer's language is.
  qputenv("LC_ALL", "C.UTF-8");
  qunsetenv("LANGUAGE");
  if (!qEnvironmentVariableIsSet("CLIPWAVE_TEST_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  const clipwave::Language language({QStringLiteral("C")});
  QApplication::setDesktopSettingsAware(false);
  return RUN_ALL_TESTS();
}
