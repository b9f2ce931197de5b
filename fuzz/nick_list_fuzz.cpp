// Who's here beside a slow list that follows the same rules.

#include "base/text.h"
#include "base/utf8.h"
#include "fuzz/input.h"
#include "irc/nick_list.h"

using namespace brindle;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  fuzz::Bytes input(data, size);
  NickList list;
  std::vector<std::string> slow;
  const auto isThat = [](const std::string& row, const std::string& nick) {
    const std::string key = LowerCase(row);
    return key == nick || key.substr(OffsetOfCharacter(key, 1)) == nick;
  };
  while (!input.IsEmpty()) {
    const unsigned what = input.Byte() % 16;
    std::string nick = input.Text().substr(0, 3);
    if (what == 0) {
      list.Clear();
      slow.clear();
    } else if (what < 10) {
      for (unsigned i = 0; i < (what == 9 ? 200 : 1); ++i) {
        list.Add(nick + std::string(i % 3, '.'));
        slow.push_back(nick + std::string(i % 3, '.'));
      }
    } else if (!nick.empty()) {
      const auto row = std::find_if(slow.begin(), slow.end(), [&](const std::string& each) {
        return isThat(each, LowerCase(nick));
      });
      const bool known = row != slow.end();
      fuzz::Require(list.Contains(nick) == known, "whether it is here", nick);
      fuzz::Require(list.Remove(nick) == known, "whether it went", nick);
      if (known) slow.erase(row);
    }
    fuzz::Require(list.Size() == slow.size(), "how many");
  }
  fuzz::Require(list.Items() == slow, "who");
  return 0;
}
