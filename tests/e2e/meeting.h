#pragma once
// What the session tests share: the window in a session with a real IRC server or a scripted one.

#include <gtest/gtest.h>

#include "support/irc_server.h"
#include "support/raw_client.h"
#include "support/scripted_server.h"
#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::test {

using Texts = std::vector<std::string>;

constexpr const char* kRoom = "#mailroom";
inline const std::string kTo = "#mailroom :";
constexpr const char* kHint = "barStatusPanel2";
// Across a view.
inline const std::string kRule = "\n" + std::string(70, '-');

constexpr const char* kGone = "\nDisconnected...";

inline int Count(const std::string& text, const char* part) {
  return static_cast<int>(QString::fromStdString(text).count(part));
}

// Waits until a session or an attempt has ended, as the `times`th one, and all of the window shows
// it, once; `trouble` is a part of what stands beside the button.
inline bool HasEnded(WindowDriver& window, const std::string& trouble, int times) {
  const auto told = [&] {
    return Count(window.Room(), kGone) == times && Count(window.Status(), kGone) == times;
  };
  if (!WaitUntil(told, 5000) || !window.Tells("lblConnectTrouble", trouble)) return false;
  LetTicksPass(3);  // what comes too much would have time to show
  return told() && window.Text("cmdConnect") == "Connect" &&
         window.Find<QWidget>("cmdConnect").isEnabled() &&
         window.Find<QWidget>("txtConnectNick").isEnabled() &&
         window.Text("barStatusPanel1") == "Status - Disconnected" &&
         window.App().CurrentSession().currentRoom.empty();
}

// Wanda at the window and a bot, in one room of a real server.
struct Meeting {
  void Begin(quint16 port) {
    bot.Begin(port);
    ASSERT_TRUE(window.Register("Wanda", port));
    ASSERT_TRUE(bot.WaitForWelcome() && bot.Join(kRoom) && window.Join(0));
  }
  // What Wanda said, as the bot has received it, once it is so many lines.
  Texts Said(size_t lines) {
    WaitUntil([&] { return bot.SaidBy("Wanda").size() >= lines; }, WindowDriver::kTimeoutMs);
    Texts said;
    for (const RawClient::Line& line : bot.SaidBy("Wanda")) said.push_back(line.text);
    return said;
  }
  WindowDriver window{{kRoom, "#second"}};
  RawClient bot{"MailBot"};
};

// "me" at the window, registered with a server that only says what it is told.
struct ScriptedSession {
  ScriptedSession() {
    window.Connect("me", "", server.Port());
    EXPECT_EQ(server.TakeReceivedUpTo("_0.5.85\r\n"),
              "NICK me\r\nUSER plenty of excellent qel_0.5.85\r\n");
    server.Send(":s 001 me :hi\r\n");
    EXPECT_TRUE(window.Tells("barStatusPanel1", "Status - Connected"));
  }
  ScriptedServer server;
  WindowDriver window{{kRoom}};
};

}  // namespace brindle::test
