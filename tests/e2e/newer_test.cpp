// Newer servers, with the options that make use of them: a real InspIRCd.

#include <QAbstractItemView>
#include <QElapsedTimer>
#include <QFile>
#include <QSslCertificate>
#include <QTime>
#include <set>

#include "base/time_text.h"
#include "meeting.h"

namespace brindle::test {
namespace {

TEST(NewerTest, OwnLinesComeBackAndARefusedRequestIsCheckedAgain) {
  IrcServer server{IrcServer::Kind::kInspircd};
  ASSERT_TRUE(server.Start()) << server.Error().toStdString();
  Meeting meeting;
  auto& [window, bot] = meeting;
  window.App().Settings().useNewerProtocol = true;
  window.App().Settings().timestampChatLines = true;
  window.App().Settings().askAbsentServer = true;
  window.App().Settings().answerCtcp = true;
  ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port()));
  window.ShowTab(Tab::kRoom);
  window.Type("cmbSend", "hello");
  window.Press("cmbSend", Qt::Key_Return);
  EXPECT_TRUE(window.ShowsInRoom("] <Wanda> hello"));
  EXPECT_TRUE(window.Tells("barStatusPanel1", "Status - Connected"));

  const auto& who = *window.Find<QAbstractItemView>("lstWho").model();
  const auto botIs = [&](const QString& words) {
    const auto told = [&] {
      const QModelIndex row = who.index(0, 0);
      return row.data(Qt::AccessibleDescriptionRole).toString() + "; " +
             row.data(Qt::ToolTipRole).toString();
    };
    return WaitUntil([&] { return told() == words; }, 5000);
  };
  EXPECT_EQ(window.Items("lstWho"), "@MailBot Wanda");
  bot.Send("AWAY :asleep");
  EXPECT_TRUE(botIs("Operator, away; Away"));
  bot.Send("AWAY");
  EXPECT_TRUE(botIs("Operator; "));

  window.Folder().Write("mails.txt", "!MailBot send x y\r\n1 A\r\n2 B\r\n3 C\r\n4 D\r\n");
  window.LoadList(window.Folder().File("mails.txt"));
  window.Type("txtListAOLSN", "JaneD");
  window.ClickCheckBox(0);
  window.Click("cmdRequest");
  EXPECT_TRUE(window.ShowsInRoom("] <Wanda> !MailBot send JaneD 1"));
  bot.Send("MODE #mailroom +m");
  ASSERT_TRUE(bot.WaitForLine(" MODE #mailroom "));
  window.ClickCheckBox(2);
  window.Click("cmdRequest");
  EXPECT_TRUE(window.ShowsInRoom("] <Wanda> !MailBot send JaneD 3 (refused: "));
  EXPECT_EQ(window.Checked(), "3");
  bot.Say("Wanda", "\001VERSION\001");
  EXPECT_TRUE(bot.WaitForLine(" NOTICE MailBot :\001VERSION Brindle v0.5.85"));
  EXPECT_TRUE(window.Boxes().questions.empty());
  bot.Send("PART #mailroom");
  ASSERT_TRUE(WaitUntil([&] { return window.Items("lstWho") == "Wanda"; }));
  window.Click("cmdRequest");
  ASSERT_EQ(window.Boxes().questions.size(), 1U);
  EXPECT_EQ(window.Checked(), "3");
  // But for the refusal, nothing was told that Brindle does not know.
  EXPECT_EQ(Count(window.Status(), "NOT PARSED") + Count(window.Status(), "IS NUMERIC"), 1);
}

TEST(NewerTest, AnAccountIsProvenOrTheAttemptEnds) {
  IrcServer server{IrcServer::Kind::kInspircd};
  server.UseTls();
  server.UseServices();
  ASSERT_TRUE(server.Start()) << server.Error().toStdString();
  RawClient owner("Owner");
  owner.Begin(server.Port());
  ASSERT_TRUE(owner.WaitForWelcome());
  owner.Say("NickServ", "REGISTER sesame1 owner@brindle.test");
  ASSERT_TRUE(owner.WaitForLine(" 900 "));

  WindowDriver window;
  ConnectionOptions& options = window.App().Settings().connection;
  options.proof = AccountProof::kPassword;
  options.account = "Owner";
  const auto setPassword = [&](const QString& password) {
    emit window.App().Window().OptionsControls().SecretTyped(Secret::kAccountPassword, password);
  };
  setPassword("open");
  window.Boxes().questionAnswers = {true};  // to trust the server, which asks for TLS
  window.Connect("Wanda", "", server.Port());
  // Two programs take part in the answer, which may take its time on a busy machine.
  ASSERT_TRUE(window.Tells("lblConnectTrouble", "Account refused: SASL authentication failed"))
      << window.Status();
  EXPECT_TRUE(HasEnded(window, "Account refused", 2));
  setPassword("sesame1");
  ASSERT_TRUE(window.Register("Wanda", server.Port()));
  EXPECT_TRUE(window.ShowsInStatus("You are now logged in as Owner"));
  EXPECT_EQ(Count(window.Status(), "sesame1") + Count(window.Status(), "AUTHENTICATE"), 0);
  window.Leave();
  ASSERT_TRUE(window.Tells("barStatusPanel1", "Status - Disconnected"));

#ifdef Q_OS_WIN
  GTEST_SKIP() << "With a certificate of ours Wine's handshake does not come to its end.";
#endif
  // A certificate that the account knows; any will do, so that of the server does.
  QFile certificate(server.CertificatePath());
  QFile key(server.KeyPath());
  ASSERT_TRUE(certificate.open(QIODevice::ReadOnly) && key.open(QIODevice::ReadOnly));
  const QByteArray pem = certificate.readAll();
  owner.Say(
      "NickServ",
      "CERT ADD " + QSslCertificate(pem).digest(QCryptographicHash::Sha256).toHex().toStdString());
  ASSERT_TRUE(owner.WaitForLine(" to your "));
  owner.Send("QUIT");  // these services want the account free
  ASSERT_TRUE(owner.WaitForLine("ERROR "));
  window.Folder().Write("mine.pem", (pem + key.readAll()).toStdString());
  options.proof = AccountProof::kCertificate;
  options.certificatePath = window.Folder().File("mine.pem").toStdString();
  ASSERT_TRUE(window.Register("Wanda", server.Port()));
  EXPECT_EQ(Count(window.Status(), "You are now logged in as Owner"), 2);
}

