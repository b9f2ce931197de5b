#pragma once
// Judges a session in a room that receives any bytes, cut into small packets: what it sends and
// whom it believes to be here.

#include <string>
#include <string_view>

#include "irc/arrival_cutter.h"
#include "irc/irc_line.h"
#include "support/chat_stage.h"

namespace brindle {

// Empty when all is well, else what is wrong.
inline std::string WrongWithReceiving(std::string_view bytes) {
  ChatStage stage;
  stage.EnterRoom();
  ArrivalCutter cutter;
  for (size_t at = 0; at < bytes.size(); at += 7) {
    cutter.Receive(bytes.substr(at, 7), [&](std::string_view line) {
      stage.connection.wsChat_DataArrival(line);
      stage.Wait(10);
    });
  }
  const std::string taken = stage.Taken();
  for (const std::string_view words : Split(taken, "\n")) {
    if (!words.starts_with("> ")) continue;
    const std::string_view line = words.substr(2);
    if (line.size() > kLongestLine) return "a line too long for the server";
    bool known = false;
    for (const char* start : {"PONG :", "WHOIS ", "PART ", "NICK "})
      known |= line.starts_with(start);
    if (!known) return "sent: " + std::string(line);
  }
  for (const std::string& nick : stage.who.Nicks().Items()) {
    if (nick.empty()) return "empty nick in the list";
  }
  return stage.queue.IsBusy() ? "still busy" : "";
}

}  // namespace brindle
