#pragma once
// Judges a session on any received bytes: hands them on line by line and, cut into small packets,
// through the arrival cutter, and compares what became of both; looks at every line sent and at all
// that reaches the views. Used by a test and by the fuzzer.

#include <string>
#include <string_view>
#include <vector>

#include "base/encoding.h"
#include "irc/arrival_cutter.h"
#include "support/session_fixture.h"

namespace brindle {

// The lines sent, with the random number of an alternate nick taken off.
inline std::vector<std::string> ComparableSent(FakeSocket& socket) {
  std::vector<std::string> sent = socket.TakeSent();
  for (std::string& line : sent) {
    if (line.starts_with("NICK Brindle")) line.resize(12);
  }
  return sent;
}

// Empty when `line` is one that a received line may cause, else what is wrong.
inline std::string WrongWithSentLine(const std::string& line) {
  using std::string_literals::operator""s;
  if (line.find_first_of("\r\n\0"s) != std::string::npos) return "more than a line sent";
  for (const char* start : {"PONG :", "WHOIS ", "PART ", "NICK "}) {
    if (line.starts_with(start)) return "";
  }
  return "sent: " + line;
}

// Empty when `shown` is what may reach a view for the queued `text`, else what is wrong. A private
// message has a second line, our own; nothing else may look like a line.
inline std::string WrongWithShownText(std::string_view text, std::string_view shown) {
  const std::vector<std::string_view> queuedLines = Split(text, kCrLf);
  const std::vector<std::string_view> shownLines = Split(shown, kCrLf);
  if (!queuedLines[0].empty() || !shownLines[0].empty()) return "no line break in front";
  if (shownLines.size() != queuedLines.size()) return "line breaks shown differ from those queued";
  const bool reply = queuedLines.back().starts_with("\00311(To reply type /msg ");
  if (queuedLines.size() != (reply ? 3U : 2U)) return "line breaks queued";
  for (std::string_view line : shownLines) {
    if (line.find_first_of("\r\n\v\f") != std::string_view::npos) return "bare line break shown";
    if (line.find('\0') != std::string_view::npos) return "NUL shown";
  }
  for (const char* bad : {"\uFDD0", "\uFDD1", "\u2028", "\u2029", "\u0085"}) {
    if (shown.find(bad) != std::string_view::npos) return "unshowable character";
  }
  return IsValidUtf8(shown) ? "" : "not UTF-8";
}

// Empty when all is well with a session in a room that receives `bytes`, else what is wrong. Looks
// at so many bytes only as one line may have.
inline std::string WrongWithReceiving(std::string_view bytes) {
  bytes = bytes.substr(0, ArrivalCutter::kLongestTail);
  SessionFixture byLine;
  byLine.EnterRoom();
  std::vector<std::string_view> lines = Split(bytes, kCrLf);
  lines.pop_back();
  for (std::string_view line : lines) byLine.Receive(std::string(line) + "\r\n");

  SessionFixture byPacket;
  byPacket.EnterRoom();
  ArrivalCutter cutter;
  for (size_t at = 0; at < bytes.size(); at += 7) {
    cutter.Receive(bytes.substr(at, 7), byPacket.clock.Ticks(),
                   [&](std::string_view arrival) { byPacket.Receive(arrival); });
  }

  if (byPacket.State() != byLine.State()) return "packets change the state";
  if (byPacket.who.Nicks().Items() != byLine.who.Nicks().Items()) return "packets change the list";
  const std::vector<std::string> sent = ComparableSent(byLine.socket);
  if (ComparableSent(byPacket.socket) != sent) return "packets change what is sent";
  for (const std::string& line : sent) {
    if (std::string wrong = WrongWithSentLine(line); !wrong.empty()) return wrong;
  }
  for (const std::string& nick : byLine.who.Nicks().Items()) {
    if (nick.empty()) return "empty nick in the list";
  }
  if (byLine.pump.IsBusy()) return "still busy";
  while (byLine.queue.Pending() > 0) {
    const std::string text = byLine.queue.Take().text;
    byPacket.pump.tmrProcess_Timer();
    std::string shown = byPacket.room.TakeText();
    if (shown.empty()) shown = byPacket.status.text;
    byPacket.status.TakeText();
    if (std::string wrong = WrongWithShownText(text, shown); !wrong.empty()) {
      return wrong + ": " + Readable(text);
    }
  }
  return byPacket.queue.Pending() == 0 ? "" : "packets queue more";
}

}  // namespace brindle