TEST(NewerTest, WhatWasSaidBeforeIsShownWithItsTimeAndCaughtUpWith) {
  IrcServer server{IrcServer::Kind::kInspircd};
  server.UseOddClock();
  ASSERT_TRUE(server.Start()) << server.Error().toStdString();
  RawClient bot("MailBot");
  bot.Begin(server.Port());
  ASSERT_TRUE(bot.WaitForWelcome() && bot.Join(kRoom));
  bot.Send("MODE #mailroom +H 700:1d");
  // The server's, as the program shows it.
  const auto now = [&] {
    bot.Send("TIME");
    EXPECT_TRUE(bot.WaitForLine(" 391 "));
    const QTime time = QTime::fromString(QString::fromStdString(bot.Found()).right(8), "HH:mm:ss");
    std::tm local{};
    local.tm_hour = time.hour();
    local.tm_min = time.minute();
    return ClockText(local);
  };
  // Says three hundred lines, and waits for another minute; the times at which they may be said.
  int said = 0;
  const auto sayMany = [&] {
    const std::string before = now();
    for (const int end = said + 300; said < end; ++said) {
      bot.Say(kRoom, "line " + std::to_string(said) + ".");
    }
    const std::string after = now();
    EXPECT_TRUE(WaitUntil([&] { return now() != after; }));
    return std::set{before, after};
  };
  const std::set<std::string> times[] = {sayMany(), sayMany()};
  for (const bool catchUp : {false, true}) {
    WindowDriver window({kRoom});
    Options& options = window.App().Settings();
    options.useNewerProtocol = options.timestampChatLines = true;
    options.catchUp = catchUp;
    ASSERT_TRUE(window.Register("Wanda", server.Port()));
    QElapsedTimer waited;
    waited.start();
    window.AskToJoin(0);
    EXPECT_TRUE(window.ShowsInRoom("line 599."));
    // One a tick takes six seconds.
    EXPECT_EQ(waited.elapsed() < 5900, catchUp) << waited.elapsed();
    const std::string room = window.Room();
    for (const int line : {0, 299, 300, 599}) {
      const size_t end = room.find("] <MailBot> line " + std::to_string(line) + ".");
      const size_t begin = room.rfind('[', end) + 1;
      EXPECT_TRUE(times[line / 300].contains(room.substr(begin, end - begin)))
          << room.substr(begin, 40);
    }
    window.Leave();
    ASSERT_TRUE(window.ShowsInRoom(kGone));
    // The farewell, as the server relays it; the second time the one before is history.
    EXPECT_EQ(Count(window.Room(), "<Wanda> I was using"), catchUp ? 2 : 1);
  }
}

// This machine by its IPv6 address; by the other one where there is none.
QString NewerLoopback() {
  QTcpServer probe;
  return probe.listen(QHostAddress::LocalHostIPv6) ? "[::1]" : "127.0.0.1";
}

TEST(NewerTest, NickServIsToldWhereTheServerHasNoAccounts) {
  IrcServer server{IrcServer::Kind::kNgircd};
  ASSERT_TRUE(server.Start()) << server.Error().toStdString();
  RawClient nickServ("NickServ");
  nickServ.Begin(server.Port());
  ASSERT_TRUE(nickServ.WaitForWelcome());
  WindowDriver window;
  Options& options = window.App().Settings();
  options.useNewerProtocol = options.tellNickServ = true;
  options.connection.proof = AccountProof::kPassword;
  options.connection.account = "Owner";
  emit window.App().Window().OptionsControls().SecretTyped(Secret::kAccountPassword, "sesame1");
  ASSERT_TRUE(window.Register("Wanda", server.Port(), NewerLoopback()));
  EXPECT_TRUE(nickServ.WaitForLine(" PRIVMSG NickServ :IDENTIFY Owner sesame1"));
  EXPECT_EQ(Count(window.Status() + window.Room(), "sesame1"), 0);
}

}  // namespace
}  // namespace brindle::test
