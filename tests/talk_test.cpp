// What the user and the program say in a room: typed lines, requests, commands, detection and the
// advertisement, and the order and pace in which they go out.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "advert/advertisement.h"
#include "mail/manual_request.h"
#include "mail/requests.h"
#include "mail/server_commands.h"
#include "mail/server_detection.h"
#include "mail/server_handles.h"
#include "support/chat_stage.h"

namespace brindle {
namespace {

using namespace std::string_literals;

const char* const kEnterFirst = "hint Enter a room first: double-click one in the channels.";
const char* const kConnectFirst =
    "hint Connect to a server first: requests and commands are said in a room.";

// What a line that is said writes, with its echo.
std::string Said(const std::string& text, const char* kind = "2") {
  return "> PRIVMSG #room :" + text + "\n" + kind + "|^C1<me> " + text;
}

std::string Joined(std::initializer_list<std::string> parts) {
  std::string joined;
  for (const std::string& part : parts) joined += (joined.empty() ? "" : "\n") + part;
  return joined;
}

TEST(OutgoingText, SendsAndEchoesWhatIsTyped) {
  const std::string tooShort = "0|^C2Not enough parameters for tell.";
  const std::string roomChange = "1^C12Either not enough or too many parameters for room change.|";
  const struct {
    std::string typed;
    int tab;
    std::string journal;
  } table[] = {
      {"hi  there ", 0, Said("hi  there ", "1")},
      {"hi", 1, Said("hi")},
      {"hi", 2, Said("hi")},
      {"hi", 3, Said("hi", "0")},
      {"hi", 6, Said("hi", "0")},
      {"/me waves", 1, Said("/me waves")},
      {"/", 1, Said("/")},
      {" /msg bob x", 1, Said(" /msg bob x")},
      {"/msgbob x y", 1, Said("/msgbob x y")},
      {"/msg bob hi", 0, "> PRIVMSG bob :hi\n0|^C11You tell bob, ^C15'^C11hi^C15'"},
      {"/TELL Bob a  b", 1, "> PRIVMSG Bob :a  b\n0|^C11You tell Bob, ^C15'^C11a  b^C15'"},
      {"/msg bob", 0, tooShort},
      {"/Tell", 2, tooShort},
      {"/join mailroom", 1, "> JOIN #mailroom"},
      {"/J #mailroom", 1, "> JOIN #mailroom"},
      {"/join", 1, roomChange},
      {"/J ", 1, roomChange},
      {"/join a b", 1, roomChange},
      {"/j  a", 1, roomChange},
      // Each line of a pasted text is a line of its own.
      {"one\r\n\n two\0/j x"s, 1, Joined({Said("one"), Said(" two"), "> JOIN #x"})},
      {"/msg " + std::string(480, 'x') + " hi", 1,
       "hint That name is too long for a line to the server."},
  };
  for (const auto& row : table) {
    ChatStage stage;
    stage.EnterRoom();
    stage.outgoing.cmdSend_Click(row.typed, row.tab);
    EXPECT_EQ(stage.Taken(), row.journal + "\nbox ''") << row.typed;
  }
  ChatStage stage;
  stage.EnterRoom();
  stage.options.timestampChatLines = true;
  stage.outgoing.cmdSend_Click("hi", 1);
  EXPECT_EQ(stage.Taken(), "> PRIVMSG #room :hi\n2|^C15[^C113:07pm^C15] ^C1<me> hi\nbox ''");
}

TEST(OutgoingText, CutsWhatOneLineCannotCarry) {
  // ":me!u@h " is before what the others receive.
  const size_t longest = kLongestLine - 8 - "PRIVMSG #room :"s.size();
  const std::string words = std::string(300, 'a') + " " + std::string(300, 'b');
  const std::string accents = std::string(longest - 1, 'a') + "\u00E9";
  const struct {
    std::string typed;
    std::string journal;
  } table[] = {
      {std::string(longest, 'x'), Said(std::string(longest, 'x'))},
      {std::string(longest + 1, 'x'), Joined({Said(std::string(longest, 'x')), Said("x")})},
      {words, Joined({Said(std::string(300, 'a') + " "), Said(std::string(300, 'b'))})},
      {accents, Joined({Said(std::string(longest - 1, 'a')), Said("\u00E9")})},
  };
  for (const auto& row : table) {
    ChatStage stage;
    stage.EnterRoom();
    stage.outgoing.cmdSend_Click(row.typed, 1);
    EXPECT_EQ(stage.Taken(), row.journal + "\nbox ''");
  }
}

TEST(OutgoingText, RefusesWithoutConnectionRoomOrText) {
  const std::string notConnected =
      "i You must first connect to a server before sending text to a room.";
  const Deed table[] = {
      {"not connected", [](ChatStage& s) { s.outgoing.cmdSend_Click("hi", 1); }, notConnected},
      {"not connected, nothing typed", [](ChatStage& s) { s.outgoing.cmdSend_Click("", 1); },
       notConnected},
      {"no room", [](ChatStage& s) { s.Register(), s.outgoing.cmdSend_Click("/msg bob hi", 1); },
       kEnterFirst},
      {"no room, nothing typed",
       [](ChatStage& s) { s.Register(), s.outgoing.cmdSend_Click(" \n ", 1); }, ""},
      {"blanks", [](ChatStage& s) { s.EnterRoom(), s.outgoing.cmdSend_Click("   ", 1); }, ""},
      {"many lines, declined",
       [](ChatStage& s) { s.EnterRoom(), s.outgoing.cmdSend_Click("1\n2\n3\n4", 1); },
       "i Say 4 lines?"},
  };
  for (const Deed& row : table) {
    ChatStage stage;
    row.act(stage);
    EXPECT_EQ(stage.Taken(), row.journal) << row.name;
    EXPECT_EQ(stage.outgoing.History().Size(), 0U);
  }
}

TEST(OutgoingText, ManyLinesTakeTheirTurns) {
  ChatStage stage;
  stage.EnterRoom();
  stage.answers.push_back("yes");
  stage.outgoing.cmdSend_Click("1\n2\n3\n4\n5", 1);
  EXPECT_EQ(stage.Taken(), Joined({"i Say 5 lines?", Said("1"), Said("2"), Said("3"), "box ''"}));
  stage.outgoing.cmdSend_Click("6", 1);
  stage.Taken();
  stage.Wait(450);
  EXPECT_EQ(stage.Taken(), Joined({Said("4"), Said("5")}));
  stage.connection.wsChat_Error("x");
  stage.EnterRoom();
  stage.Wait(1000);
  EXPECT_EQ(stage.Taken(), "");
}

TEST(OutgoingText, RemembersEveryLineOnceAndWalksBack) {
  ChatStage stage;
  stage.EnterRoom();
  for (const char* typed : {"one", "/msg bob", "ONE", "One ", "\u00C9t\u00E9", "\u00E9T\u00C9"}) {
    stage.outgoing.cmdSend_Click(typed, 1);
  }
  stage.Taken();
  const auto up = [&](const char* typed) {
    stage.outgoing.cmbSend_Up(typed);
    return stage.Taken();
  };
  const auto down = [&](const char* typed) {
    stage.outgoing.cmbSend_Down(typed);
    return stage.Taken();
  };
  EXPECT_EQ(down("begun"), "");
  EXPECT_EQ(up("begun"), "box '\u00C9t\u00E9'");
  EXPECT_EQ(up("\u00C9t\u00E9"), "box 'One '");
  // What is made of an entry is there again.
  EXPECT_EQ(up("One more"), "box '/msg bob'");
  EXPECT_EQ(down("/msg bob"), "box 'One more'");
  EXPECT_EQ(down("One more"), "box '\u00C9t\u00E9'");
  EXPECT_EQ(down("\u00C9t\u00E9"), "box 'begun'");
  for (int i = 0; i < 3; ++i) up("");
  EXPECT_EQ(up("/msg bob"), "box 'one'");
  EXPECT_EQ(up("one"), "");
  // A line that is sent ends the walk.
  stage.outgoing.cmdSend_Click("two", 1);
  stage.Taken();
  EXPECT_EQ(up(""), "box 'two'");
}

// The rooms about mails, on the same stage.
struct MailStage : ChatStage {
  MailStage() {
    scan = [this](const OutputQueue::Line& line) { detection.Scan(line.text, line.origin); };
  }
  // One row a character, numbered from 1; "x" is checked.
  void Fill(const std::string& checks) {
    list.Clear();
    for (size_t row = 0; row < checks.size(); ++row) {
      list.Append(std::to_string(row + 1), "Title");
      list.SetChecked(row, checks[row] == 'x');
    }
  }
  std::string Checks() const {
    std::string checks;
    for (size_t row = 0; row < list.Size(); ++row) checks += list.IsChecked(row) ? 'x' : '.';
    return checks;
  }
  void Click() { requests.cmdRequest_Click("My Name", "Bot"); }
  // What was asked for in the journal, and the hints: "1-3 5 [Requests sent: 2]".
  std::string Asked() {
    std::string asked;
    const std::string start = "> PRIVMSG #room :!Bot send My Name ";
    for (const std::string_view words : Split(taken = Taken(), "\n")) {
      const bool hint = words.starts_with("hint ");
      if (!hint && !words.starts_with(start)) continue;
      asked += (asked.empty() ? "" : " ") + (hint ? "[" + std::string(words.substr(5)) + "]"
                                                  : std::string(words.substr(start.size())));
    }
    return asked;
  }

