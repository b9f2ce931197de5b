#pragma once
// A whole IRC session without window, network or time: what the program joins, on a stage.

#include <algorithm>
#include <string>

#include "irc/channels.h"
#include "irc/outgoing_text.h"
#include "irc/response_parser.h"
#include "irc/room_voice.h"
#include "irc/send_queue.h"
#include "irc/who_list.h"
#include "mail/request_stack.h"
#include "support/memory_files.h"
#include "support/stage.h"

namespace brindle {

struct ChatStage : Stage {
  ChatStage() {
    connection.SetReceiver([this](std::string_view received, std::string& currentNick) {
      parser.Parse_Response(received, currentNick);
    });
    parser.OnRefusedLine([this](const std::string& reason) { stack.LineRefused(reason); });
    options.timestampChatLines = false;
    Watch(queue);
  }
  ChatStage(const ChatStage&) = delete;
  ChatStage& operator=(const ChatStage&) = delete;

  // A click on the connect button, and the socket comes up. Ends any session before.
  void Dial() {
    if (connection.ButtonCaption() == ConnectCaption::kDisconnect) connection.wsChat_Error("");
    connection.cmdConnect_Click(fields);
    open = true;
    connection.wsChat_Connect();
  }
  // Registered as "me"; nothing of it left in the journal.
  void Register() {
    Dial();
    Receive(":srv 001 me :Welcome");
    Taken();
  }
  // Registered, and in "#room" together with "@op" and "bob".
  void EnterRoom() {
    Register();
    Receive(":me!u@h JOIN :#room");
    Receive(":srv 353 me = #room :@op bob");
    Taken();
    sentAt.clear();
  }
  void Receive(std::string_view line) { connection.wsChat_DataArrival(std::string(line) + "\r\n"); }
  // Time passes, as the desks let it.
  void Wait(int milliseconds) {
    for (const TickCount end = ticks + milliseconds; ticks < end;) {
      ticks += std::min<TickCount>(10, end - ticks);
      lines.tmrSend_Timer();
      stack.tmrRequest_Timer();
      connection.tmrConnect_Timer();
    }
  }

  // State, nick, room and who's here: "2 me #room: @op bob".
  std::string State() const {
    const auto& nicks = who.Nicks().Items();
    return std::to_string(static_cast<int>(session.connectionState)) + " " + session.currentNick +
           " " + session.currentRoom + ": " + JoinFrom({nicks.begin(), nicks.end()}, 0, " ");
  }

  ConnectFields fields{"me", "other", "irc.example", "6667"};
  Options options;
  Session session;
  OutputQueue queue;
  WhoList who;
  MemoryFiles files;
  SettingsFile settings{files, "ini"};
  SecureServers secure{settings};
  Connection connection{session, *this,
                        queue,   {*this, *this, *this},
                        *this,   {options, secure, "http://www.brindle.example"}};
  SendQueue lines{session, connection, *this};
  RoomVoice voice{session, lines, {queue, *this}, {options, *this}};
  ResponseParser parser{session, connection, lines, who, {queue, *this}, {options, *this}};
  Channels channels{session, connection, options, *this, *this};
  OutgoingText outgoing{connection, voice, {queue, *this}, {options, *this}, *this};
  RequestStack stack{session, voice, lines, *this, *this};
};

// A row of a table: what is done, and what comes of it.
struct Deed {
  const char* name;
  std::function<void(ChatStage&)> act;
  std::string journal;
};

}  // namespace brindle
