#include "irc/room_voice.h"

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
  Tell(session_.currentRoom, text, [this, echo](const std::string& piece) {
    screen_.queue.QueueLine(Echo(piece), echo, Origin::kOwn);
  });
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
  screen_.queue.QueueLine(Echo(said), Kind::kRoom, Origin::kOwn);
  return lines_.SendRequest(PrivMsg(session_.currentRoom, said));
}

bool RoomVoice::Tell(const std::string& target, std::string_view text,
                     const std::function<void(const std::string& piece)>& echo) {
  const size_t longest = LongestText(target);
  if (longest < kLeastText) {
    screen_.window.ShowHint("That name is too long for a line to the server.");
    return false;
  }
  const std::string clean = Sayable(text);
  for (const std::string_view piece : PiecesOf(clean, longest)) {
    const std::string said(piece);
    lines_.SendTyped(PrivMsg(target, said), [echo, said] { echo(said); });
  }
  return true;
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

std::string RoomVoice::Echo(std::string_view text) const {
  return ChatLineStart(style_) + "\0031<" + session_.currentNick + "> " + std::string(text);
}

}  // namespace brindle
