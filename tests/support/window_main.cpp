// Runs the tests of a program with windows, which look as the program's own do: other styles fade
// buttons in and out, so that no two pictures are the same. Without a choice of platform no screen
// is needed, but on Windows, whose own windows are to be tested.

#include <gtest/gtest.h>

#include <QApplication>

#include "ui/look.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
#ifndef Q_OS_WIN
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
  QApplication application(argc, argv);
  brindle::ApplyLook(application, brindle::ThemeChoice::kSystem);
  return RUN_ALL_TESTS();
}
