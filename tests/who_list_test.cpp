#include "irc/who_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "base/text.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;

TEST(WhoList, AgreesWithWalkingOverEveryNick) {
  WhoList who;
  Texts model;
  std::string told;
  who.Nicks().Observe([&told](const ListChange& change) {
    if (change.when == ListChange::When::kAfter) told = std::to_string(change.index);
  });
  std::mt19937 random(5);
  const auto nick = [&random] {
    std::string made(random() % 3, "@+x"[random() % 3]);
    if (random() % 4 == 0) made += random() % 2 == 0 ? "\u00C9" : "\u00E9";
    return made + "aAbB"[random() % 4] + std::to_string(random() % 2000);
  };
  for (int step = 0; step < 6000; ++step) {
    const std::string name = nick();
    told.clear();
    // The room fills, changes for a while, and empties.
    if (random() % 100 < (step < 1500 ? 90 : step < 4500 ? 50 : 10)) {
      who.AddNick(name);
      EXPECT_EQ(told, std::to_string(model.size()));
      model.push_back(name);
    } else {
      // The first that is equal, whole or without its first character.
      const auto found = std::find_if(model.begin(), model.end(), [&](const std::string& known) {
        return EqualsIgnoringCase(known, name) ||
               EqualsIgnoringCase(known.substr(known.starts_with('\xC3') ? 2 : 1), name);
      });
      who.RemoveNick(name);
      EXPECT_EQ(told, found == model.end() ? "" : std::to_string(found - model.begin())) << name;
      if (found != model.end()) model.erase(found);
    }
    ASSERT_TRUE(step % 100 != 0 || who.Nicks().Items() == model) << step;
  }
  who.AddNick("z");
  who.RemoveNick("");
  EXPECT_EQ(who.Nicks()[who.Nicks().Size() - 1], "z");
  who.Clear();
  who.RemoveNick("z");
  who.AddNick("z");
  EXPECT_EQ(who.Nicks().Items(), Texts{"z"});
}

}  // namespace
}  // namespace brindle
