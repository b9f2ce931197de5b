// Runs the tests of a program with windows. Without a choice of platform no screen is needed.

#include <gtest/gtest.h>

#include <QApplication>

int main(int count, char** texts) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, texts);
  testing::InitGoogleTest(&count, texts);
  return RUN_ALL_TESTS();
}
