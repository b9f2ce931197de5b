// Requests out of the list and by hand, from the click to the end of the run, and the bots that
// they go to: their handles, and how their announcements are found in what is said.
#include "mail/requests.h"

#include <gtest/gtest.h>

#include "support/talk_stage.h"

namespace brindle {
namespace {

const std::string kNoName = "i You must enter an AOL Screen Name for this to work.";
const std::string kTooLong =
    "hint Not sent: with the handle and the screen name the line is longer than a server takes.";

TEST(Requests, AskForRunsOfCheckedRows) {
  const std::string lastAlone =
      "The last mail is only asked for together with the one before it; check that one too.";
  const std::tuple<const char*, std::string, const char*> table[] = {
      {"xxx.x.", "1-3 5 [Requests sent: 2]", "......"},
      {"..xx", "3-4 [Requests sent: 1]", "...."},
      {"x..x", "1 [Requests sent: 1. " + lastAlone + "]", "...x"},
      {"x", "[" + lastAlone + "]", "x"},
  };
  for (const auto& [checks, asked, left] : table) {
    for (const bool deselect : {true, false}) {
      RoomStage stage;
      stage.options.deselectAfterRequested = deselect;
      stage.Request(checks);
      stage.Wait(5000);
      EXPECT_EQ(stage.Asked(), asked) << checks;
      EXPECT_EQ(stage.Checks(), deselect ? left : checks);
    }
  }
}

TEST(Requests, EchoSendAndPause) {
  RoomStage stage;
  stage.Fill("x.x.x.");
  stage.options.timestampChatLines = true;
  stage.stack.OnProgress([&](const std::optional<RunProgress>& now) {
    stage.Note(now ? std::to_string(now->sent) + "/" + std::to_string(now->lines) : "end");
  });
  stage.Click();
  stage.Wait(1000);
  const auto sent = [&](const std::string& line) {
    return "2|^C15[^C113:07pm^C15] ^C1<me> " + line + "\n> PRIVMSG #room :" + line;
  };
  EXPECT_EQ(stage.Taken(),
            Joined({sent("!Bot send My Name 1"), "1/3", sent("!Bot send My Name 3"), "2/3",
                    sent("!Bot send My Name 5"), "3/3", "end", "hint Requests sent: 3"}));
  EXPECT_EQ(stage.sentAt[1] - stage.sentAt[0], 200);
  // Nothing in a field adds a line. Nobody asks about a server that is here.
  stage.options.askAbsentServer = true;
  stage.Fill("x.");
  stage.requests.cmdRequest_Click("a\rQUIT", "Bob");
  EXPECT_TRUE(stage.Taken().starts_with(sent("!Bob send aQUIT 1")));
}

TEST(Requests, RefuseWhatCannotBeSent) {
  const std::tuple<void (ChatStage::*)(), std::string, const char*, std::string> table[] = {
      {nullptr, "", "",
       "hint Connect to a server first: requests and commands are said in a room."},
      {&ChatStage::EnterRoom, " ", "", kNoName},
      {&ChatStage::Register, "sn", "  ", "i You must enter a servers handle for this to work."},
      {&ChatStage::Register, "sn", "bot", kEnterFirst},
      {&ChatStage::EnterRoom, std::string(500, 'n'), "bot", kTooLong},  // never cut
  };
  for (const auto& [before, name, handle, journal] : table) {
    TalkStage stage;
    if (before != nullptr) (stage.*before)();
    stage.Fill("x.");
    stage.requests.cmdRequest_Click(name, handle);
    EXPECT_EQ(stage.Taken(), journal);
    EXPECT_EQ(stage.Checks(), "x.");
  }
}

TEST(Requests, EndWithTheirReason) {
  const std::string again = " after 2 of 3 requests. What may not have arrived is checked again.]";
  // What happens after the second line, what is told, and what is then checked and requested.
  const std::tuple<std::string, std::string, const char*> table[] = {
      {"error gone", "[Disconnected: gone] [The session ended (gone)" + again, "x.x.x. ......"},
      {":me!u@h PART :#room", "[The room was left" + again, "....x. x.x..."},
      {":srv 404 me #room :Moderated",
       "[#room: Moderated] [The room takes no requests (Moderated)" + again, "x.x.x. ......"},
      {":srv 404 me #else :Moderated", "[#else: Moderated] 5 [Requests sent: 3]", "...... x.x.x."},
      {"clear", "[The list was replaced after 2 of 3 requests.]", " "},
      {"halt", "[Stopped after 2 of 3 requests.]", "....x. x.x..."},
  };
  const auto requested = [](const MailList& list) {
    std::string rows;
    for (size_t row = 0; row < list.Size(); ++row) rows += list.IsRequested(row) ? 'x' : '.';
    return rows;
  };
  for (const auto& [meanwhile, told, left] : table) {
    RoomStage stage;
    stage.Request("x.x.x.");
    stage.Wait(200);
    EXPECT_EQ(stage.Asked(), "1 3");
    stage.Do(meanwhile);
    if (meanwhile == "clear") stage.list.Clear();
    if (meanwhile == "halt") stage.stack.Stop();
    stage.Wait(1000);
    EXPECT_EQ(stage.Asked(), told);
    EXPECT_EQ(stage.Checks() + " " + requested(stage.list), left) << told;
    stage.Wait(SendQueue::kDoubtMilliseconds);
    EXPECT_TRUE(stage.stack.IsIdle() && !stage.lines.IsWaiting()) << told;
    EXPECT_EQ(stage.Asked(), "");
  }
}

TEST(Requests, AskForGivenRows) {
  RoomStage stage;
  stage.Fill("xx....");
  stage.requests.RequestRows({{1, 1}, {2, 3}, {5, 5}}, "My Name", "Bot");
  stage.Wait(1000);
  EXPECT_EQ(stage.Asked(), "2-4 6 [Requests sent: 2]");
  EXPECT_EQ(stage.Checks(), "x.....");
  stage.Receive(":srv 404 me #room :Moderated");
  EXPECT_EQ(stage.Checks(), "xxxx.x");
}

TEST(Requests, AreOfferedAgainWhereTheSessionWasLost) {
  for (const bool deselect : {true, false}) {
    RoomStage stage;
    stage.options.deselectAfterRequested = deselect;
    stage.Request("x.x.xx.");
    stage.requests.OfferInterrupted("#room");
    stage.connection.wsChat_Error("gone");
    stage.Wait(100);
    stage.EnterRoom();
    stage.requests.OfferInterrupted("#else");
    EXPECT_EQ(stage.Taken(), "");
    stage.answers = {"yes"};
    stage.requests.OfferInterrupted("#Room");
    stage.Wait(2000);
    EXPECT_EQ(stage.Taken().find("i The requests to Bot were interrupted. Go on with the 4 mails "
                                 "that are left?\n2|^C1<me> !Bot send My Name 1\n"),
              0U);
    stage.requests.OfferInterrupted("#room");  // done
    EXPECT_EQ(stage.Taken(), "");
  }
}

TEST(Requests, TheLastOfARunAreCheckedAgainWhereTheSessionIsLostBehindIt) {
  for (const bool soon : {true, false}) {
    RoomStage stage;
    stage.Request("x.x.");
    stage.Wait(soon ? 1000 : 4000);
    EXPECT_EQ(stage.Checks(), "....");
    EXPECT_EQ(stage.lines.IsWaiting(), soon);
    stage.connection.wsChat_Error("gone");
    stage.Wait(20);
    EXPECT_EQ(stage.Checks(), soon ? "x.x." : "....");
    const std::string told = "hint The session ended. What may not have arrived is checked again.";
    EXPECT_EQ(stage.Taken().ends_with(told), soon);
  }
}

TEST(Requests, ToAnAbsentServerAreAskedAbout) {
  const std::string ask = " not in the room. Send the requests anyway?";
  for (const bool wanted : {false, true}) {
    RoomStage stage;
    stage.options.askAbsentServer = true;
    stage.Fill("x.x.");
    if (wanted) stage.answers = {"yes", "yes"};
    stage.Click();
    EXPECT_EQ(stage.Taken().find("! Bot is" + ask), 0U);
    EXPECT_EQ(stage.stack.IsIdle(), !wanted);
    stage.stack.Stop();
    stage.Taken();
    for (const char* handle : {"Bot", "Op", "other", " Bot"})
      stage.manual.cmdAdd_Click(handle, "1");
    stage.manual.cmdRequest_Click("me");
    EXPECT_EQ(stage.Taken().find("! Bot, other are" + ask), 0U);
    EXPECT_EQ(stage.stack.IsIdle(), !wanted);
  }
}

TEST(Requests, ASecondClickRunsInTheMiddleOfTheFirst) {
  RoomStage stage;
  stage.options.deselectAfterRequested = false;
  stage.Request("x.x.");
  stage.Click();
  stage.Wait(2000);
  EXPECT_EQ(stage.Asked(), "1 1 3 [Requests sent: 2] 3 [Requests sent: 2]");
  // Rows checked meanwhile are found too. Ranges follow the rows, not the numbers.
  stage.options.deselectAfterRequested = true;
  stage.Fill("x.");
  for (const char* number : {"7", "12", "+3"}) stage.list.Append(number, "");
  stage.Click();
  stage.list.CheckRange(1, 3);
  stage.Wait(2000);
  EXPECT_EQ(stage.Asked(), "1 2-12 [Requests sent: 2]");
}

TEST(ManualRequest, AsksForEveryRow) {
  RoomStage stage;
  auto& manual = stage.manual;
  manual.cmdAdd_Click(" ", "1");
  manual.cmdAdd_Click("Bot", "");
  for (const char* number : {"1", "x y", "1"}) manual.cmdAdd_Click("Bot", number);
  manual.cmdRequest_Click(" ");
  EXPECT_EQ(stage.Taken(),
            "! Please enter the servers handle you would like to request the mail from.\n"
            "! Please enter the mail number you wish to request.\n"
            "! Please enter your AOL screenname.");
  manual.cmdRequest_Click("My Name");
  stage.Wait(1000);
  EXPECT_EQ(stage.Asked(), "1 x y 1 [Requests sent: 3]");
  // Closing the window ends its run, and no other.
  stage.Request("x.x.");
  manual.cmdRequest_Click("My Name");
  manual.Stop();
  stage.Wait(1000);
  EXPECT_EQ(stage.Asked(), "1 1 3 [Requests sent: 2]");
  manual.SetChecked(2, true);
  for (const size_t left : {3U, 2U}) {
    manual.cmdRemove_Click();
    EXPECT_EQ(stage.Taken(), "i Remove all checked items?");
    EXPECT_EQ(manual.Rows().size(), left);
    stage.answers.push_back("yes");
  }
  stage.session.currentRoom.clear();
  manual.cmdRequest_Click("n");
  manual.cmdClear_Click();
  manual.cmdRequest_Click("n");
  EXPECT_EQ(stage.Taken(), kEnterFirst);
}

TEST(ServerCommands, SayWhatTheBotUnderstands) {
  using Fields = CommandFields;
  const auto kCode = &ServerCommands::mnuCommandsRequest_Click;
  const auto kVerify = &ServerCommands::mnuCommandsVerify_Click;
  const auto kList = &ServerCommands::mnuCommandsList_Click;
  const auto kStatus = &ServerCommands::mnuCommandsStatus_Click;
  const Fields all{"My Name", "c0de", "Mail Bot"};
  const struct {
    bool (ServerCommands::*command)(const Fields&);
    Fields fields;
    std::string journal;
    void (ChatStage::*before)() = &ChatStage::EnterRoom;
  } table[] = {
      {kCode, all, Said("!Mail Bot send My Name accesscode")},
      {kVerify, all, Said("!Mail Bot verify My Name c0de")},
      {kList, all, Said("!Mail Bot send My Name list")},
      {kStatus, {"a\nQUIT", "", "b\r"}, Said("!b send aQUIT status")},
      {kList, {std::string(480, 'n'), "", "b"}, kTooLong},
      {kCode, {" ", "c", ""}, kNoName},
      {kVerify, {"n", " ", ""}, "i You must enter your accesscode for this to work."},
      {kVerify, {"", "c", " "}, "i You must enter a servers handle for this to work."},
      {kList, {}, "i You must first connect to a server before entering a room.", nullptr},
      {kList, all, kEnterFirst, &ChatStage::Register},
  };
  for (const auto& row : table) {
    TalkStage stage;
    if (row.before != nullptr) (stage.*row.before)();
    EXPECT_EQ((stage.commands.*row.command)(row.fields), row.journal.starts_with('>'));
    EXPECT_EQ(stage.Taken(), row.journal);
  }
}

TEST(SendQueue, AsksAboutJoinersWhereThatDisturbsNothing) {
  RoomStage stage;
  const auto joined = [&stage](int count, int pause) {
    stage.Wait(pause);
    for (int i = 0; i < count; ++i) stage.Receive(":n" + std::to_string(i) + "!u@h JOIN #room");
    const std::string taken = stage.Taken();
    return Split(taken, "> WHOIS").size() - 1;
  };
  EXPECT_EQ(joined(30, 0), 1U);
  EXPECT_EQ(joined(1, 1990), 0U);
  EXPECT_EQ(joined(1, 10), 1U);
  stage.Wait(5000);
  stage.Request("x.x.");
  EXPECT_EQ(joined(1, 0), 0U);
}

TEST(ServerHandles, KeepsThemAsTypedOrClean) {
  TalkStage stage;
  const auto& items = stage.handles.Items().Items();
  const std::pair<const char*, const char*> table[] = {
      {"MailBot", "MailBot"}, {" ", ""}, {"mail BOT", ""}, {"!!x ", "!x "}};
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
  EXPECT_EQ(items.size(), 2U);
}

TEST(ServerAnnouncement, IsRecognisedAndNamesAHandle) {
  const std::pair<std::string, const char*> table[] = {
      {"Type !MailBot send 12 to get mail", "mailbot"},
      {"x/NOTICE Bot sEnD", "bot"},
      {"! send", ""},  // announces nobody
      {"\r\n\0031<bob> !One send or !Two send", "two"},
      {"!One send it or send", "one"},
      {"!\u00C9bot send", "\u00E9bot"},
      {"!x sending", nullptr},
      {"!x\tsend", nullptr},
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
      {bob + "!MailBot send", "", [](TalkStage& s) { s.options.scanChatForServers = false; }},
      {bob + "!MailBot send", cannot, [](TalkStage& s) { s.options.requestAccessCode = false; }},
      {bob + "!MailBot send", cannot, [](TalkStage& s) { s.screenName = " "; }},
      {bob + "!MailBot send", "", [](TalkStage& s) { s.handles.cmdInfoAdd_Click("MAILbot"); }},
      {":bob!u@h PRIVMSG me :!MailBot send 1", cannot},
      {":me!u@h PRIVMSG #room :!MailBot send", ""},
      {bob + "!" + std::string(65, 'x') + " send", ""},
      {bob + "!" + std::string(300, '\x80') + " send 1", ""},
  };
  for (const Row& row : table) {
    RoomStage stage;
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
  RoomStage stage;
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
