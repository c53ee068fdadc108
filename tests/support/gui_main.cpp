#include "support/qt_warnings.h"
#include "support/run_tests.h"
#include "support/runtime_folder.h"

#include <QGuiApplication>

// Tests below the desktop draw into images: they need Qt's fonts and painters, never a display.
int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const tarnwick::testing::RuntimeFolder runtime_folder;
  tarnwick::testing::WatchQtWarnings();
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  return tarnwick::testing::RunTests();
}
