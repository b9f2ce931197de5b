// The update window with a real HTTP server on loopback and real files: what the journal of the
// updater's own test cannot show.

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>
#include <limits>

#include "app/update_desk.h"
#include "platform/native.h"
#include "support/fake_dialogs.h"
#include "support/wait.h"

namespace brindle::test {
namespace {

constexpr int kBoundMs = 5000;
constexpr int kShortMs = 300;
constexpr char kList[] = "/update/brindle.txt";
constexpr char kProgram[] = "/update/brindle.exe";
constexpr char kOffer[] = "Update available, see below.";
constexpr char kError[] = "An error has occured. Try again later.";
constexpr char kComplete[] = "Downloading Complete";

struct Answer {
  QByteArray body = {};
  QByteArray status = "200 OK";  // and further lines; empty for a server that says nothing
  qsizetype sentOnly = std::numeric_limits<qsizetype>::max();  // bytes of the body
  bool closes = true;  // after that; a server that does not close stalls
  bool lengthStated = true;
};

Answer To(const QByteArray& address) { return {"", "302 Found\r\nLocation: " + address}; }

// A server on loopback whose answers, and whose faults, a test chooses.
struct WebServer : QTcpServer {
  WebServer() {
    connect(this, &QTcpServer::newConnection, this, [this] {
      QTcpSocket* const socket = nextPendingConnection();
      connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
      connect(socket, &QTcpSocket::readyRead, this, [this, socket] { Reply(*socket); });
    });
    if (!listen(QHostAddress::LocalHost)) qFatal("no port to listen on");
  }
  void Reply(QTcpSocket& socket) const {
    if (!socket.peek(kLongestHead).endsWith("\r\n\r\n")) return;
    const Answer answer = answers.value(socket.readAll().split(' ').value(1));
    if (answer.status.isEmpty()) return;
    QByteArray head = "HTTP/1.1 " + answer.status + "\r\nConnection: close\r\n";
    if (answer.lengthStated) head += "Content-Length: " + QByteArray::number(answer.body.size());
    socket.write(head.trimmed() + "\r\n\r\n" + answer.body.left(answer.sentOnly));
    if (answer.closes) socket.disconnectFromHost();
  }
  // What the network has not taken yet.
  qint64 Unsent() const {
    qint64 unsent = 0;
    for (const auto* socket : findChildren<QTcpSocket*>()) unsent += socket->bytesToWrite();
    return unsent;
  }
  static constexpr qint64 kLongestHead = 9999;
  QHash<QByteArray, Answer> answers;  // by their paths
};

class UpdaterHttpTest : public testing::Test {
 protected:
  // Opens the window anew.
  void Open(int patience = kBoundMs, QWidget* parent = nullptr) {
    const UpdateDeskOptions options{.dataFolder = folder.path().toStdString(),
                                    .server = "127.0.0.1:" + std::to_string(server.serverPort()),
                                    .own = {0, 5, 70},
                                    .programFolder = folder.path().toStdString(),
                                    .patienceMilliseconds = patience};
    desk = std::make_unique<UpdateDesk>(parent, settings, dialogs, options, [this] { ++ended; });
    desk->cmdCheckForUpdate_Click();
  }

  template <typename Widget>
  Widget& Find(const char* name) {
    return *desk->Window()->findChild<Widget*>(name);
  }
  std::string Text(const char* label) { return Find<QLabel>(label).text().toStdString(); }
  void Click(const char* name) { QTest::mouseClick(&Find<QPushButton>(name), Qt::LeftButton); }

  // What the status becomes after the click; another text if it does not become that.
  std::string Clicked(const std::string& expected) {
    Click("cmdUpdate");
    WaitUntil([&] { return Text("lblStatus") == expected; }, kBoundMs);
    return Text("lblStatus");
  }
  // As far as the button "Download Update".
  void Offer(const QByteArray& moreOfTheList = "") {
    server.answers[kList] = {"[version]\nminor=6\n" + moreOfTheList};
    ASSERT_EQ(Clicked(kOffer), kOffer);
  }

  // Acts once as soon as so much is shown, while the transfer waits in its own event loop.
  void WhenShown(int percent, std::function<void()> act) {
    auto* watch = new QTimer(&watches);
    QObject::connect(watch, &QTimer::timeout, watch, [=, this] {
      if (Find<QProgressBar>("barFileTransfer").value() < percent) return;
      watch->stop();
      act();
    });
    watch->start(0);
  }

  std::string Content(const QString& name) {
    return files.Read(folder.filePath(name).toStdString()).value_or("");
  }
  void Make(const QString& name, const char* content = "") {
    ASSERT_TRUE(files.Replace(folder.filePath(name).toStdString(), content));
  }
  QStringList UpdateFiles() { return QDir(folder.filePath("update")).entryList(QDir::Files); }

