#pragma once
// A whole IRC session without window, network or time: what the program joins, on a stage, and then
// everything that says something in a room.

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <string>

#include "irc/channels.h"
#include "irc/outgoing_text.h"
#include "irc/response_parser.h"
#include "irc/room_voice.h"
#include "irc/send_queue.h"
#include "irc/who_list.h"
#include "mail/manual_request.h"
#include "mail/request_stack.h"
#include "mail/requests.h"
#include "mail/server_commands.h"
#include "mail/server_detection.h"
#include "mail/server_handles.h"
#include "support/mail_stage.h"
#include "support/memory.h"
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
  // Does what a text says: "dial; :srv 001 me :Hi; wait 100; quit"; a line is received.
  void Do(std::string_view steps) {
    for (const std::string_view step : Split(steps, "; ")) {
      const size_t blank = step.find(' ');
      const std::string_view word = step.substr(0, blank);
      const std::string what(step.substr(std::min(blank + 1, step.size())));
      if (word == "dial") Dial();
      if (word == "register") Register();
      if (word == "enter") EnterRoom();
      if (word == "quit") connection.cmdConnect_Click(fields);
      if (word == "to") connection.cmdConnect_Click({"", "", what, "6667"});  // without a nick
      if (word == "cancel") connection.cmdConnectCancel_Click();
      if (word == "close") connection.wsChat_Close();
      if (word == "error") connection.wsChat_Error(what);
      if (word == "stop") connection.Stop();
      if (word == "room") connection.EnterRoom(what);
      if (word == "wait") Wait(std::stoi(what));
      if (word == "taken") Taken();
      if (word == "-") Note("-");
      if (word == "reconnect" || word == "stay") options.reconnect = word == "reconnect";
      if (word == "no") options.enterRoomUponAdding = false;
      if (word.starts_with(':') || word == "ERROR") Receive(step);
    }
  }
  // Time passes, as the desks let it.
  void Wait(int milliseconds) {
    for (const TickCount end = ticks + milliseconds; ticks < end;) {
      ticks += std::min<TickCount>(10, end - ticks);
      lines.tmrSend_Timer();
      stack.tmrRequest_Timer();
      connection.tmrConnect_Timer();
    }
  }

  // State, nick, room, who's here and the topic: "2 me #room: @op bob (all about it)".
  std::string State() const {
    const auto& nicks = who.Nicks().Items();
    return std::to_string(static_cast<int>(session.connectionState)) + " " + session.currentNick +
           " " + session.currentRoom + ": " + JoinFrom({nicks.begin(), nicks.end()}, 0, " ") +
           (session.topic.empty() ? "" : " (" + session.topic + ")");
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

inline const char* const kEnterFirst = "hint Enter a room first: double-click one in the channels.";

// What a line that is said writes, with its echo.
inline std::string Said(const std::string& text, const char* kind = "2") {
  return "> PRIVMSG #room :" + text + "\n" + kind + "|^C1<me> " + text;
}

inline std::string Joined(std::initializer_list<std::string> parts) {
  std::string joined;
  for (const std::string& part : parts) joined += (joined.empty() ? "" : "\n") + part;
  return joined;
}

struct TalkStage : ChatStage {
  // One row a character, numbered from 1; "x" is checked.
  void Fill(const std::string& checks) {
    list.Clear();
    for (size_t row = 0; row < checks.size(); ++row) {
      list.Append(std::to_string(row + 1), "Title");
      list.SetChecked(row, checks[row] == 'x');
    }
  }
  std::string Checks() const { return ChecksOf(list); }
  void Click() { requests.cmdRequest_Click("My Name", "Bot"); }
  void Request(const std::string& checks) {
    Fill(checks);
    Click();
  }
  // What was asked for in the journal, and the hints: "1-3 5 [Requests sent: 2]".
  std::string Asked() {
    std::string asked;
    const std::string start = "> PRIVMSG #room :!Bot send My Name ";
    const std::string taken = Taken();
    for (const std::string_view words : Split(taken, "\n")) {
      const bool hint = words.starts_with("hint ");
      if (!hint && !words.starts_with(start)) continue;
      asked += (asked.empty() ? "" : " ") + (hint ? "[" + std::string(words.substr(5)) + "]"
                                                  : std::string(words.substr(start.size())));
    }
    return asked;
  }
  void Scan(const OutputQueue::Line& line) { detection.Scan(line.text, line.origin); }

  MailList list;
  ServerPresence presence{who, options, *this};
  Requests requests{list, stack, voice, presence, options, *this};
  ManualRequest manual{stack, voice, presence, *this};
  ServerCommands commands{voice, *this};
  ServerHandles handles{*this};
  std::string screenName = "Jane D";
  ServerDetection detection{voice, queue, {options, *this}, handles, [this] { return screenName; }};
};

// In "#room" from the beginning.
struct RoomStage : TalkStage {
  RoomStage() { EnterRoom(); }
};

}  // namespace brindle
