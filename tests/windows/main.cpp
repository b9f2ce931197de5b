// The tests of the rooms for Windows, which also start themselves as another program.

#include <gtest/gtest.h>

#include <QApplication>
#include <cstdio>

#include "platform/native.h"
#include "saver.h"

namespace {

int SaveOverAndOver(const std::string& path) {
  brindle::NativeFiles files;
  for (int round = 0; files.Replace(path, brindle::test::SavedContent(round));
       round = (round + 1) % 26) {
    std::putchar('.');
    std::fflush(stdout);
  }
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() == 3 && arguments[1] == brindle::test::kSaveOverAndOver) {
    return SaveOverAndOver(arguments[2].toStdString());
  }
  // As a program that is started with a path.
  if (arguments.size() == 2) {
    return brindle::NativeFiles().Replace(arguments[1].toStdString(), "started") ? 0 : 1;
  }
  return RUN_ALL_TESTS();
}
