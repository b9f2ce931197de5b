// Runs the tests of a program that needs an event loop but no window.

#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int count, char** texts) {
  const QCoreApplication application(count, texts);
  testing::InitGoogleTest(&count, texts);
  return RUN_ALL_TESTS();
}
