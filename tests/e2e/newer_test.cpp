// Newer servers, with the options that make use of them: a real InspIRCd.

#include <QAbstractItemView>
#include <QFile>
#include <QSslCertificate>

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
  // What was said before is shown, as the server keeps it.
  bot.Send("MODE #mailroom +H 700:1d");
  ASSERT_TRUE(window.Join(1));
  bot.Say(kRoom, "meanwhile");
  ASSERT_TRUE(window.Join(0) && window.ShowsInRoom("] <MailBot> meanwhile"));

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

}  // namespace
}  // namespace brindle::test
