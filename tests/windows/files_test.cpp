// Files as Windows keeps them: open elsewhere, marked read-only, with any letters and long paths.
// For that the tests of the rooms for Windows, which start here, also start themselves as another
// program.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <random>

#include "mail/list_reader.h"
#include "platform/native.h"
#include "platform/program_starter_qt.h"
#include "platform/single_instance.h"
#include "support/wait.h"

namespace brindle::test {
namespace {

// The argument before a path with which this program saves there over and over, and says a byte
// after each time.
constexpr const char* kSaveOverAndOver = "--save-over-and-over";

// Any mixing of two contents shows: each is one letter, over several blocks.
std::string SavedContent(int round) {
  return std::string(static_cast<size_t>(100000 + round), static_cast<char>('a' + round));
}

int SaveOverAndOver(const std::string& path) {
  NativeFiles files;
  for (int round = 0; files.Replace(path, SavedContent(round)); round = (round + 1) % 26) {
    std::putchar('.');
    std::fflush(stdout);
  }
  return 1;
}

struct WindowsFiles : testing::Test {
  std::string In(const QString& name) const { return folder_.filePath(name).toStdString(); }
  std::string Read(const QString& name) const { return files_.Read(In(name)).value_or("none"); }
  QStringList Names() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden); }

  QTemporaryDir folder_;
  NativeFiles files_;
};

TEST_F(WindowsFiles, AFileThatIsOpenElsewhereIsReplacedWholeOrNotAtAll) {
  ASSERT_TRUE(files_.Replace(In("file"), "old"));
  const std::wstring path = QDir::toNativeSeparators(folder_.filePath("file")).toStdWString();
  for (const DWORD shared : {0, FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE}) {
    const HANDLE other =
        CreateFileW(path.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    const bool replaced = files_.Replace(In("file"), "new");
    CloseHandle(other);
    EXPECT_EQ(Read("file"), replaced ? "new" : "old") << shared;
    EXPECT_EQ(Names(), QStringList("file"));
    EXPECT_TRUE(files_.Replace(In("file"), "old")) << "once it is closed";
  }
}

TEST_F(WindowsFiles, NamesWithAnyLettersAndLongPaths) {
  const QString letters = QString::fromUtf8("gr\u00FC\u00DFe \u65E5\u672C \U0001F600");
  QString below = letters;
  for (const int more : {0, 6}) {
    for (int i = 0; i < more; ++i) below += "/" + letters + QString(50, 'x');
    ASSERT_TRUE(QDir(folder_.path()).mkpath(below));
    const QString name = below + "/list.txt";
    EXPECT_TRUE(IsWritableFolder(In(below)));
    EXPECT_TRUE(files_.Replace(In(name), "1. One\r\n"));
    EXPECT_EQ(Read(name), "1. One\r\n");
    MailList list;
    EXPECT_TRUE(IsListFile(In(name))) << name.size();
    EXPECT_EQ(ReadListFile(In(name), list, {}).status, ReadStatus::kComplete);
    EXPECT_TRUE(files_.Remove(In(name)) && !files_.FileExists(In(name)));
    const SingleInstance first(In(below));
    EXPECT_TRUE(!first.IsAnotherRunning() && SingleInstance(In(below)).IsAnotherRunning());
  }
}

TEST_F(WindowsFiles, WhatIsMarkedReadOnlyStays) {
  ASSERT_TRUE(files_.Replace(In("file"), "old"));
  const std::wstring path = QDir::toNativeSeparators(folder_.filePath("file")).toStdWString();
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_FALSE(files_.Replace(In("file"), "new"));
  EXPECT_EQ(Read("file"), "old");
  EXPECT_FALSE(files_.Replace(folder_.path().toStdString(), "new"));
  EXPECT_FALSE(files_.Replace(In("missing/file"), "new"));
  EXPECT_FALSE(IsWritableFolder(In("missing")));
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(Names(), QStringList("file"));
}

TEST_F(WindowsFiles, AFileIsWholeWhoeverIsKilled) {
  std::mt19937 random(20261121);
  for (int i = 0; i < 10; ++i) {
    QProcess saver;
    saver.start(QCoreApplication::applicationFilePath(),
                {kSaveOverAndOver, folder_.filePath("file")});
    ASSERT_TRUE(saver.waitForReadyRead());
    // The moment of the kill is what varies: after so many saves, and a bit.
    const size_t saves = 1 + random() % 20;
    for (QByteArray said; static_cast<size_t>(said.size()) < saves;) {
      said += saver.readAll();
      saver.waitForReadyRead(1);
    }
    saver.kill();
    ASSERT_TRUE(saver.waitForFinished());
    const std::string content = Read("file");
    EXPECT_EQ(content, SavedContent(content[0] - 'a'));
  }
}

TEST_F(WindowsFiles, AProgramIsStartedAndItsFileMayBeReplacedMeanwhile) {
  EXPECT_EQ(StartProgramIn(In("."), "missing", "x").value_or("").find("File not found: "), 0U);
  const QString own = QCoreApplication::applicationFilePath();
  ASSERT_TRUE(QFile::copy(own, folder_.filePath("updater.exe")));
  EXPECT_EQ(StartProgramIn(In("."), "updater", In(QString::fromUtf8("t\u00FCr \u65E5.txt"))),
            std::nullopt);
  EXPECT_TRUE(
      WaitUntil([&] { return Read(QString::fromUtf8("t\u00FCr \u65E5.txt")) == "started"; }));
}

}  // namespace
}  // namespace brindle::test

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() == 3 && arguments[1] == brindle::test::kSaveOverAndOver) {
    return brindle::test::SaveOverAndOver(arguments[2].toStdString());
  }
  // As a program that is started with a path.
  if (arguments.size() == 2) {
    return brindle::NativeFiles().Replace(arguments[1].toStdString(), "started") ? 0 : 1;
  }
  return RUN_ALL_TESTS();
}
