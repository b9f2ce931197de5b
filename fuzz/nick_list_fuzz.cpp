// Who's here beside a slow list that follows the same rules.

#include "base/text.h"
#include "base/utf8.h"
#include "fuzz/input.h"
#include "irc/nick_list.h"

using namespace brindle;

void fuzz::Try(Bytes input) {
  NickList list;
  std::vector<std::string> slow;
  std::vector<std::string> keys;  // of the same rows
  const auto isThat = [](const std::string& key, const std::string& nick) {
    return key == nick || key.substr(OffsetOfCharacter(key, 1)) == nick;
  };
  while (!input.IsEmpty()) {
    const unsigned what = input.Byte() % 16;
    std::string nick = input.Text().substr(0, 3);
    if (what == 0) {
      list.Clear();
      slow.clear();
      keys.clear();
    } else if (what < 10) {
      for (unsigned i = 0; i < (what == 9 ? 200 : 1); ++i) {
        list.Add(nick + std::string(i % 3, '.'));
        slow.push_back(nick + std::string(i % 3, '.'));
        keys.push_back(LowerCase(slow.back()));
      }
    } else if (!nick.empty()) {
      const std::string wanted = LowerCase(nick);
      const auto key = std::find_if(keys.begin(), keys.end(),
                                    [&](const std::string& each) { return isThat(each, wanted); });
      const bool known = key != keys.end();
      fuzz::Require(list.Contains(nick) == known, "whether it is here", nick);
      fuzz::Require(list.Remove(nick) == known, "whether it went", nick);
      if (known) slow.erase(slow.begin() + (key - keys.begin()));
      if (known) keys.erase(key);
    }
    fuzz::Require(list.Size() == slow.size(), "how many");
  }
  fuzz::Require(list.Items() == slow, "who");
}
