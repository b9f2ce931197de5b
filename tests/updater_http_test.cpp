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
    const Answer answer = answers.value(socket.readAll().split(' ').value(1));
    if (answer.status.isEmpty()) return;
    QByteArray head = "HTTP/1.1 " + answer.status + "\r\nConnection: close\r\n";
    if (answer.lengthStated) head += "Content-Length: " + QByteArray::number(answer.body.size());
    socket.write(head.trimmed() + "\r\n\r\n" + answer.body.left(answer.sentOnly));
    if (answer.closes) socket.disconnectFromHost();
  }
  QHash<QByteArray, Answer> answers;  // by their paths
};

struct UpdaterHttpTest : testing::Test {
  // Opens the window anew.
  void Open(int patience = kBoundMs, QWidget* parent = nullptr) {
    const UpdateDeskOptions options{.dataFolder = folder.path().toStdString(),
                                    .server = address,
                                    .key = key,
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

  // After a click, the status.
  bool Becomes(const std::string& expected) {
    Click("cmdUpdate");
    return WaitUntil([&] { return Text("lblStatus") == expected; }, kBoundMs);
  }
  // As far as the button "Download Update".
  void Offer(const QByteArray& moreOfTheList = "") {
    server.answers[kList] = {"[version]\nminor=6\n" + moreOfTheList};
    ASSERT_TRUE(Becomes("Update available, see below."));
  }

  std::string Content(const QString& name) {
    return files.Read(folder.filePath(name).toStdString()).value_or("");
  }
  QStringList UpdateFiles() { return QDir(folder.filePath("update")).entryList(QDir::Files); }

  QTemporaryDir folder;
  WebServer server;
  std::string address = "127.0.0.1:" + std::to_string(server.serverPort());
  FakeDialogs dialogs;
  NativeFiles files;
  SettingsFile settings{files, folder.filePath("brindle.ini").toStdString()};
  int ended = 0;
  std::string key;
  std::unique_ptr<UpdateDesk> desk;
};

TEST_F(UpdaterHttpTest, GoesThroughTheChosenProxy) {
  ConnectionOptions options;
  options.proxy = ProxyKind::kHttp;
  // A name that only the proxy knows.
  options.proxyAddress = std::exchange(address, "update.invalid");
  Open();
  desk->SetConnection(options, "");
  server.answers[QByteArray("http://update.invalid") + kList] = {"[version]\nminor=6\n"};
  EXPECT_TRUE(Becomes("Update available, see below."));
}

TEST_F(UpdaterHttpTest, Transfers) {
  const QByteArray program = QByteArray("MZ\0\r\n\x1A", 6).repeated(5000);
  const QByteArray digest = QCryptographicHash::hash(program, QCryptographicHash::Sha256).toHex();
  // Its name, whether the whole program comes, the digest that is announced, and what is answered.
  const std::tuple<const char*, bool, QByteArray, Answer> rows[] = {
      {"plain", true, digest.toUpper(), {program}},
      {"no length", true, digest, {.body = program, .lengthStated = false}},
      {"redirect", true, "", To("/moved")},
      {"only a part", false, digest, {program, "206 Partial Content"}},
      {"error page that never ends", false, "", {program, "500 Oops", 9, false}},
      {"redirect to a file", false, "", To("file:///etc/fstab")},
      {"cut short", false, "", {program, "200 OK", 9999}},
      {"stalls", false, "", {program, "200 OK", 9999, false}},
      {"never answers", false, "", {.status = "", .closes = false}},
  };
  server.answers["/moved"] = {program};
  for (const auto& [name, whole, announced, answer] : rows) {
    SCOPED_TRACE(name);
    Open(answer.closes ? kBoundMs * 2 : kShortMs);
    Offer("sha256=" + announced);
    server.answers[kProgram] = answer;
    EXPECT_TRUE(Becomes(whole ? "Downloading Complete" : "An error has occured. Try again later."));
    EXPECT_FALSE(Find<QPushButton>("cmdUpdate").isEnabled());
    EXPECT_TRUE(Content("update/brindle.exe") == (whole ? program.toStdString() : ""));
    EXPECT_EQ(UpdateFiles().size(), whole ? 1 : 0);
    QDir(folder.filePath("update")).removeRecursively();
  }
  EXPECT_EQ(ended, 0);  // there is no updater program in the folder
}

// Signed as docs/UPDATES.md tells, with a key of which nothing else is kept.
TEST_F(UpdaterHttpTest, ASignatureHoldsForOneListAndOneKey) {
  const QByteArray list =
      "[version]\nminor=6\n"
      "sha256=1310ca2c8932dbd118668bd97442558a3e1f546b5e15c69699dfbd6024f548d8\n";
  const QByteArray signature =
      "h7bJ+vE0vEuPHO8eXbvAfvBKEoTcB48mUmqc8VU+otYLW/iFd96YT4grQJsDgnt0egzngUvISgGP039LUPYaCA==";
  const std::string good = "ZaCkA+m7VhIcFqzHNyn+QqRBa8H4yprVjgqGaQiLqw4=";
  const std::string refused =
      "The update list has no valid signature, so nothing is updated. Try again later.";
  const struct {
    std::string key;
    QByteArray list;
    Answer signature;
    std::string status;
  } rows[] = {
      {good, list, {signature + "\n"}, "Update available, see below."},
      {good, list + " ", {signature}, refused},
      {good, list, {signature.left(80)}, refused},
      {"YaCkA+m7VhIcFqzHNyn+QqRBa8H4yprVjgqGaQiLqw4=", list, {signature}, refused},
      {"no key", list, {signature}, refused},
  };
  for (const auto& row : rows) {
    key = row.key;
    Open();
    server.answers[kList] = {row.list};
    server.answers["/update/brindle.txt.sig"] = row.signature;
    EXPECT_TRUE(Becomes(row.status)) << Text("lblStatus");
    EXPECT_EQ(UpdateFiles(), QStringList());
  }
}

TEST_F(UpdaterHttpTest, EnterTakesTheOfferAndTheUpdaterProgramIsToldWhereItIs) {
#ifdef Q_OS_WIN
  GTEST_SKIP() << "The updater is a script here; with a program, tests/windows/files_test.cpp.";
#endif
  ASSERT_TRUE(QDir(folder.path()).mkpath("update"));
  for (const char* name : {"update/brindle.exe.aB3xYz", "update/updater.exe", "update/mine.txt"}) {
    files.Replace(folder.filePath(name).toStdString(), "");
  }
  files.Replace(folder.filePath("updater").toStdString(),
                "#!/bin/sh\nprintf %s \"$*\" >told.part && mv told.part told\n");
  QFile::setPermissions(folder.filePath("updater"), QFile::ReadOwner | QFile::ExeOwner);
  Open();
  EXPECT_TRUE(desk->Window()->isModal());
  Offer("[news]\nnews=Better <b>maps</b>\n");
  EXPECT_EQ(Text("lblNews"), "Better <b>maps</b>");
  EXPECT_EQ(Find<QLabel>("lblNews").textFormat(), Qt::PlainText);
  EXPECT_EQ(UpdateFiles(), QStringList("mine.txt"));
  server.answers[kProgram] = {"program"};
  QTest::keyClick(desk->Window(), Qt::Key_Enter);
  EXPECT_TRUE(WaitUntil([&] { return !Content("told").empty(); }, kBoundMs));
  EXPECT_EQ(Content("told"), folder.filePath("update/brindle.exe").toStdString());
  EXPECT_EQ(ended, 1);
}

TEST_F(UpdaterHttpTest, DeskAndMainWindowMayGoInAnyOrder) {
  server.answers[kProgram] = {QByteArray(9999, 'p'), "200 OK", 5000, false};
  for (const bool transferRuns : {false, true}) {
    for (const bool deskFirst : {false, true}) {
      auto main = std::make_unique<QWidget>();
      Open(kBoundMs, main.get());
      QTimer going;  // while the transfer waits in its own event loop
      going.callOnTimeout([&] {
        if (Find<QProgressBar>("barFileTransfer").value() < (transferRuns ? 40 : 0)) return;
        going.stop();
        if (deskFirst) desk.reset();
        main.reset();
        desk.reset();
      });
      if (transferRuns) Offer();
      going.start(0);
      if (transferRuns) Click("cmdUpdate");
      EXPECT_TRUE(WaitUntil([&] { return main == nullptr; }, kBoundMs));
      EXPECT_EQ(UpdateFiles(), QStringList());
    }
  }
}

}  // namespace
}  // namespace brindle::test
