#include "irc/connection.h"

#include "base/random.h"
#include "base/text.h"
#include "settings/product.h"

namespace brindle {
namespace {

constexpr char kDisconnectedLine[] = "\r\n\0034Disconnected...";
constexpr int kHighestPort = 65535;
constexpr int kHighestNickNumber = 999;

std::string Farewell(const std::string& room) {
  return "PRIVMSG " + room + " :\0031I was using \0034" + VersionText() +
         "\0031 (a server helper). To learn more visit " + kWebAddress;
}

}  // namespace

void Connection::SendRaw(std::string_view line) {
  wsChat_.Send(std::string(FirstLine(line)) + std::string(kCrLf));
}

void Connection::cmdConnect_Click(const ConnectFields& fields) {
  if (caption_ == ConnectCaption::kConnect) {
    Connect(fields);
  } else {
    Disconnect();
  }
}

void Connection::Connect(const ConnectFields& fields) {
  if (IsBlank(fields.nick)) {
    dialogs_.Notice(Icon::kInformation, "Please enter your desired Nick.");
    return;
  }
  if (IsBlank(fields.server) || IsBlank(fields.port)) {
    dialogs_.Notice(Icon::kInformation, "Please select a server / port.");
    return;
  }
  fields_ = fields;
  session_.altNickUsed = false;
  quitSent_ = false;
  SetButton(ConnectCaption::kDisconnect, false);
  view_.SetNickFieldsEnabled(false);
  wsChat_.Close();
  queue_.QueueLine("\r\n\0033* Connecting to " + fields.server, Kind::kStatus);
  view_.SetStatusPanel("Status - Connecting...");
  session_.connectionState = ConnectionState::kConnecting;
  session_.currentRoom.clear();
  const std::optional<long long> port = WholeNumber(fields.port, 1, kHighestPort);
  if (!port) {
    wsChat_Error("The port must be a number from 1 to " + std::to_string(kHighestPort) + ".");
    return;
  }
  wsChat_.Connect(std::string(TrimBlanks(fields.server)), static_cast<int>(*port));
}

void Connection::Disconnect() {
  SetButton(ConnectCaption::kConnect, true);
  if (!session_.currentRoom.empty()) SendRaw(Farewell(session_.currentRoom));
  SendRaw("QUIT");
  quitSent_ = true;
}

void Connection::wsChat_Connect() {
  SendRaw("NICK " + fields_.nick);
  // The fourth parameter is the last, so it needs no colon in front (RFC 1459, section 4.1.3).
  SendRaw("USER plenty of excellent qel_" + VersionNumber());
  view_.SetLoginStatus("Status - Connected : Logging in");
}

void Connection::wsChat_DataArrival(std::string_view received) {
  receiver_->Parse_Response(received, session_.currentNick);
}

void Connection::wsChat_Error(const std::string& description) {
  if (IsEndExpected()) {
    EndQuietly();
    return;
  }
  display_.Insert("\r\n* ERROR : " + description + "\r\n", kPureRed, ChatTarget::kStatus);
  queue_.QueueLine(kDisconnectedLine, Kind::kDisconnected);
  wsChat_.Close();
  EndSession();
}

void Connection::wsChat_Close() {
  if (IsEndExpected()) {
    EndQuietly();
  } else {
    wsChat_Error("The server closed the connection.");
  }
}

bool Connection::IsEndExpected() const {
  return quitSent_ || session_.connectionState == ConnectionState::kDisconnected;
}

void Connection::EndQuietly() {
  // A closing notice has said it already.
  if (session_.connectionState != ConnectionState::kDisconnected) {
    queue_.QueueLine(kDisconnectedLine, Kind::kDisconnected);
  }
  wsChat_.Close();
  EndSession();
}

void Connection::Welcomed() {
  session_.connectedSince = clock_.Ticks();
  SetButton(ConnectCaption::kDisconnect, true);
  view_.SetNickFieldsEnabled(true);
  view_.SetStatusPanel("Status - Connected");
  view_.SetLoginStatus("Status - Connected");
  view_.SetWindowCaption(VersionText() + " [NICK : " + session_.currentNick + "]");
  session_.connectionState = ConnectionState::kRegistered;
}

void Connection::NickInUse(const std::string& text) {
  queue_.QueueLine("\r\n\0034" + text, Kind::kStatus);
  if (!IsBlank(fields_.alternateNick) && !session_.altNickUsed) {
    session_.altNickUsed = true;
  } else {
    fields_.alternateNick = "Brindle" + std::to_string(RandomBetween(1, kHighestNickNumber));
    view_.SetAlternateNick(fields_.alternateNick);
  }
  SendRaw("NICK " + fields_.alternateNick);
}

void Connection::BannedFromServer(const std::string& text) {
  queue_.QueueLine("\r\n\0034" + text, Kind::kStatus);
  SetButton(ConnectCaption::kConnect, true);
}

void Connection::ClosingNotice() {
  queue_.QueueLine(kDisconnectedLine, Kind::kDisconnected);
  EndSession();
}

void Connection::EndSession() {
  session_.connectionState = ConnectionState::kDisconnected;
  session_.currentRoom.clear();
  SetButton(ConnectCaption::kConnect, true);
  view_.SetStatusPanel("Status - Disconnected");
  view_.SetLoginStatus("Status - Disconnected");
  view_.SetWindowCaption(VersionText());
  view_.SetNickFieldsEnabled(true);
}

void Connection::SetButton(ConnectCaption caption, bool enabled) {
  caption_ = caption;
  view_.SetConnectButton(caption, enabled);
}

}  // namespace brindle
