#pragma once
// Says lines in the current room, each with its echo on screen: the one place for typed chat,
// requests, commands to mail servers, detection and the advertisement. What is echoed is what is
// sent, when it is sent or, where the server relays our own lines, when they come back.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "irc/chat_style.h"
#include "irc/output_queue.h"
#include "irc/send_queue.h"
#include "irc/session.h"
#include "irc/window_view.h"

namespace brindle {

class RoomVoice {
 public:
  RoomVoice(const Session& session, SendQueue& lines, Screen screen, ChatStyle style)
      : session_(session), lines_(lines), screen_(screen), style_(style) {
    lines.Own().OnChanged([this] { ShowOnTheWay(); });
  }
  RoomVoice(const RoomVoice&) = delete;
  RoomVoice& operator=(const RoomVoice&) = delete;

  bool IsConnected() const { return session_.connectionState != ConnectionState::kDisconnected; }

  // True when there is a room to hear us; otherwise a hint says what is missing.
  bool HasRoom() const;

  // Says `text`, cut into several lines where one would not reach the others whole. Each takes its
  // turn behind what was typed before.
  void Say(std::string_view text, Kind echo = Kind::kRoom);

  // Says a line that must not be cut. False, with a hint, when it is too long or nobody would hear.
  bool SayWhole(std::string_view text);

  // Says one line of a run of requests, at once; its number among them (see SendQueue). Nothing
  // where SayWhole would be false.
  std::optional<std::uint64_t> SayRequest(std::string_view text);

  // Shows a piece of what was said, behind the start of a chat line.
  using ShowPiece = std::function<void(const std::string& start, const std::string& piece)>;
  // Sends `text` to a nick or a room, cut like Say; `echo` is called once with each piece. Only a
  // hint when the target's name leaves no space for text.
  void Tell(const std::string& target, std::string_view text, const ShowPiece& echo);

 private:
  // The bytes of text that reach everybody in a line to `target`.
  size_t LongestText(std::string_view target) const;
  bool Fits(std::string_view text) const;
  ShowPiece ChatEcho(Kind kind) const;
  OwnLine Line(const std::string& target, const std::string& text, ShowPiece echo) const;
  // How many lines have not come back yet.
  void ShowOnTheWay();

  const Session& session_;
  SendQueue& lines_;
  Screen screen_;
  ChatStyle style_;
};

}  // namespace brindle
