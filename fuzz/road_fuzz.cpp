// A whole session that receives any bytes, cut anywhere, while the user clicks and types: what goes
// out, and that nobody but the user caused it.

#include <set>

#include "fuzz/input.h"
#include "irc/arrival_cutter.h"
#include "support/talk_stage.h"

namespace brindle {
namespace {

using fuzz::Bytes;
using fuzz::Require;

constexpr char kMark[] = "\x7F";

struct Road : TalkStage {
  void Send(std::string_view bytes) override {
    Require(bytes.ends_with(kCrLf), "no line end", bytes);
    const std::string_view line = bytes.substr(0, bytes.size() - kCrLf.size());
    const std::string_view ends("\r\n\0", 3);
    Require(line.find_first_of(ends) == std::string_view::npos, "a line in a line", bytes);
    Require(line.substr(line.starts_with('@') ? line.find(' ') + 1 : 0).size() <= kLongestLine,
            "a line too long", bytes);
    if (receiving) RequireUnasked(line);
    TrackTyped(line);
  }

  // What the server may make us say by itself.
  void RequireUnasked(std::string_view line) const {
    const bool isNew = options.useNewerProtocol || options.connection != ConnectionOptions();
    bool known = isNew && (line.starts_with("CAP ") || line.starts_with("AUTHENTICATE ") ||
                           line.starts_with("WHO "));
    for (const char* start : {"PONG :", "WHOIS ", "PART "}) known |= line.starts_with(start);
    // Before the welcome: other nicks; with it, the room that the user chose meanwhile.
    for (const char* start : {"NICK ", "USER ", "JOIN #chosen"}) known |= line.starts_with(start);
    // Coming back, the room that we were in.
    known |= options.reconnect && line.starts_with("JOIN ") && rooms.contains(line.substr(5));
    known |= options.answerCtcp && line.starts_with("NOTICE ");
    known |= options.tellNickServ && line.starts_with("PRIVMSG NickServ :IDENTIFY ");
    Require(known, "nobody asked for this", line);
  }

  // Typed lines carry their number, behind a mark that nothing else holds.
  void TrackTyped(std::string_view line) {
    const size_t mark = line.find(std::string(":") + kMark);
    if (mark == std::string_view::npos || !line.starts_with("PRIVMSG ")) return;
    const long long number = LeadingNumber(line.substr(mark + 2));
    Require(number >= lastTyped, "typed lines out of order", line);
    lastTyped = number;
  }

  static std::string Typed(Bytes& input) { return RemoveChars(input.Text(), kMark); }

  void Act(Bytes& input) {
    switch (input.Byte() % 12) {
      case 0: {
        const std::string text = kMark + std::to_string(++typed) + " " + Typed(input);
        return outgoing.cmdSend_Click(text, static_cast<int>(input.Byte() % 7));
      }
      case 1:
        return outgoing.cmdSend_Click(Typed(input), 1);
      case 2:
        return Wait(static_cast<int>(input.Byte()) * 8);
      case 3:
        Fill(input.Text());
        return requests.cmdRequest_Click(Typed(input), Typed(input));
      case 4:
        fields.tls = input.Byte() % 2 == 1;
        connection.cmdConnect_Click(fields);
        open = input.Byte() % 8 != 0;
        isSecure = fields.tls;
        if (open && session.connectionState == ConnectionState::kConnecting) {
          cutter.Reset();
          connection.wsChat_Connect();
        }
        return;
      case 5:
        return input.Byte() % 2 == 0 ? connection.wsChat_Close() : connection.wsChat_Error("x");
      case 6:
        return connection.EnterRoom("#chosen");
      case 7:
        return stack.Stop();
      case 8:
        commands.mnuCommandsList_Click({Typed(input), Typed(input), Typed(input)});
        return;
      default: {
        const std::string bytes = input.Text();
        receiving = true;
        cutter.Receive(bytes, [this](std::string_view line) {
          if (open) connection.wsChat_DataArrival(line);
        });
        receiving = false;
        // The pump's turn: a line that announces a server may ask for a code.
        for (const OutputQueue::Line& line : std::exchange(shown, {})) {
          receiving = !options.requestAccessCode;
          Scan(line);
          receiving = false;
        }
      }
    }
  }

  ArrivalCutter cutter;
  std::vector<OutputQueue::Line> shown;
  std::set<std::string, std::less<>> rooms;
  bool receiving = false;
  int typed = 0;
  long long lastTyped = 0;
};

}  // namespace

void fuzz::Try(Bytes input) {
  Road road;
  const unsigned bits = input.Byte();
  road.options.useNewerProtocol = (bits & 1U) != 0;
  road.options.answerCtcp = (bits & 2U) != 0;
  road.options.reconnect = (bits & 4U) != 0;
  road.options.requestAccessCode = (bits & 8U) != 0;
  road.options.connection.proof = static_cast<AccountProof>((bits >> 4U) % 3);
  road.options.tellNickServ = (bits & 128U) != 0;
  road.onLine = [&road](const OutputQueue::Line& line) { road.shown.push_back(line); };
  road.EnterRoom();
  while (!input.IsEmpty()) {
    road.rooms.emplace(FirstLine(road.session.currentRoom));
    road.Act(input);
    road.Taken();
  }
  for (const std::string& nick : road.who.Nicks().Items()) {
    Require(!nick.empty() && nick.find(' ') == std::string::npos, "a nick of no one", nick);
  }
  Require(!road.queue.IsBusy(), "the queue stays busy");
}

}  // namespace brindle