  QObject watches;
  QTemporaryDir folder;
  WebServer server;
  FakeDialogs dialogs;
  NativeFiles files;
  SettingsFile settings{files, folder.filePath("brindle.ini").toStdString()};
  int ended = 0;
  std::unique_ptr<UpdateDesk> desk;
};

TEST_F(UpdaterHttpTest, Transfers) {
  const QByteArray program = QByteArray("MZ\0\r\n\x1A", 6).repeated(5000);
  const QByteArray digest = QCryptographicHash::hash(program, QCryptographicHash::Sha256).toHex();
  const struct {
    const char* name;
    const char* status;
    QByteArray announced;
    Answer answer;
  } rows[] = {
      {"plain", kComplete, digest.toUpper(), {program}},
      {"no length", kComplete, digest, {.body = program, .lengthStated = false}},
      {"redirect", kComplete, "", To("/moved")},
      {"not found", kError, "", {program, "404 Not Found"}},
      {"only a part", kError, digest, {program, "206 Partial Content"}},
      {"error page that never ends", kError, "", {program, "500 Oops", 9, false}},
      {"redirect in a circle", kError, "", To(kProgram)},
      {"redirect to a file", kError, "", To("file:///etc/fstab")},
      {"cut short", kError, "", {program, "200 OK", 9999}},
      {"stalls", kError, "", {program, "200 OK", 9999, false}},
      {"never answers", kError, "", {.status = "", .closes = false}},
  };
  server.answers["/moved"] = {program};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const bool whole = row.status == kComplete;
    const bool stalls = !row.answer.closes && row.answer.sentOnly != 9;
    Open(stalls ? kShortMs : kBoundMs * 2);
    Offer("sha256=" + row.announced);
    server.answers[kProgram] = row.answer;
    EXPECT_EQ(Clicked(row.status), row.status);
    EXPECT_FALSE(Find<QPushButton>("cmdUpdate").isEnabled());
    EXPECT_TRUE(Content("update/brindle.exe") == (whole ? program.toStdString() : ""));
    EXPECT_EQ(UpdateFiles().size(), whole ? 1 : 0);
    // There is no updater program in the folder.
    EXPECT_EQ(std::exchange(dialogs.notices, {}).size(), whole ? 2U : 0U);
    QDir(folder.filePath("update")).removeRecursively();
  }
  EXPECT_EQ(ended, 0);
}

TEST_F(UpdaterHttpTest, EnterTakesTheOfferAndTheUpdaterProgramIsToldWhereItIs) {
#ifdef Q_OS_WIN
  GTEST_SKIP() << "The updater is a script here; with a program, tests/windows/files_test.cpp.";
#endif
  ASSERT_TRUE(QDir(folder.path()).mkpath("update"));
  for (const char* name : {"brindle.exe.aB3xYz", "glimmerpad.exe", "updater.exe", "mine.txt"}) {
    Make(QString("update/") + name);
  }
  Make("updater", "#!/bin/sh\nprintf %s \"$*\" >told.part && mv told.part told\n");
  QFile::setPermissions(folder.filePath("updater"), QFile::ReadOwner | QFile::ExeOwner);
  Open();
  EXPECT_EQ(desk->Window()->windowTitle(), "Update Check");
  EXPECT_TRUE(desk->Window()->isModal());
  Offer("[size]\nkb=2\n[news]\nnews=Better <b>maps</b>\n");
  EXPECT_EQ(Find<QPushButton>("cmdUpdate").text(), "&Download Update");
  EXPECT_EQ(Text("lblProgress"), "Update to v0.6.0; 2kb; 0s on a 56k modem");
  EXPECT_EQ(Text("lblNews"), "Better <b>maps</b>");
  EXPECT_EQ(Find<QLabel>("lblNews").textFormat(), Qt::PlainText);
  EXPECT_EQ(UpdateFiles(), QStringList("mine.txt"));
  server.answers[kProgram] = {"program"};
  QTest::keyClick(desk->Window(), Qt::Key_Enter);
  EXPECT_TRUE(WaitUntil([&] { return !Content("told").empty(); }, kBoundMs));
  EXPECT_EQ(Content("told"), folder.filePath("update/brindle.exe").toStdString());
  EXPECT_EQ(ended, 1);
}

TEST_F(UpdaterHttpTest, ALongDownloadShowsItsProgressAndGoesOnBehindAClosedWindow) {
  constexpr qint64 kSize = 50 * 1024 * 1024;
  Open();
  Offer();
  server.answers[kProgram] = {QByteArray(kSize, 'p')};
  WhenShown(20, [&] {
    // Little is kept in memory: what was sent is not far ahead of what is shown.
    EXPECT_GT(server.Unsent(), kSize / 2);
    desk->Window()->close();
    EXPECT_FALSE(desk->Window()->isVisible());
    desk->cmdCheckForUpdate_Click();
    EXPECT_EQ(Text("lblStatus"), "Downloading File....");
    Click("cmdClose");
    EXPECT_FALSE(desk->Window()->isVisible());
  });
  EXPECT_EQ(Clicked(kComplete), kComplete);
  EXPECT_EQ(QFileInfo(folder.filePath("update/brindle.exe")).size(), kSize);
}

TEST_F(UpdaterHttpTest, DeskAndMainWindowMayGoInAnyOrder) {
  server.answers[kProgram] = {QByteArray(9999, 'p'), "200 OK", 5000, false};
  for (const int order : {0, 1, 2, 3}) {
    const bool transferRuns = order > 1;
    auto main = std::make_unique<QWidget>();
    Open(kBoundMs, main.get());
    const auto go = [&] {
      if (order % 2 == 1) desk.reset();
      main.reset();
      desk.reset();
    };
    if (transferRuns) Offer();
    transferRuns ? WhenShown(40, go) : go();
    if (transferRuns) Click("cmdUpdate");
    EXPECT_TRUE(WaitUntil([&] { return main == nullptr; }, kBoundMs));
    EXPECT_EQ(UpdateFiles(), QStringList());
  }
}

}  // namespace
}  // namespace brindle::test
