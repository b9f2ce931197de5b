// The update window against a real HTTP server on loopback, with real files.

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include "app/update_desk.h"
#include "platform/native.h"
#include "support/fake_dialogs.h"
#include "support/wait.h"
#include "support/web_server.h"

namespace brindle::test {
namespace {

constexpr int kBoundMs = 5000;
constexpr int kShortPatienceMs = 300;
constexpr char kList[] = "/update/brindle.txt";
constexpr char kProgram[] = "/update/brindle.exe";
constexpr char kError[] = "An error has occured. Try again later.";
constexpr char kNewer[] = "[version]\nminor=6\n[size]\nkb=2\n[news]\nnews=Better <b>maps</b>\n";

class UpdaterHttpTest : public testing::Test {
 protected:
  UpdaterHttpTest() { Open(); }

  // Opens the window anew.
  void Open(int patience = kShortPatienceMs * 30, QWidget* parent = nullptr) {
    desk.reset();
    desk =
        std::make_unique<UpdateDesk>(parent, settings, dialogs,
                                     UpdateDeskOptions{.dataFolder = folder.path().toStdString(),
                                                       .server = server.Address().toStdString(),
                                                       .own = {0, 5, 70},
                                                       .programFolder = folder.path().toStdString(),
                                                       .patienceMilliseconds = patience},
                                     [this] { ++ended; });
    desk->cmdCheckForUpdate_Click();
  }

  template <typename Widget>
  Widget& Find(const char* name) {
    auto* found = desk->Window()->findChild<Widget*>(name);
    if (found == nullptr) qFatal("the window has no %s", name);
    return *found;
  }

  std::string Status() { return Find<QLabel>("lblStatus").text().toStdString(); }
  QPushButton& Button() { return Find<QPushButton>("cmdUpdate"); }
  void Click(const char* name) { QTest::mouseClick(&Find<QPushButton>(name), Qt::LeftButton); }

