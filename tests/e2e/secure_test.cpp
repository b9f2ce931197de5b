// TLS and proxies, with real servers and real proxies.

#include <QCheckBox>
#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTcpServer>

#include "meeting.h"
#include "platform/network.h"

namespace brindle::test {
namespace {

struct SecureTest : testing::TestWithParam<IrcServer::Kind> {
  SecureTest() {
    server.UseTls();
    if (!server.Start()) ADD_FAILURE() << server.Error().toStdString();
    window.ShowTab(Tab::kConnection);
    window.Click("chkConnectTls");
    EXPECT_EQ(window.Text("txtConnectPort"), "6697");
  }
  QSslCertificate Certificate() const {
    QFile file(server.CertificatePath());
    return file.open(QIODevice::ReadOnly) ? QSslCertificate(&file) : QSslCertificate();
  }
  // The box that was shown last.
  std::string LastQuestion() { return window.Boxes().questions.back().text; }

  IrcServer server{GetParam()};
  WindowDriver window{{kRoom}};
};

TEST_P(SecureTest, ACertificateIsTrustedOnceAskedAndAnotherIsNot) {
  const std::string untrusted = "The certificate of 127.0.0.1 is not to be trusted";
  window.Connect("Wanda", "", server.TlsPort());
  EXPECT_TRUE(HasEnded(window, untrusted));
  const std::string fingerprint =
      Certificate().digest(QCryptographicHash::Sha256).toHex(':').toUpper().toStdString();
  EXPECT_NE(LastQuestion().find("SHA-256: " + fingerprint), std::string::npos) << LastQuestion();
  // Trusted now, and from then on without a question.
  window.Boxes().questionAnswers = {true};
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(window.Register("Wanda", server.TlsPort()));
    EXPECT_TRUE(window.ShowsInStatus("* Secured by TLS"));
    window.Leave();
    ASSERT_TRUE(window.Tells("barStatusPanel1", "Status - Disconnected"));
  }
  EXPECT_EQ(window.Boxes().questions.size(), 2U);
  server.Kill();
  server.UseTls();
  ASSERT_TRUE(server.Start());
  window.Connect("Wanda", "", server.TlsPort());
  EXPECT_TRUE(window.Tells("lblConnectTrouble", untrusted));
  EXPECT_EQ(LastQuestion().find("127.0.0.1 shows another certificate than the one that you "), 0U);
}

TEST_P(SecureTest, ACertificateOfAKnownMakerNeedsNoQuestionForItsHost) {
  const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
  QSslConfiguration knows = before;
  knows.addCaCertificate(Certificate());
  QSslConfiguration::setDefaultConfiguration(knows);
  EXPECT_TRUE(window.Register("Wanda", server.TlsPort()));
  EXPECT_TRUE(window.Boxes().questions.empty());
  window.Leave();
  EXPECT_TRUE(window.Tells("barStatusPanel1", "Status - Disconnected"));
  window.Connect("Wanda", "", server.TlsPort(), "localhost");
  EXPECT_TRUE(window.Tells("lblConnectTrouble", "host name did not match"));
#ifndef Q_OS_WIN  // where Wine's handshake with a certificate of ours does not come to its end
  // InspIRCd tells of a certificate of ours; any will do, so that of the server does.
  if (GetParam() == IrcServer::Kind::kInspircd) {
    ConnectionOptions& options = window.App().Settings().connection;
    QFile key(server.KeyPath());
    ASSERT_TRUE(key.open(QIODevice::ReadOnly));
    window.Folder().Write("mine.pem", (Certificate().toPem() + key.readAll()).toStdString());
    options.proof = AccountProof::kCertificate;
    options.certificatePath = window.Folder().File("mine.pem").toStdString();
    EXPECT_TRUE(window.Register("Wanda", server.TlsPort()));
    EXPECT_TRUE(window.ShowsInRoom("client certificate fingerprint is " +
                                   Certificate().digest(QCryptographicHash::Sha256).toHex()));
  }
#endif
  QSslConfiguration::setDefaultConfiguration(before);
}

INSTANTIATE_TEST_SUITE_P(Servers, SecureTest,
                         testing::Values(IrcServer::Kind::kNgircd, IrcServer::Kind::kInspircd),
                         [](const auto& server) {
                           return server.index == 0 ? "ngIRCd" : "InspIRCd";
                         });

TEST(NoTls, IsNeverMadeUpForByPlainText) {
  ScriptedServer server;
  WindowDriver window;
  window.ShowTab(Tab::kConnection);
  window.Click("chkConnectTls");
  window.Connect("Wanda", "", server.Port());
  ASSERT_TRUE(WaitUntil([&] { return server.HasPeer(); }));
  // Some see at once that this is no TLS, others wait for more until the server gives up.
  server.Send(":s NOTICE * :hello\r\n");
  server.Close();
  EXPECT_TRUE(HasEnded(window, ""));
  EXPECT_EQ(server.Received().find("NICK"), std::string::npos);
}

// What a download through the proxy comes to; `web` answers it, if it is asked.
HttpState Fetched(ScriptedServer& web, const ConnectionOptions& options,
                  const std::string& secret) {
  const auto client = NativeHttpClient(NetworkHttpClient::kPatienceMilliseconds);
  client->SetConnection(options, secret);
  auto last = HttpState::kConnecting;
  client->SetListener([&](HttpState state) { last = state; });
  client->Execute("http://127.0.0.1:" + std::to_string(web.Port()) + "/list");
  WaitUntil([&] { return last > HttpState::kRequesting || !web.Received().empty(); });
  if (!web.TakeReceivedUpTo("").empty()) web.Send("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
  WaitUntil([&] { return last > HttpState::kRequesting; });
  return last;
}

// The way to a server leads through the proxy, or nowhere.
TEST(Proxies, CarryTheSessionAndLookUpNames) {
  QTcpServer probe;
  probe.listen(QHostAddress::LocalHost);
  const QString port = QString::number(probe.serverPort());
  probe.close();
  DataFolder folder;
  folder.Write("http.conf", "Port " + port.toStdString() +
                                "\nListen 127.0.0.1\nMaxClients 9\nBasicAuth wanda sesame1\n");
  const char* const socks = "/usr/bin/microsocks";
  const QStringList open = {"-i", "127.0.0.1", "-p", port};
  const QStringList closed = open + QStringList{"-u", "wanda", "-P", "s\u00E9same"};
  // With the password that each wants, if it wants one.
  const std::tuple<ProxyKind, const char*, QStringList, const char*> proxies[] = {
      {ProxyKind::kSocks5, socks, open, ""},
      {ProxyKind::kSocks5, socks, closed, "s\u00E9same"},
      {ProxyKind::kHttp,
       "/usr/bin/tinyproxy",
       {"-d", "-c", PathForCompanions(folder.File("http.conf"))},
       "sesame1"},
  };
  IrcServer server(IrcServer::Kind::kNgircd);
  ASSERT_TRUE(server.Start()) << server.Error().toStdString();
  ScriptedServer web;
  for (const auto& [kind, program, arguments, secret] : proxies) {
    SCOPED_TRACE(std::string(program) + " " + secret);
    WindowDriver window;
    ConnectionOptions& options = window.App().Settings().connection;
    options.proxy = kind;
    options.proxyAddress = "127.0.0.1";
    EXPECT_EQ(Fetched(web, options, ""), HttpState::kError) << "without a port";
    options.proxyAddress += ":" + port.toStdString();
    window.Connect("Wanda", "", server.Port());
    EXPECT_TRUE(window.Tells("lblConnectTrouble", "roxy")) << "without the proxy";
    Companion proxy(Companion::User::kSame);
    proxy.Start(program, arguments);
    EXPECT_TRUE(WaitUntil([&] {
      QTcpSocket socket;
      socket.connectToHost(QHostAddress::LocalHost, port.toUShort());
      return socket.waitForConnected(500);
    }));
    const auto typePassword = [&](const char* password) {
      emit window.App().Window().OptionsControls().SecretTyped(Secret::kProxyPassword, password);
    };
    for (const char* wrong : {"", "sesame"}) {
      if (*secret == '\0') break;
      typePassword(wrong);
      window.Connect("Wanda", "", server.Port());
      EXPECT_TRUE(
          window.Tells("lblConnectTrouble", "The proxy does not take this user and password"))
          << window.Status();
      EXPECT_EQ(Fetched(web, options, wrong), HttpState::kProxyRefused);
      options.proxyUser = "wanda";
    }
    typePassword(secret);
    ASSERT_TRUE(window.Register("Wanda", server.Port())) << window.Status();
    EXPECT_EQ(Fetched(web, options, secret), HttpState::kResponseCompleted);
    proxy.Kill();
    EXPECT_TRUE(window.Tells("barStatusPanel1", "Status - Disconnected"));
  }
}

}  // namespace
}  // namespace brindle::test
