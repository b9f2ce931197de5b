#pragma once
// A whole IRC session without window, network or time: what the program joins, over fakes.

#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "irc/channels.h"
#include "irc/connection.h"
#include "irc/line_pump.h"
#include "irc/output_queue.h"
#include "irc/response_parser.h"
#include "irc/session.h"
#include "irc/who_list.h"
#include "settings/options.h"
#include "support/fake_clock.h"
#include "support/fake_dialogs.h"
#include "support/fake_socket.h"
#include "support/fake_views.h"

namespace brindle {

// A display text made readable: "^C" for the colour mark, "|" for a line break.
inline std::string Readable(std::string_view text) {
  std::string readable = JoinFrom(Split(text, "\003"), 0, "^C");
  return JoinFrom(Split(readable, kCrLf), 0, "|");
}

// The rule that an own join and the end of a names reply draw.
inline const std::string kRule =
    "|^C15-----^C14----------^C15----------------------------------------^C14----------^C15-----";

struct SessionFixture {
  SessionFixture() {
    connection.SetReceiver(parser);
    options.timestampChatLines = false;
  }
  SessionFixture(const SessionFixture&) = delete;
  SessionFixture& operator=(const SessionFixture&) = delete;

  // A click on the connect button, and the socket comes up. Ends any session before.
  void Connect() {
    if (connection.ButtonCaption() == ConnectCaption::kDisconnect) connection.wsChat_Error("");
    connection.cmdConnect_Click(fields);
    socket.open = true;
    connection.wsChat_Connect();
  }

  // Registered as "me"; nothing of it left in the records.
  void Register() {
    Connect();
    Receive(":srv 001 me :Welcome\r\n");
    ForgetRecords();
  }

  // Registered, and in "#room" together with "@op" and "bob".
  void EnterRoom() {
    Register();
    Receive(":me!u@h JOIN :#room\r\n");
    Receive(":srv 353 me = #room :@op bob\r\n");
    ForgetRecords();
  }

  void Receive(std::string_view text) { connection.wsChat_DataArrival(text); }

  // Every pending line as its kind and its readable text: "1|^C3* Connecting to irc.example".
  std::vector<std::string> TakeQueued() {
    std::vector<std::string> lines;
    while (queue.Pending() > 0) {
      const OutputQueue::Line line = queue.Take();
      lines.push_back(std::to_string(static_cast<int>(line.kind)) + Readable(line.text));
    }
    return lines;
  }

  // State, nick and room: "2 me #room".
  std::string State() const {
    return std::to_string(static_cast<int>(session.connectionState)) + " " + session.currentNick +
           " " + session.currentRoom;
  }

  void ForgetRecords() {
    TakeQueued();
    socket.TakeSent();
    socket.TakeLog();
  }

  ConnectFields fields{"me", "other", "irc.example", "6667"};
  Options options;
  Session session;
  FakeClock clock;
  FakeDialogs dialogs;
  FakeSocket socket;
  FakeWindow window;
  FakeChatView status;
  FakeChatView room;
  FakeSounds sounds;
  OutputQueue queue;
  WhoList who;
  ChatColours display{status, room, options};
  LinePump pump{queue, session, options, display, window, sounds, clock};
  Connection connection{session, socket, queue, display, window, dialogs, clock};
  ResponseParser parser{session, connection, queue, pump, who, window, options, clock};
  Channels channels{session, connection, options, window, dialogs};
};

}  // namespace brindle