  // Clicks the button and waits for that status.
  testing::AssertionResult ClickLeadsTo(const std::string& status) {
    Click("cmdUpdate");
    if (WaitUntil([&] { return Status() == status; }, kBoundMs)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the status is " << Status();
  }

  testing::AssertionResult Offered() {
    server.Serve(kList, {.body = kNewer});
    return ClickLeadsTo("Update available, see below.");
  }

  // Acts once as soon as the condition holds, also while a transfer waits in its own event loop.
  void When(std::function<bool()> condition, std::function<void()> act) {
    auto* watch = new QTimer(&watches);
    QObject::connect(watch, &QTimer::timeout, watch, [=] {
      if (!condition()) return;
      watch->deleteLater();
      watch->stop();
      act();
    });
    watch->start(0);
  }

  QStringList UpdateFiles() { return QDir(folder.filePath("update")).entryList(QDir::Files); }

  std::string Mark() { return settings.ReadSetting("update", "update"); }

  void ExpectNoHandOver() {
    EXPECT_EQ(UpdateFiles(), QStringList());
    EXPECT_EQ(Mark(), "");
    EXPECT_TRUE(dialogs.notices.empty());
    EXPECT_EQ(ended, 0);
  }

  QObject watches;
  QTemporaryDir folder;
  WebServer server;
  FakeDialogs dialogs;
  NativeFiles files;
  SettingsFile settings{files, folder.filePath("brindle.ini").toStdString()};
  int ended = 0;
  std::unique_ptr<UpdateDesk> desk;
};

TEST_F(UpdaterHttpTest, Checks) {
  EXPECT_EQ(desk->Window()->windowTitle(), "Update Check");
  EXPECT_TRUE(desk->Window()->isModal());
  const struct {
    const char* list;
    const char* status;
    const char* button;
    const char* progress;
  } cases[] = {
      {kNewer, "Update available, see below.", "Download Update",
       "Update to v0.6.0; 2kb; 0s on a 56k modem"},
      {"[version]\nmajor=-1\nminor=9\n", "Update available, see below.", "Download Update",
       "Update to v-1.9.0; 1kb; 0s on a 56k modem"},
      {"[version]\nminor=5\nrevision=70\n", "You have the most current version.", "Update Check",
       ""},
      {"[news]\nnews=x\n", "You have the most current version.", "Update Check", ""},
      {"", "You have the most current version.", "Update Check", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.list);
    Open();
    EXPECT_EQ(Status(), "Please press the \"Update Check\" button to begin.");
    server.Serve(kList, {.body = c.list});
    EXPECT_TRUE(ClickLeadsTo(c.status));
    EXPECT_EQ(Button().text(), c.button);
    EXPECT_EQ(Button().isEnabled(), std::string(c.progress) != "");
    EXPECT_EQ(Find<QLabel>("lblProgress").text(), c.progress);
    ExpectNoHandOver();
  }
  Open();
  EXPECT_TRUE(Offered());
  EXPECT_EQ(Find<QLabel>("lblNews").text(), "Better <b>maps</b>");
  EXPECT_EQ(Find<QLabel>("lblNews").textFormat(), Qt::PlainText);
}

TEST_F(UpdaterHttpTest, DownloadsAreHandedOver) {
  const QByteArray program = QByteArray("MZ\0\r\n\x1A", 6).repeated(5000);
  const WebServer::Answer redirect{.status = "302 Found", .headers = "Location: /moved\r\n"};
  const struct {
    const char* name;
    WebServer::Answer answer;
  } cases[] = {
      {"plain", {.body = program}},
      {"no length", {.body = program, .lengthStated = false}},
      {"redirect", redirect},
  };
  server.Serve("/moved", {.body = program});
  const QByteArray digest = QCryptographicHash::hash(program, QCryptographicHash::Sha256).toHex();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Open();
    settings.WriteSetting("update", "update", "");
    QDir(folder.filePath("update")).removeRecursively();
    dialogs.notices.clear();
    server.Serve(kList, {.body = "[version]\nminor=6\nsha256=" + digest.toUpper() + "\n"});
    ASSERT_TRUE(ClickLeadsTo("Update available, see below."));
    server.Serve(kProgram, c.answer);
    EXPECT_TRUE(ClickLeadsTo("Downloading Complete"));
    // There is no program called updater in the folder.
    EXPECT_TRUE(WaitUntil([&] { return dialogs.notices.size() == 2; }, kBoundMs));
    EXPECT_EQ(dialogs.notices.back().icon, Icon::kCritical);
    QFile file(folder.filePath("update/brindle.exe"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll() == program);
    EXPECT_EQ(UpdateFiles(), QStringList("brindle.exe"));
    EXPECT_EQ(Mark(), "1");
    EXPECT_EQ(ended, 0);
  }
}

TEST_F(UpdaterHttpTest, TheUpdaterProgramIsToldWhereTheFileIs) {
  QFile updater(folder.filePath("updater"));
  ASSERT_TRUE(updater.open(QIODevice::WriteOnly));
  updater.write("#!/bin/sh\nprintf %s \"$*\" >told.part && mv told.part told\n");
  updater.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  updater.close();
  ASSERT_TRUE(Offered());
  server.Serve(kProgram, {.body = "program"});
  QTest::keyClick(desk->Window(), Qt::Key_Enter);  // takes the offer
  EXPECT_TRUE(WaitUntil([&] { return QFile::exists(folder.filePath("told")); }, kBoundMs));
  QFile told(folder.filePath("told"));
  EXPECT_TRUE(told.open(QIODevice::ReadOnly));
  EXPECT_EQ(told.readAll(), folder.filePath("update/brindle.exe"));
  EXPECT_EQ(dialogs.notices.size(), 1U);
  EXPECT_EQ(Mark(), "1");
  EXPECT_EQ(ended, 1);
}

TEST_F(UpdaterHttpTest, FailedTransfersLeaveNothingBehind) {
  const QByteArray program(100000, 'p');
  const struct {
    const char* name;
    WebServer::Answer answer;
  } cases[] = {
      {"not found", {.status = "404 Not Found", .body = program}},
      {"only a part", {.status = "206 Partial Content", .body = program}},
      {"server error", {.status = "500 Oops", .body = "sorry"}},
      {"error page that never ends",
       {.status = "500 Oops", .body = program, .sentOnly = 50000, .closes = false}},
      {"redirect to nowhere", {.status = "302 Found", .headers = "Location: /none\r\n"}},
      {"redirect in a circle",
       {.status = "302 Found", .headers = "Location: /update/brindle.exe\r\n"}},
      {"redirect to a file", {.status = "302 Found", .headers = "Location: file:///etc/fstab\r\n"}},
      {"cut short", {.body = program, .sentOnly = 50000}},
      {"nothing after the headers", {.body = program, .sentOnly = 0}},
      {"stalls", {.body = program, .sentOnly = 50000, .closes = false}},
      {"never answers", {.silent = true}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Open(kShortPatienceMs);
    ASSERT_TRUE(Offered());
    server.Serve(kProgram, c.answer);
    EXPECT_TRUE(ClickLeadsTo(kError));
    EXPECT_FALSE(Button().isEnabled());
    ExpectNoHandOver();
    // The check fails in the same way.
    Open(kShortPatienceMs);
    server.Serve(kList, c.answer);
    EXPECT_TRUE(ClickLeadsTo(kError));
    ExpectNoHandOver();
  }
}

TEST_F(UpdaterHttpTest, AFileOfAnotherDigestIsNotKept) {
  server.Serve(kList, {.body = "[version]\nminor=6\nsha256=" + QByteArray(64, '0') + "\n"});
  ASSERT_TRUE(ClickLeadsTo("Update available, see below."));
  server.Serve(kProgram, {.body = "something else"});
  EXPECT_TRUE(ClickLeadsTo(
      "The downloaded file is not the announced one, so it was not kept. Try again later."));
  ExpectNoHandOver();
}

TEST_F(UpdaterHttpTest, NoServerAtAll) {
  QTcpServer closed;
  ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
  const std::string address = "127.0.0.1:" + std::to_string(closed.serverPort());
  closed.close();
  desk = std::make_unique<UpdateDesk>(nullptr, settings, dialogs,
                                      UpdateDeskOptions{folder.path().toStdString(), address, {}},
                                      [] {});
  desk->cmdCheckForUpdate_Click();
  EXPECT_TRUE(ClickLeadsTo(kError));
}

TEST_F(UpdaterHttpTest, ALongDownloadShowsItsProgress) {
  constexpr qint64 kSize = 50 * 1024 * 1024;
  ASSERT_TRUE(Offered());
  server.Serve(kProgram, {.body = QByteArray(1 << 20, 'p'), .bodySize = kSize});
  auto& bar = Find<QProgressBar>("barFileTransfer");
  std::string status;
  qint64 sent = 0;
  When([&] { return bar.value() >= 20; },
       [&] {
         status = Status();
         sent = server.BytesSent();
       });
  EXPECT_TRUE(ClickLeadsTo("Downloading Complete"));
  EXPECT_EQ(status, "Downloading File....");
  // Real progress, and little kept in memory: what was sent is not far ahead of what was shown.
  EXPECT_LT(sent, kSize / 2);
  EXPECT_EQ(QFileInfo(folder.filePath("update/brindle.exe")).size(), kSize);
}

TEST_F(UpdaterHttpTest, TheWindowMayBeClosedInTheMiddle) {
  ASSERT_TRUE(Offered());
  server.Serve(kProgram, {.body = QByteArray(100000, 'p'), .sentOnly = 50000, .closes = false});
  bool stopped = false;
  When([&] { return Find<QProgressBar>("barFileTransfer").value() > 40; },
       [&] {
         desk->Window()->close();
         EXPECT_FALSE(desk->Window()->isVisible());
         EXPECT_EQ(Mark(), "");
         EXPECT_FALSE(QFile::exists(folder.filePath("update/brindle.exe")));
         // Opened again, it shows the transfer that still runs.
         desk->cmdCheckForUpdate_Click();
         EXPECT_EQ(Status(), "Downloading File....");
         EXPECT_FALSE(Button().isEnabled());
         Click("cmdClose");
         // The program ends.
         desk->Stop();
         stopped = true;
       });
  Click("cmdUpdate");
  ASSERT_TRUE(WaitUntil([&] { return stopped; }, kBoundMs));
  ExpectNoHandOver();
}

TEST_F(UpdaterHttpTest, DeskAndMainWindowMayGoInAnyOrder) {
  for (const bool deskFirst : {false, true}) {
    for (const bool transferRuns : {false, true}) {
      SCOPED_TRACE(testing::Message() << "desk first: " << deskFirst << " runs: " << transferRuns);
      auto main = std::make_unique<QWidget>();
      Open(kBoundMs, main.get());
      const auto go = [&] {
        if (deskFirst) desk.reset();
        main.reset();
        desk.reset();
      };
      if (transferRuns) {
        ASSERT_TRUE(Offered());
        server.Serve(kProgram,
                     {.body = QByteArray(100000, 'p'), .sentOnly = 50000, .closes = false});
        When([&] { return Find<QProgressBar>("barFileTransfer").value() > 40; }, go);
        Click("cmdUpdate");
        ASSERT_TRUE(WaitUntil([&] { return main == nullptr; }, kBoundMs));
        ExpectNoHandOver();
      } else {
        go();
      }
    }
  }
}

TEST_F(UpdaterHttpTest, LeftoversOfAKilledRunAreSwept) {
  ASSERT_TRUE(QDir(folder.path()).mkpath("update"));
  for (const char* name : {"brindle.exe.aB3xYz", "glimmerpad.exe", "updater.exe", "mine.txt"}) {
    QFile file(folder.filePath("update/") + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  ASSERT_TRUE(Offered());
  EXPECT_EQ(UpdateFiles(), QStringList("mine.txt"));
}

}  // namespace
}  // namespace brindle::test
