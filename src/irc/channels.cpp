#include "irc/channels.h"

#include <algorithm>

#include "base/text.h"

namespace brindle {
namespace {

constexpr size_t kLeastNameLength = 2;  // without the "#"

// A room's name ends where a line of the protocol or of the stored list would take it to end.
std::string NameIn(const std::string& answer) {
  const auto end = std::find_if(answer.begin(), answer.end(), [](char c) {
    return c == ',' || static_cast<unsigned char>(c) < ' ';
  });
  return {answer.begin(), end};
}

}  // namespace

void Channels::lblChannelsAdd_Click() {
  const std::string name =
      NameIn(RemoveBlanks(dialogs_.Input("Enter the channel to be added :").value_or("")));
  if (name.empty()) return;
  const bool marked = name.starts_with('#');
  if (CharacterCount(name) < kLeastNameLength + (marked ? 1 : 0)) {
    dialogs_.Notice(Icon::kCritical, "Room names must be at least two characters long.");
    return;
  }
  const std::string room = (marked ? "" : "#") + LowerCase(name);
  if (Knows(room)) {
    dialogs_.Notice(Icon::kInformation, "That room already exists in the list.");
    return;
  }
  rooms_.Add(room);
  if (options_.enterRoomUponAdding && session_.connectionState != ConnectionState::kDisconnected) {
    connection_.EnterRoom(room);
  }
  window_.FocusSendBox();
}

void Channels::lblChannelsRemove_Click(std::optional<size_t> selected) {
  if (selected) rooms_.RemoveAt(*selected);
  window_.FocusSendBox();
}

void Channels::lblJoin_Click(std::optional<size_t> selected) {
  if (session_.connectionState == ConnectionState::kDisconnected) {
    dialogs_.Notice(Icon::kInformation,
                    "You must first connect to a server before entering a room.");
    return;
  }
  // Without a selection the line goes out as it is, and the server's answer is shown.
  const std::string room = selected ? rooms_[*selected] : "";
  connection_.EnterRoom(room);
  window_.FocusSendBox();
}

bool Channels::Knows(const std::string& room) const {
  return std::any_of(rooms_.Items().begin(), rooms_.Items().end(),
                     [&](const std::string& known) { return MatchKey(known) == room; });
}

}  // namespace brindle
