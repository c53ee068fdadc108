#include "support/qt_warnings.h"
#include "support/run_tests.h"
#include "support/runtime_folder.h"

#include <QApplication>

// Tests of the desktop run on whatever display the caller provides (./dev test brings a server of its own), and on none
// at all through Qt's off-screen platform.
int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const tarnwick::testing::RuntimeFolder runtime_folder;
  tarnwick::testing::WatchQtWarnings();
  if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  const QApplication application(argc, argv);
  return tarnwick::testing::RunTests();
}
