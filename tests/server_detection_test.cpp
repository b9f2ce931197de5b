// Mail servers: their handles, and how their announcements are found in what is said.
#include "mail/server_detection.h"

#include <gtest/gtest.h>

#include "support/talk_stage.h"

namespace brindle {
namespace {

TEST(ServerHandles, KeepsThemAsTypedOrClean) {
  TalkStage stage;
  const auto& items = stage.handles.Items().Items();
  const std::pair<const char*, const char*> table[] = {{"MailBot", "MailBot"},
                                                       {" ", ""},
                                                       {"mail BOT", ""},
                                                       {"!MailBot", "MailBot"},
                                                       {"!!x ", "!x "}};
  for (const auto& [typed, added] : table) {
    const size_t before = items.size();
    stage.handles.cmdInfoAdd_Click(typed);
    EXPECT_EQ(items.size() > before ? items.back() : "", added) << typed;
  }
  EXPECT_EQ(stage.Taken(), "i That server already exists in the list.");
  std::string handle = " !Ne\002w\037 Bot";
  EXPECT_TRUE(stage.handles.ServerHandleMissing(handle));
  EXPECT_EQ(handle, "newbot");
  stage.handles.AddServerHandle(handle = "NEW");
  EXPECT_EQ(items.back(), "new");
  stage.handles.cmdInfoRemove_Click(std::nullopt);
  stage.handles.cmdInfoRemove_Click(0);
  EXPECT_EQ(items.size(), 3U);
}

TEST(ServerAnnouncement, IsRecognisedAndNamesAHandle) {
  const std::pair<std::string, const char*> table[] = {
      {"Type !MailBot send 12 to get mail", "mailbot"},
      {"/notice MailBot send list", "mailbot"},
      {"!x SEND", "x"},
      {"x/NOTICE Bot sEnD", "bot"},
      {"! send", ""},  // announces nobody
      {"/notice !a send", "a"},
      {"\r\n\0031<bob> !One send or !Two send", "two"},
      {"!One send and /notice Two send", "two"},
      {"!One send it or send", "one"},
      {"now:a!B!c send", "b!c"},
      {"!\u00C9bot send", "\u00E9bot"},
      {"!x sending", nullptr},
      {"!x send:", nullptr},
      {"!x  send", nullptr},  // the word between is empty
      {"!x\tsend", nullptr},
      {"send !x", nullptr},
      {"/notice send", nullptr},
      {"/notice a b send", nullptr},
      {"", nullptr},
  };
  for (const auto& [text, handle] : table) {
    EXPECT_EQ(IsServerAnnouncement(text), handle != nullptr) << text;
    EXPECT_EQ(ExtractServerHandle(text), handle == nullptr ? "" : handle) << text;
  }
  EXPECT_EQ(CleanHandle(" !Mail\002 B\037ot!"), "mailbot");
}

TEST(ServerDetection, AddsTellsAndAsks) {
  const std::string added = "5|^C04:^C07:^C08( ^C12ATTENTION ^C08)^C07:^C04: ^C12ADDED ^C07";
  const std::string cannot =
      added +
      "MAILBOT Can't request code(either no screen name is entered or this options is off).";
  const auto asked = [&added](const std::string& upper, const std::string& lower) {
    return added + upper + " REQUESTING ACCESSCODE.\n" +
           Said("!" + lower + " send Jane D accesscode");
  };
  const std::string bob = ":bob!u@h PRIVMSG #room :";
  struct Row {
    std::string line;
    std::string journal;  // after the line itself
    std::function<void(TalkStage&)> before = [](TalkStage&) {};
  };
  const Row table[] = {
      {bob + "Type !MailBot send 12", asked("MAILBOT", "mailbot")},
      {bob + "^C12!Mail^BBot^B^C send 12", asked("MAILBOT", "mailbot")},
      {bob + "!4u send 1", asked("4U", "4u")},
      {bob + "!MailBot send", "", [](TalkStage& s) { s.options.scanChatForServers = false; }},
      {bob + "!MailBot send", cannot, [](TalkStage& s) { s.options.requestAccessCode = false; }},
      {bob + "!MailBot send", cannot, [](TalkStage& s) { s.screenName = " "; }},
      {bob + "!MailBot send", "", [](TalkStage& s) { s.handles.cmdInfoAdd_Click("MAILbot"); }},
      {":bob!u@h PRIVMSG me :!MailBot send 1", cannot},
      {":bob!u@h PRIVMSG #else :!MailBot send 1", cannot},
      {":bob!u@h NOTICE #room :!MailBot send 1", cannot},
      {":me!u@h PRIVMSG #room :!MailBot send", ""},
      {bob + "!! send", ""},
      {bob + "!" + std::string(65, 'x') + " send", ""},
      {bob + "!a\tb send", ""},
      {bob + "!" + std::string(300, '\x80') + " send 1", ""},
  };
  for (const Row& row : table) {
    TalkStage stage;
    stage.EnterRoom();
    stage.options.requestAccessCode = true;
    row.before(stage);
    bool first = true;
    stage.onLine = [&](const OutputQueue::Line& line) {
      if (std::exchange(first, false)) stage.Taken();
      stage.Scan(line);
    };
    const std::string line =
        JoinFrom(Split(JoinFrom(Split(row.line, "^C"), 0, "\003"), "^B"), 0, "\002");
    stage.Receive(line);
    EXPECT_EQ(stage.Taken(), row.journal) << row.line;
    first = true;
    stage.Receive(line);
    EXPECT_EQ(stage.Taken(), "") << row.line;
  }
}

TEST(ServerDetection, AsksAtMostOnceASecondAndTenTimesAMinute) {
  TalkStage stage;
  stage.EnterRoom();
  stage.options.requestAccessCode = true;
  stage.onLine = [&stage](const OutputQueue::Line& line) { stage.Scan(line); };
  int bot = 0;
  const auto asked = [&](int announcements, int pause) {
    const size_t before = stage.sentAt.size();
    for (int i = 0; i < announcements; ++i) {
      stage.Receive(":b!u@h PRIVMSG #room :!bot" + std::to_string(++bot) + " send");
      stage.Wait(pause);
    }
    return stage.sentAt.size() - before;
  };
  EXPECT_EQ(asked(300, 10), 3U);
  EXPECT_EQ(asked(30, 1000), 7U);
  stage.Wait(60000);
  EXPECT_EQ(asked(1, 0), 1U);
  EXPECT_EQ(stage.handles.Items().Size(), 331U);
}

}  // namespace
}  // namespace brindle
