// Runs the tests of a program with windows, which need no screen.

#include <gtest/gtest.h>

#include <QApplication>

int main(int count, char** texts) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, texts);
  testing::InitGoogleTest(&count, texts);
  return RUN_ALL_TESTS();
}
