#include "irc/connection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/session_fixture.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;

constexpr char kEnded[] = "7|^C4Disconnected...";

class ConnectionTest : public testing::Test, protected SessionFixture {
 protected:
  void ExpectEnded() {
    EXPECT_EQ(session.connectionState, ConnectionState::kDisconnected);
    EXPECT_EQ(session.currentRoom, "");
    EXPECT_EQ(window.button, "Connect");
    EXPECT_EQ(window.statusPanel, "Status - Disconnected");
    EXPECT_EQ(window.caption, "Brindle v0.5.85");
    EXPECT_TRUE(window.nickFieldsEnabled);
  }
};

TEST_F(ConnectionTest, RefusesEmptyFields) {
  const char* const nick = "Please enter your desired Nick.";
  const char* const server = "Please select a server / port.";
  const struct {
    ConnectFields fields;
    const char* refusal;
  } table[] = {
      {{"", "", "", ""}, nick},          {{"  ", "x", "host", "6667"}, nick},
      {{"me", "", "", "6667"}, server},  {{"me", "", "  ", "6667"}, server},
      {{"me", "", "host", " "}, server},
  };
  for (const auto& row : table) {
    dialogs.notices.clear();
    connection.cmdConnect_Click(row.fields);
    EXPECT_EQ(dialogs.notices, (std::vector{FakeDialogs::Shown{Icon::kInformation, row.refusal}}));
  }
  EXPECT_EQ(socket.log, Texts{});
  EXPECT_EQ(TakeQueued(), Texts{});
  EXPECT_EQ(State(), "0  ");
  EXPECT_EQ(window.button, "Connect");
}

TEST_F(ConnectionTest, ConnectsAndRegisters) {
  fields = {" my nick ", "", " irc.example ", " 6697 "};
  connection.cmdConnect_Click(fields);
  EXPECT_EQ(socket.log, (Texts{"close", "connect irc.example 6697"}));
  EXPECT_EQ(TakeQueued(), Texts{"1|^C3* Connecting to  irc.example "});
  EXPECT_EQ(State(), "1  ");
  EXPECT_EQ(window.button, "Disconnect (disabled)");
  EXPECT_EQ(window.statusPanel, "Status - Connecting...");
  EXPECT_FALSE(window.nickFieldsEnabled);

  socket.open = true;
  connection.wsChat_Connect();
  EXPECT_EQ(socket.TakeSent(), (Texts{"NICK  my nick ", "USER plenty of excellent qel_0.5.85"}));
  EXPECT_EQ(window.loginStatus, "Status - Connected : Logging in");

  Receive(":srv 001 my :Welcome: you\r\n");
  EXPECT_EQ(TakeQueued(), Texts{"6|Welcome: you"});
  EXPECT_EQ(State(), "2 my ");
  EXPECT_EQ(session.connectedSince, clock.ticks);
  EXPECT_EQ(window.button, "Disconnect");
  EXPECT_EQ(window.statusPanel, "Status - Connected");
  EXPECT_TRUE(window.nickFieldsEnabled);
}

TEST_F(ConnectionTest, RefusesPortsThatAreNone) {
  for (const char* port : {"0", "-1", "65536", "66 67", "irc", "6667x", "+1", "1.5",
                           "99999999999999999999999999999999999999999"}) {
    fields.port = port;
    status.TakeText();
    connection.cmdConnect_Click(fields);
    EXPECT_EQ(socket.TakeLog(), (Texts{"close", "close"})) << port;
    EXPECT_EQ(status.text, "\r\n* ERROR : The port must be a number from 1 to 65535.\r\n");
    EXPECT_EQ(TakeQueued(), (Texts{"1|^C3* Connecting to irc.example", kEnded}));
    ExpectEnded();
  }
}

