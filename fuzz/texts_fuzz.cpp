// Small texts from strangers: addresses, update lists, announcements, tags.

#include "base/text.h"
#include "fuzz/input.h"
#include "irc/irc_address.h"
#include "irc/irc_line.h"
#include "mail/server_detection.h"
#include "update/update_check.h"

using namespace brindle;
using fuzz::Require;

namespace {

bool IsOneWord(std::string_view text) {
  return text.find_first_of(std::string_view(" ,\r\n\0\a", 6)) == std::string_view::npos;
}

void CheckAddress(const std::string& text) {
  const auto address = ParseIrcAddress(text);
  if (!address) return;
  Require(LooksLikeIrcAddress(text), "no address", text);
  Require(!address->host.empty() && IsOneWord(address->host), "host", address->host);
  Require(address->port >= 1 && address->port <= 65535, "port", text);
  Require(IsOneWord(address->room), "room", address->room);
}

void CheckUpdate(const std::string& text) {
  const UpdateList list = ReadUpdateList(text);
  const Version own{0, 5, 70};
  Require(!IsLater(list.version, own) || OffersUpdate(list.version, own), "not offered", text);
  UpdateSummary(list);
  const UpdateServer server = ReadUpdateServer(text);
  Require(server.base.empty() || server.base.starts_with("http"), "update address", server.base);
  Require(IsOneWord(server.base) || server.base.find(',') != std::string::npos, "update address",
          server.base);
}

void CheckPieces(const std::string& text, size_t most) {
  std::string joined;
  for (const std::string_view piece : PiecesOf(text, most)) {
    Require(!piece.empty() && piece.size() <= most, "a piece", piece);
    joined += piece;
  }
  Require(joined == text, "pieces", joined);
}

}  // namespace

void fuzz::Try(Bytes input) {
  const unsigned most = 4 + input.Byte();
  const std::string text(input.Rest());
  CheckAddress(text);
  CheckAddress("irc://" + text);
  CheckUpdate(text);
  CheckPieces(text, most);
  const std::string handle = CleanHandle(ExtractServerHandle(text));
  Require(handle.find_first_of(" !\002\037") == std::string::npos, "handle", handle);
  const IrcLine line(text, most % 2 == 0);
  line.Nick();
  line.Text(3);
  line.WordRest(2);
}
