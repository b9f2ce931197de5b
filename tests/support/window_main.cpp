// Runs the tests of a program with windows. Without a choice of platform no screen is needed, but
// on Windows, whose own windows are to be tested.

#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
#ifndef Q_OS_WIN
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