TEST_F(ConnectionTest, OffersOtherNicksUntilOneIsFree) {
  const auto refuse = [this] {
    ForgetRecords();
    Receive(":srv 433 * me :Nickname: in use\r\n");
    EXPECT_EQ(TakeQueued(), Texts{"1|^C4Nickname: in use"});
    return socket.sent.size() == 1 ? socket.sent[0] : "not one line";
  };
  const auto isNumbered = [this](const std::string& sent) {
    EXPECT_EQ(sent, "NICK " + window.alternateNick);
    EXPECT_TRUE(window.alternateNick.starts_with("Brindle")) << window.alternateNick;
    const std::string digits = window.alternateNick.substr(7);
    return !digits.starts_with('0') && WholeNumber(digits, 1, 999).has_value();
  };
  Connect();
  EXPECT_EQ(refuse(), "NICK other");
  EXPECT_EQ(window.alternateNick, "as typed");
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(isNumbered(refuse()));
  EXPECT_EQ(session.connectionState, ConnectionState::kConnecting);

  // Each attempt begins anew, with what the fields hold then.
  connection.wsChat_Error("x");
  fields.alternateNick = "third";
  Connect();
  EXPECT_EQ(refuse(), "NICK third");
  connection.wsChat_Error("x");
  fields.alternateNick = "  ";
  Connect();
  EXPECT_TRUE(isNumbered(refuse()));
}

TEST_F(ConnectionTest, SaysFarewellAndQuits) {
  Register();
  connection.cmdConnect_Click(fields);
  EXPECT_EQ(socket.TakeSent(), Texts{"QUIT"});
  EXPECT_EQ(window.button, "Connect");
  EXPECT_EQ(State(), "2 me ");
  EXPECT_EQ(socket.log, Texts{});

  EnterRoom();
  connection.cmdConnect_Click(fields);
  EXPECT_EQ(
      socket.TakeSent(),
      (Texts{"PRIVMSG #room :\0031I was using \0034Brindle v0.5.85\0031 (a server helper). To "
             "learn more visit http://www.brindle.example",
             "QUIT"}));
}

TEST_F(ConnectionTest, TellsTheEndOfASessionOnce) {
  const std::string closing = "ERROR :Closing Link: me (Quit)\r\n";
  const auto quit = [this] { connection.cmdConnect_Click(fields); };
  const auto close = [this] { connection.wsChat_Close(); };
  const struct {
    const char* name;
    std::function<void()> end;
    const char* status;  // written at once
  } table[] = {
      {"error", [&] { connection.wsChat_Error("Reset:\nby peer"); },
       "\r\n* ERROR : Reset: by peer\r\n"},
      {"unannounced", close, "\r\n* ERROR : The server closed the connection.\r\n"},
      {"notice", [&] { Receive(closing), close(); }, ""},
      {"quit", [&] { quit(), close(); }, ""},
      {"quit and notice", [&] { quit(), Receive(closing), close(); }, ""},
  };
  for (const auto& row : table) {
    EnterRoom();
    status.TakeText();
    row.end();
    EXPECT_EQ(status.text, row.status) << row.name;
    EXPECT_EQ(TakeQueued(), Texts{kEnded}) << row.name;
    EXPECT_EQ(socket.log, Texts{"close"}) << row.name;
    ExpectEnded();
  }
  // An old QUIT does not make the next session's end a quiet one.
  EnterRoom();
  status.TakeText();
  close();
  EXPECT_NE(status.text, "");
}

TEST_F(ConnectionTest, ResetsTheButtonForTheBanned) {
  Connect();
  ForgetRecords();
  Receive(":srv 465 me :You are banned: from here\r\n");
  EXPECT_EQ(TakeQueued(), Texts{"1|^C4You are banned: from here"});
  EXPECT_EQ(window.button, "Connect");
}

TEST_F(ConnectionTest, SendsOneLineWhateverIsInIt) {
  using std::string_literals::operator""s;
  Register();
  for (const std::string& end : {""s, "\rQUIT"s, "\nQUIT"s, "\0QUIT"s, "\r\n"s}) {
    connection.SendRaw("PRIVMSG #r :x" + end);
    EXPECT_EQ(socket.TakeSent(), Texts{"PRIVMSG #r :x"});
  }
  fields.nick = "me\r\nJOIN #x";
  connection.wsChat_Error("x");
  Connect();
  EXPECT_EQ(socket.TakeSent().at(0), "NICK me");
}

}  // namespace
}  // namespace brindle
