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

// The rule as it is said: the first that is equal, whole or without its first character.
size_t SlowFind(const Texts& lowerNicks, const std::string& lower) {
  const auto matches = [&lower](std::string_view known) {
    return known == lower || known.substr(known.starts_with('\xC3') ? 2 : 1) == lower;
  };
  const auto found = std::find_if(lowerNicks.begin(), lowerNicks.end(), matches);
  return static_cast<size_t>(found - lowerNicks.begin());
}

TEST(WhoList, AgreesWithWalkingOverEveryNick) {
  WhoList who;
  Texts model;
  Texts lowerModel;
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
    // The room fills, changes for a while, and empties.
    const bool joins = random() % 100 < (step < 1500 ? 90 : step < 4500 ? 50 : 10);
    const std::string name = nick();
    told.clear();
    if (joins) {
      who.AddNick(name);
      EXPECT_EQ(told, std::to_string(model.size()));
      model.push_back(name);
      lowerModel.push_back(LowerCase(name));
    } else {
      const size_t at = SlowFind(lowerModel, LowerCase(name));
      who.RemoveNick(name);
      EXPECT_EQ(told, at < model.size() ? std::to_string(at) : "") << name;
      if (at == model.size()) continue;
      model.erase(model.begin() + static_cast<std::ptrdiff_t>(at));
      lowerModel.erase(lowerModel.begin() + static_cast<std::ptrdiff_t>(at));
    }
    if (step % 100 != 0) continue;
    ASSERT_EQ(who.Nicks().Items(), model);
    ASSERT_EQ(who.Nicks().Size(), model.size());
    for (size_t row = 0; row < model.size(); ++row) ASSERT_EQ(who.Nicks()[row], model[row]);
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