  std::string taken;
  MailList list;
  Requests requests{list, stack, voice, options, *this};
  ManualRequest manual{stack, voice, *this};
  ServerCommands commands{voice, *this};
  ServerHandles handles{*this};
  std::string screenName = "Jane D";
  ServerDetection detection{voice, queue, {options, *this}, handles, [this] { return screenName; }};
  std::function<void(const OutputQueue::Line&)> scan;
};

const std::string kLastAlone =
    "The last mail is only asked for together with the one before it; check that one too.";

TEST(Requests, AskForRunsOfCheckedRows) {
  const struct {
    const char* checks;
    std::string asked;
    const char* left;
  } table[] = {
      {"", "", ""},
      {"....", "", "...."},
      {"xxx.x.", "1-3 5 [Requests sent: 2]", "......"},
      {".x..", "2 [Requests sent: 1]", "...."},
      {"..xx", "3-4 [Requests sent: 1]", "...."},
      {"x..x", "1 [Requests sent: 1. " + kLastAlone + "]", "...x"},
      {"x", "[" + kLastAlone + "]", "x"},
      {"xx", "1-2 [Requests sent: 1]", ".."},
      {"x.xx.xxx.", "1 3-4 6-8 [Requests sent: 3]", "........."},
  };
  for (const auto& row : table) {
    for (const bool deselect : {true, false}) {
      MailStage stage;
      stage.EnterRoom();
      stage.options.deselectAfterRequested = deselect;
      stage.Fill(row.checks);
      stage.Click();
      stage.Wait(5000);
      EXPECT_EQ(stage.Asked(), row.asked) << row.checks;
      EXPECT_EQ(stage.Checks(), deselect ? row.left : row.checks);
    }
  }
}

TEST(Requests, EchoSendAndPause) {
  MailStage stage;
  stage.EnterRoom();
  stage.Fill("x.x.x.");
  stage.options.timestampChatLines = true;
  std::string progress;
  stage.stack.OnProgress([&](const std::optional<RunProgress>& now) {
    progress += now ? std::to_string(now->sent) + "/" + std::to_string(now->lines) + " " : "end";
  });
  stage.Click();
  stage.Wait(1000);
  const std::string echo = "2|^C15[^C113:07pm^C15] ^C1<me> !Bot send My Name ";
  const std::string line = "> PRIVMSG #room :!Bot send My Name ";
  EXPECT_EQ(stage.Taken(), Joined({echo + "1", line + "1", echo + "3", line + "3", echo + "5",
                                   line + "5", "hint Requests sent: 3"}));
  ASSERT_EQ(stage.sentAt.size(), 3U);
  EXPECT_EQ(stage.sentAt[1] - stage.sentAt[0], 200);
  EXPECT_EQ(stage.sentAt[2] - stage.sentAt[1], 200);
  EXPECT_EQ(progress, "1/3 2/3 3/3 end");
  EXPECT_EQ(stage.list.TitleHeader(), "Mail Title [3/6]");
  stage.list.SetChecked(5, true);
  EXPECT_EQ(stage.list.TitleHeader(), "Mail Title [1/6]");
  // Nothing in a field adds a line, and a line that is too long is not cut.
  stage.Fill("x.");
  stage.requests.cmdRequest_Click("a\rQUIT", "h");
  EXPECT_EQ(stage.Taken(), echo.substr(0, echo.find('!')) +
                               "!h send aQUIT 1\n"
                               "> PRIVMSG #room :!h send aQUIT 1");
  stage.Wait(500);
  stage.Fill("x.");
  stage.Taken();
  stage.requests.cmdRequest_Click(std::string(500, 'n'), "h");
  EXPECT_EQ(stage.Taken(),
            "hint Not sent: with the handle and the screen name the line is longer than a server "
            "takes.");
  EXPECT_EQ(stage.Checks(), "x.");
}

TEST(Requests, RefuseWithoutNameHandleRoomOrConnection) {
  const struct {
    ConnectionState state;
    const char* room;
    const char* name;
    const char* handle;
    std::string journal;
  } table[] = {
      {ConnectionState::kDisconnected, "#room", "", "", kConnectFirst},
      {ConnectionState::kRegistered, "#room", " ", "",
       "i You must enter an AOL Screen Name for this to work."},
      {ConnectionState::kRegistered, "", "sn", "  ",
       "i You must enter a servers handle for this to work."},
      {ConnectionState::kRegistered, "", "sn", "bot", kEnterFirst},
  };
  for (const auto& row : table) {
    MailStage stage;
    stage.EnterRoom();
    stage.Fill("x.");
    stage.session.connectionState = row.state;
    stage.session.currentRoom = row.room;
    stage.requests.cmdRequest_Click(row.name, row.handle);
    EXPECT_EQ(stage.Taken(), row.journal);
    EXPECT_EQ(stage.Checks(), "x.");
  }
}

TEST(Requests, EndWithTheirReason) {
  const std::string lost = "[The session ended after 2 of 3 requests (";
  const std::string left = "[The room was left after 2 of 3 requests";
  const std::string again = ". What may not have arrived is checked again.]";
  struct Row {
    const char* name;
    std::function<void(MailStage&)> meanwhile;  // after the second line
    std::string told;
    const char* left;
  };
  const Row table[] = {
      {"lost", [](MailStage& s) { s.connection.wsChat_Error("gone"); },
       "[Disconnected: gone] [The session ended (gone) after 2 of 3 requests" + again, "x.x.x."},
      {"kicked", [](MailStage& s) { s.Receive(":op!u@h KICK #room me :bye"); },
       "[You are no longer in #room: kicked by op: bye] "
       "[The room was left (kicked by op: bye) after 2 of 3 requests" +
           again,
       "....x."},
      {"parted", [](MailStage& s) { s.Receive(":me!u@h PART :#room"); }, left + again, "....x."},
      {"refused", [](MailStage& s) { s.Receive(":srv 404 me #room :Moderated"); },
       "[#room: Moderated] [The room takes no requests (Moderated) after 2 of 3 requests" + again,
       "x.x.x."},
      {"refused elsewhere", [](MailStage& s) { s.Receive(":srv 404 me #else :Moderated"); },
       "[#else: Moderated] 5 [Requests sent: 3]", "......"},
      {"cleared", [](MailStage& s) { s.list.Clear(); },
       "[The list was replaced after 2 of 3 requests.]", ""},
      {"stopped", [](MailStage& s) { s.stack.Stop(); }, "[Stopped after 2 of 3 requests.]",
       "....x."},
  };
  for (const Row& row : table) {
    MailStage stage;
    stage.EnterRoom();
    stage.Fill("x.x.x.");
    stage.Click();
    stage.Wait(200);
    EXPECT_EQ(stage.Asked(), "1 3");
    row.meanwhile(stage);
    stage.Wait(1000);
    EXPECT_EQ(stage.Asked(), row.told) << row.name;
    EXPECT_EQ(stage.Checks(), row.left) << row.name;
    EXPECT_TRUE(stage.stack.IsIdle());
    EXPECT_FALSE(stage.lines.IsBusy());
  }
  // A refusal may come when all has been said.
  MailStage stage;
  stage.EnterRoom();
  stage.Fill("x.");
  stage.Click();
  stage.Wait(1000);
  stage.Receive(":srv 404 me #room :Moderated");
  EXPECT_EQ(stage.Checks(), "x.");
}

TEST(Requests, ASecondClickRunsInTheMiddleOfTheFirst) {
  MailStage stage;
  stage.EnterRoom();
  stage.options.deselectAfterRequested = false;
  stage.Fill("x.x.");
  stage.Click();
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
  MailStage stage;
  stage.EnterRoom();
  const auto taken = [&stage](auto act) {
    act();
    return stage.Taken();
  };
  EXPECT_EQ(taken([&] { stage.manual.cmdAdd_Click(" ", "1"); }),
            "! Please enter the servers handle you would like to request the mail from.");
  EXPECT_EQ(taken([&] { stage.manual.cmdAdd_Click("Bot", ""); }),
            "! Please enter the mail number you wish to request.");
  for (const char* number : {"1", "x y", "1"}) stage.manual.cmdAdd_Click("Bot", number);
  stage.manual.SetChecked(2, true);
  EXPECT_EQ(taken([&] { stage.manual.cmdRequest_Click(" "); }),
            "! Please enter your AOL screenname.");
  stage.manual.cmdRequest_Click("My Name");
  stage.Wait(1000);
  EXPECT_EQ(stage.Asked(), "1 x y 1 [Requests sent: 3]");
  EXPECT_EQ(stage.manual.Rows().size(), 3U);
  // Closing the window ends its run, and no other.
  stage.Fill("x.x.");
  stage.Click();
  stage.manual.cmdRequest_Click("My Name");
  stage.manual.Stop();
  stage.Wait(1000);
  EXPECT_EQ(stage.Asked(), "1 1 3 [Requests sent: 2]");
  EXPECT_EQ(taken([&] { stage.manual.cmdRemove_Click(); }), "i Remove all checked items?");
  EXPECT_EQ(stage.manual.Rows().size(), 3U);
  stage.answers.push_back("yes");
  stage.manual.cmdRemove_Click();
  EXPECT_EQ(stage.manual.Rows().size(), 2U);
  stage.session.currentRoom.clear();
  stage.Taken();
  EXPECT_EQ(taken([&] { stage.manual.cmdRequest_Click("n"); }), kEnterFirst);
  stage.manual.cmdClear_Click();
  EXPECT_EQ(taken([&] { stage.manual.cmdRequest_Click("n"); }), "");
}

TEST(ServerCommands, SayWhatTheBotUnderstands) {
  using Command = void (ServerCommands::*)(const CommandFields&);
  const std::string noName = "i You must enter an AOL Screen Name for this to work.";
  const std::string noHandle = "i You must enter a servers handle for this to work.";
  const CommandFields all{"My Name", "c0de", "Mail Bot"};
  const struct {
    Command command;
    CommandFields fields;
    std::string journal;
  } table[] = {
      {&ServerCommands::mnuCommandsRequest_Click, all, Said("!Mail Bot send My Name accesscode")},
      {&ServerCommands::mnuCommandsVerify_Click, all, Said("!Mail Bot verify My Name c0de")},
      {&ServerCommands::mnuCommandsVerify_Click, {"", "c", "b"}, Said("!b verify  c")},
      {&ServerCommands::mnuCommandsList_Click, all, Said("!Mail Bot send My Name list")},
      {&ServerCommands::mnuCommandsStatus_Click, all, Said("!Mail Bot send My Name status")},
      {&ServerCommands::mnuCommandsStatus_Click,
       {"a\nQUIT", "", "b\r"},
       Said("!b send aQUIT status")},
      {&ServerCommands::mnuCommandsRequest_Click, {" ", "c", ""}, noName},
      {&ServerCommands::mnuCommandsList_Click, {"", "c", "b"}, noName},
      {&ServerCommands::mnuCommandsStatus_Click, {"", "c", "b"}, noName},
      {&ServerCommands::mnuCommandsVerify_Click,
       {"n", " ", ""},
       "i You must enter your accesscode for this to work."},
      {&ServerCommands::mnuCommandsVerify_Click, {"", "c", " "}, noHandle},
  };
  for (const auto& row : table) {
    MailStage stage;
    stage.EnterRoom();
    (stage.commands.*row.command)(row.fields);
    EXPECT_EQ(stage.Taken(), row.journal);
  }
  MailStage stage;
  stage.commands.mnuCommandsList_Click({});
  EXPECT_EQ(stage.Taken(), "i You must first connect to a server before entering a room.");
  stage.Register();
  stage.commands.mnuCommandsList_Click(all);
  EXPECT_EQ(stage.Taken(), kEnterFirst);
}

TEST(ServerHandles, KeepsThemAsTypedOrClean) {
  MailStage stage;
  const std::string known = "i That server already exists in the list.";
  const struct {
    const char* typed;
    std::string journal;
    const char* added;
  } table[] = {
      {"MailBot", "", "MailBot"},  {" ", "", ""},       {"mail BOT", known, ""},
      {"!MailBot", "", "MailBot"}, {"!!x ", "", "!x "},
  };
  for (const auto& row : table) {
    const size_t before = stage.handles.Items().Size();
    stage.handles.cmdInfoAdd_Click(row.typed);
    EXPECT_EQ(stage.Taken(), row.journal) << row.typed;
    const auto& items = stage.handles.Items().Items();
    EXPECT_EQ(items.size() > before ? items.back() : "", row.added);
  }
  std::string handle = " !Ne\002w\037 Bot";
  EXPECT_TRUE(stage.handles.ServerHandleMissing(handle));
  EXPECT_EQ(handle, "newbot");
  stage.handles.AddServerHandle(handle = "NEW");
  EXPECT_EQ(stage.handles.Items().Items().back(), "new");
  stage.handles.cmdInfoRemove_Click(std::nullopt);
  stage.handles.cmdInfoRemove_Click(0);
  EXPECT_EQ(stage.handles.Items().Size(), 3U);
}

TEST(ServerAnnouncement, IsRecognisedAndNamesAHandle) {
  const struct {
    std::string text;
    bool announces;
    const char* handle;
  } table[] = {
      {"Type !MailBot send 12 to get mail", true, "mailbot"},
      {"/notice MailBot send list", true, "mailbot"},
      {"!x SEND", true, "x"},
      {"x/NOTICE Bot sEnD", true, "bot"},
      {"!x sending", false, ""},
      {"!x send:", false, ""},
      {"!x  send", false, ""},  // the word between is empty
      {"!x\tsend", false, ""},
      {"! send", true, ""},
      {"send !x", false, ""},
      {"/notice send", false, ""},
      {"/notice a b send", false, ""},
      {"/notice !a send", true, "a"},
      {"", false, ""},
      {"\r\n\0031<bob> !One send or !Two send", true, "two"},
      {"!One send and /notice Two send", true, "two"},
      {"!One send it or send", true, "one"},
      {"now:a!B!c send", true, "b!c"},
      {"!\u00C9bot send", true, "\u00E9bot"},
  };
  for (const auto& row : table) {
    EXPECT_EQ(IsServerAnnouncement(row.text), row.announces) << row.text;
    EXPECT_EQ(ExtractServerHandle(row.text), row.handle) << row.text;
  }
  EXPECT_EQ(CleanHandle(" !Mail\002 B\037ot!"), "mailbot");
}

TEST(ServerDetection, AddsTellsAndAsks) {
  const std::string added = "5|^C04:^C07:^C08( ^C12ATTENTION ^C08)^C07:^C04: ^C12ADDED ^C07";
  const std::string cannot =
      " Can't request code(either no screen name is entered or this options is off).";
  const std::string requesting = " REQUESTING ACCESSCODE.\n";
  const std::string bob = ":bob!u@h PRIVMSG #room :";
  const std::string asked =
      added + "MAILBOT" + requesting + Said("!mailbot send Jane D accesscode");
  struct Row {
    const char* name;
    std::function<void(MailStage&)> before;
    std::string line;
    std::string journal;  // after the line itself
  };
  const auto nothing = [](MailStage&) {};
  const Row table[] = {
      {"all on", nothing, bob + "Type !MailBot send 12", asked},
      {"coloured", nothing, bob + "^C12!Mail^BBot^B^C send 12", asked},
      {"4u", nothing, bob + "!4u send 1",
       added + "4U" + requesting + Said("!4u send Jane D accesscode")},
      {"no scan", [](MailStage& s) { s.options.scanChatForServers = false; }, bob + "!MailBot send",
       ""},
      {"no asking", [](MailStage& s) { s.options.requestAccessCode = false; },
       bob + "!MailBot send", added + "MAILBOT" + cannot},
      {"no name", [](MailStage& s) { s.screenName = " "; }, bob + "!MailBot send",
       added + "MAILBOT" + cannot},
      {"known", [](MailStage& s) { s.handles.cmdInfoAdd_Click("MAILbot"); }, bob + "!MailBot send",
       ""},
      {"in private", nothing, ":bob!u@h PRIVMSG me :!MailBot send 1", added + "MAILBOT" + cannot},
      {"another room", nothing, ":bob!u@h PRIVMSG #else :!MailBot send 1",
       added + "MAILBOT" + cannot},
      {"ourselves", nothing, ":me!u@h PRIVMSG #room :!MailBot send", ""},
      {"nobody", nothing, bob + "!! send", ""},
      {"too long", nothing, bob + "!" + std::string(65, 'x') + " send", ""},
      {"control", nothing, bob + "!a\tb send", ""},
      {"bytes", nothing, bob + "!" + std::string(300, '\x80') + " send 1", ""},
  };
  for (const Row& row : table) {
    MailStage stage;
    stage.EnterRoom();
    stage.options.requestAccessCode = true;
    row.before(stage);
    stage.Taken();
    bool first = true;
    stage.onLine = [&](const OutputQueue::Line& line) {
      if (first) stage.Taken();
      first = false;
      stage.scan(line);
    };
    const std::string line =
        JoinFrom(Split(JoinFrom(Split(row.line, "^C"), 0, "\003"), "^B"), 0, "\002");
    stage.Receive(line);
    EXPECT_EQ(stage.Taken(), row.journal) << row.name;
    first = true;
    stage.Receive(line);
    EXPECT_EQ(stage.Taken(), "") << row.name;
  }
}

TEST(ServerDetection, AsksAtMostOnceASecondAndTenTimesAMinute) {
  MailStage stage;
  stage.EnterRoom();
  stage.options.requestAccessCode = true;
  stage.onLine = stage.scan;
  const auto asked = [&stage](int announcements, int pause) {
    const size_t before = stage.sentAt.size();
    static int bot = 0;
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

TEST(SendQueue, AsksAboutJoinersWhereThatDisturbsNothing) {
  MailStage stage;
  stage.EnterRoom();
  const auto joined = [&stage](int count) {
    for (int i = 0; i < count; ++i) stage.Receive(":n" + std::to_string(i) + "!u@h JOIN #room");
    const std::string taken = stage.Taken();
    return Split(taken, "> WHOIS").size() - 1;
  };
  EXPECT_EQ(joined(30), 1U);
  stage.Wait(1990);
  EXPECT_EQ(joined(1), 0U);
  stage.Wait(10);
  EXPECT_EQ(joined(1), 1U);
  stage.Wait(5000);
  stage.Fill("x.x.");
  stage.Click();
  EXPECT_EQ(joined(1), 0U);
}

// ^C and ^B stand for the marks of colour and bold.
const std::string kAd =
    "^C5Check out ^C9Brindle ^C5for your ^C9server helper ^C5needs! No need for IRC! Head over to "
    "^C9^Bwww.brindle.example^B ^C5to check out screens, updates, and features. ^C9v0.5.70 "
    "released ^C5jan. 05! ^C13^B[^C6AD : 10 minutes^C13]";
const std::string kIntro = "^C5Here's what people are saying about Brindle : \"^C9";
const std::string kFirst =
    kIntro +
    "Brindle has unimaginable features that are second to none.  It does all the work for you not "
    "missing a beat.  Makes getting the mails you want 10 times easier.^C5\" -Harrowgate";
const std::string kSecond =
    kIntro +
    "I think Brindle is by far the best helper program out there.  It is very easy to use and has "
    "great features that no competitor offers.  The most standout feature is the list viewing "
    "feature, where I can search through thousands of mails using any search criteria I want.  "
    "This makes searching for the files I need a quick and fun experience, instead of taking all "
    "day!^C5\" -Lumenfox";

struct AdStage : ChatStage, AdvertisementView {
  void SetIdleCaption(const std::string& text) override { Note("idle " + text); }
  void SetSentAd(const std::string& text) override { Note("sent " + text); }
  void EnableAdTimer(bool enabled) override { running = enabled; }
  // The minutes in which something was said, of the next so many: "1 11".
  std::string Minutes(int count) {
    std::string minutes;
    for (int minute = 1; minute <= count; ++minute) {
      const size_t before = sentAt.size();
      if (running) ad.tmrAD_Timer();
      Wait(60000);
      if (sentAt.size() > before) minutes += (minutes.empty() ? "" : " ") + std::to_string(minute);
    }
    return minutes;
  }
  bool running = false;
  Advertisement ad{session, voice, *this, "www.brindle.example"};
};

TEST(Advertisement, SpeaksEveryTenMinutes) {
  AdStage stage;
  stage.EnterRoom();
  EXPECT_EQ(stage.Minutes(30), "");
  stage.ad.cmdIdle_Click();
  EXPECT_EQ(stage.Taken(), "idle Back");
  EXPECT_EQ(stage.Minutes(25), "1 11 21");
  EXPECT_TRUE(stage.Taken().ends_with("sent Sent advertise 3 time(s)"));
  // Off in the fifth minute of a cycle, and on again.
  stage.ad.cmdIdle_Click();
  EXPECT_EQ(stage.Taken(), "idle Idle");
  EXPECT_EQ(stage.Minutes(30), "");
  stage.ad.cmdIdle_Click();
  EXPECT_EQ(stage.Minutes(21), "1 11 21");
  EXPECT_EQ(stage.ad.State().count, 6);
  // Without a room the caption goes back and the timer runs on.
  stage.Receive(":me!u@h PART #room");
  stage.Taken();
  EXPECT_EQ(stage.Minutes(10), "");
  EXPECT_EQ(stage.Taken(), "idle Idle");
  EXPECT_TRUE(stage.running);
}

TEST(Advertisement, SaysTheTextsByteForByte) {
  AdStage stage;
  stage.EnterRoom();
  stage.ad.cmdIdle_Click();
  stage.Taken();
  std::set<std::string> seen;
  for (int i = 1; i < 2000 && seen.size() < 2; ++i) {
    for (int minute = 0; minute < 10; ++minute) stage.ad.tmrAD_Timer();
    stage.Wait(2000);
    const std::string text = Readable(stage.ad.State().text);
    ASSERT_TRUE(text == kFirst || text == kSecond) << text;
    EXPECT_EQ(stage.Taken(), Joined({Said(kAd), Said(text),
                                     "sent Sent advertise " + std::to_string(i) + " time(s)"}));
    seen.insert(text);
  }
  EXPECT_EQ(seen.size(), 2U);
}

}  // namespace
}  // namespace brindle
