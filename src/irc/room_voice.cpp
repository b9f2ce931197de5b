#include "irc/room_voice.h"

#include <utility>

#include "base/text.h"
#include "irc/irc_line.h"

namespace brindle {
namespace {

// A name so long that less than this is left for text is no name of a nick or a room.
constexpr size_t kLeastText = 16;

// What a line can carry: a line end or NUL in a handle or a name would end the line early.
std::string Sayable(std::string_view text) {
  return RemoveChars(text, std::string_view("\r\n\0", 3));
}

}  // namespace

bool RoomVoice::HasRoom() const {
  if (!IsConnected()) {
    screen_.window.ShowHint("Connect to a server first: requests and commands are said in a room.");
    return false;
  }
  if (!session_.currentRoom.empty()) return true;
  screen_.window.ShowHint("Enter a room first: double-click one in the channels.");
  return false;
}

void RoomVoice::Say(std::string_view text, Kind echo) {
  if (!HasRoom()) return;
  Tell(session_.currentRoom, text, ChatEcho(echo));
}

bool RoomVoice::SayWhole(std::string_view text) {
  const std::string said = Sayable(text);
  if (!HasRoom() || !Fits(said)) return false;
  Say(said);
  return true;
}

std::optional<std::uint64_t> RoomVoice::SayRequest(std::string_view text) {
  const std::string said = Sayable(text);
  if (!HasRoom() || !Fits(said)) return std::nullopt;
  OwnLines& own = lines_.Own();
  const std::string tag = own.NextTag();
  OwnLine line = Line(session_.currentRoom, said, ChatEcho(Kind::kRoom));
  own.ShowUnlessRelayed(line);
  const std::uint64_t number = lines_.SendRequest(tag + PrivMsg(session_.currentRoom, said));
  line.request = number;
  own.Sent(std::move(line), tag, style_.clock.Ticks());
  return number;
}

void RoomVoice::Tell(const std::string& target, std::string_view text, const ShowPiece& echo) {
  const size_t longest = LongestText(target);
  if (longest < kLeastText) {
    return screen_.window.ShowHint("That name is too long for a line to the server.");
  }
  const std::string clean = Sayable(text);
  for (const std::string_view piece : PiecesOf(clean, longest)) {
    const std::string tag = lines_.Own().NextTag();
    OwnLine line = Line(target, std::string(piece), echo);
    std::string sent = tag + PrivMsg(target, line.text);
    lines_.SendTyped(std::move(sent), [this, tag, line = std::move(line)] {
      lines_.Own().Sent(line, tag, style_.clock.Ticks());
    });
  }
}

size_t RoomVoice::LongestText(std::string_view target) const {
  const size_t around = session_.sourceLength + PrivMsg(target, "").size();
  return around < kLongestLine ? kLongestLine - around : 0;
}

bool RoomVoice::Fits(std::string_view text) const {
  if (text.size() <= LongestText(session_.currentRoom)) return true;
  screen_.window.ShowHint(
      "Not sent: with the handle and the screen name the line is longer than a server "
      "takes.");
  return false;
}

RoomVoice::ShowPiece RoomVoice::ChatEcho(Kind kind) const {
  return [this, kind](const std::string& start, const std::string& piece) {
    screen_.queue.QueueLine(start + "\0031<" + session_.currentNick + "> " + piece, kind,
                            Origin::kOwn);
  };
}

OwnLine RoomVoice::Line(const std::string& target, const std::string& text, ShowPiece echo) const {
  return {target, text,
          [this, echo = std::move(echo)](const std::string& shown,
                                         const std::optional<std::tm>& saidAt) {
            echo(ChatLineStart(style_, 0, saidAt), shown);
          }};
}

void RoomVoice::ShowOnTheWay() {
  if (session_.connectionState != ConnectionState::kRegistered) return;
  const size_t lines = lines_.Own().OnTheWay();
  std::string text = "Status - Connected";
  if (lines > 0) {
    text +=
        " : " + std::to_string(lines) + (lines == 1 ? " line on its way" : " lines on their way");
  }
  screen_.window.SetStatusPanel(text);
}

}  // namespace brindle
