#pragma once
// Everything about the one IRC session: joins the socket, the parser, the display queue, the rooms
// and what the user says to the main window.

#include <QTimer>
#include <functional>
#include <memory>
#include <string>

#include "app/machine.h"
#include "irc/channels.h"
#include "irc/connection.h"
#include "irc/irc_address.h"
#include "irc/irc_servers.h"
#include "irc/line_pump.h"
#include "irc/outgoing_text.h"
#include "irc/output_queue.h"
#include "irc/response_parser.h"
#include "irc/room_voice.h"
#include "irc/send_queue.h"
#include "irc/session.h"
#include "irc/who_list.h"
#include "platform/network.h"
#include "ui/frm_main.h"

namespace brindle {

class ChatDesk {
 public:
  // All must outlive the desk. `webAddress` is told to others in the farewell.
  ChatDesk(FrmMain& window, const StoredThings& stored, const Machine& machine,
           const std::string& webAddress);

  const Session& CurrentSession() const { return session_; }
  OutputQueue& Queue() { return queue_; }
  RoomVoice& Voice() { return voice_; }
  SendQueue& Lines() { return lines_; }
  ResponseParser& Parser() { return parser_; }
  const WhoList& Who() const { return who_; }
  Channels& Rooms() { return channels_; }
  IrcServers& Servers() { return servers_; }

  // Asked for the account's password when a server wants it.
  void SetPassword(std::function<std::string()> password) {
    parser_.Agreement().SetPassword(std::move(password));
  }
  // The same for the password of the proxy's user.
  void SetProxyPassword(std::function<std::string()> password) {
    wsChat_->SetProxyPassword(std::move(password));
  }
  // Looks at every line before it is shown.
  void SetScanner(LineScan scan) { pump_.SetScanner(std::move(scan)); }
  // Called with every turn of the send queue while it is busy.
  void OnTurn(std::function<void()> turn) { turn_ = std::move(turn); }

  // The session starts idle, and from then on lines are shown.
  void Reset();
  void StartReceiveTimer() { window_.AttachPump(pump_, queue_); }

  // Connects to a server, unless another session goes on, and enters the room after the welcome.
  void GoTo(const IrcAddress& address);

  // Says farewell where a session goes on, gives it the time to leave the machine, and closes the
  // socket.
  void Close();

 private:
  FrmMain& window_;
  SecureServers secure_;
  Session session_;
  OutputQueue queue_;
  const std::unique_ptr<NetworkChatSocket> wsChat_ = NativeChatSocket();
  WhoList who_;
  LinePump pump_;
  Connection connection_;
  SendQueue lines_;
  RoomVoice voice_;
  ResponseParser parser_;
  Channels channels_;
  IrcServers servers_;
  OutgoingText outgoing_;
  QTimer tmrSend_;
  QTimer tmrConnect_;
  std::function<void()> turn_;
};

}  // namespace brindle
