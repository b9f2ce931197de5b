// Newer servers, with the options that make use of them: a real InspIRCd.

#include <QAbstractItemView>
#include <QFile>
#include <QSslCertificate>
#include <QTime>

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

TEST(NewerTest, WhatWasSaidBeforeIsShownWithItsTime) {
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
  const std::string soon = now();
  bot.Say(kRoom, "line");
  const std::string later = now();
  WindowDriver window({kRoom});
  Options& options = window.App().Settings();
  options.useNewerProtocol = options.timestampChatLines = true;
  ASSERT_TRUE(window.Register("Wanda", server.Port()) && window.Join(0));
  const std::string line = "] <MailBot> line";
  EXPECT_TRUE(window.ShowsInRoom(line.c_str()));
  const std::string room = window.Room();
  EXPECT_TRUE(room.find("[" + soon + line) != room.npos ||
              room.find("[" + later + line) != room.npos)
      << room;
  window.Leave();
  ASSERT_TRUE(window.ShowsInRoom(kGone));
  EXPECT_EQ(Count(window.Room(), "<Wanda> I was using"), 1);  // as the server relays it
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
