#include "mail/server_detection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/session_fixture.h"

namespace brindle {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

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
      {"notice a send", false, ""},
      {"/notice !a send", true, "a"},
      {"", false, ""},
      {"send", false, ""},
      {"\r\n\0031<bob> !One send or !Two send", true, "two"},
      {"!One send and /notice Two send", true, "two"},
      {"!One send it or send", true, "one"},
      {"now:a!B!c send", true, "b!c"},
      {"!\u00C9bot send", true, "\u00E9bot"},
      {"!\002Bot\002 send", true, "\002bot\002"},
  };
  for (const auto& row : table) {
    EXPECT_EQ(IsServerAnnouncement(row.text), row.announces) << row.text;
    EXPECT_EQ(ExtractServerHandle(row.text), row.handle) << row.text;
  }
  EXPECT_EQ(CleanHandle(" !Mail\002 B\037ot!"), "mailbot");
}

constexpr char kAdded[] = "5|^C4:^C7:^C8( ^C12ATTENTION ^C8)^C7:^C4: ^C12ADDED ^C7";
constexpr char kCannot[] =
    " Can't request code(either no screen name is entered or this options is off).";

class ServerDetectionTest : public testing::Test, protected SessionFixture {
 protected:
  ServerDetectionTest() {
    EnterRoom();
    options.requestAccessCode = true;
  }
  const Texts& Known() { return handles.Items().Items(); }

  std::string screenName = "Jane D";
  ServerHandles handles{dialogs};
  ServerDetection detection{
      session, connection, queue, options, handles, clock, [this] { return screenName; }};
};

TEST_F(ServerDetectionTest, AddsTellsAndAsks) {
  const struct {
    const char* name;
    bool scan;
    bool ask;
    const char* screenName;
    bool inRoom;
    bool added;
    bool asked;
  } table[] = {
      {"all on", true, true, "Jane D", true, true, true},
      {"no scan", false, true, "Jane D", true, false, false},
      {"no asking", true, false, "Jane D", true, true, false},
      {"no name", true, true, "  ", true, true, false},
      {"no room", true, true, "Jane D", false, true, false},
  };
  for (const auto& row : table) {
    handles.Items().Clear();
    options.scanChatForServers = row.scan;
    options.requestAccessCode = row.ask;
    screenName = row.screenName;
    session.currentRoom = row.inRoom ? "#room" : "";
    // The second time, the server is known.
    for (const bool first : {true, false}) {
      detection.Scan("\r\n\0031<bob> Type !Mail\002Bot\002 send 12");
      const bool added = first && row.added;
      const bool asked = first && row.asked;
      Texts queued;
      if (added) {
        queued.push_back(kAdded + "MAIL\002BOT\002"s +
                         (asked ? " REQUESTING ACCESSCODE." : kCannot));
      }
      if (asked) queued.push_back("2|^C1<me> !mail\002bot\002 send Jane D accesscode");
      EXPECT_EQ(TakeQueued(), queued) << row.name;
      EXPECT_EQ(socket.TakeSent(),
                asked ? Texts{"PRIVMSG #room :!mailbot send Jane D accesscode"} : Texts{})
          << row.name;
      EXPECT_EQ(Known(), row.added ? Texts{"mailbot"} : Texts{}) << row.name;
    }
    EXPECT_EQ(detection.ServerHandleKnown("!MAIL bot"), row.added);
  }
}

TEST_F(ServerDetectionTest, AHostileHandleAddsNoLineOfItsOwn) {
  const std::string big(100000, 'X');
  const struct {
    std::string line;
    Texts sent;
  } table[] = {
      {"! send", {}},
      {"!! send", {}},
      {"!\002\037 send", {}},
      {"!!\002!! send", {}},
      {"/notice  send x", {}},
      {"!a\rQUIT send", {"a"}},
      {"!b\nQUIT\r\nQUIT send", {"b"}},
      {"!c\0QUIT send"s, {"c"}},
      {"!\001VERSION\001 send", {"\001version\001 send Jane D accesscode"}},
      {"!\00304,99Bot send", {"\00304,99bot send Jane D accesscode"}},
      {"!e!f send", {"ef send Jane D accesscode"}},
      {"!%n%s../ send", {"%n%s../ send Jane D accesscode"}},
      {"!" + big + " send", {std::string(100000, 'x') + " send Jane D accesscode"}},
  };
  for (const auto& row : table) {
    const size_t known = Known().size();
    detection.Scan(row.line);
    Texts sent;
    for (const std::string& said : row.sent) sent.push_back("PRIVMSG #room :!" + said);
    EXPECT_EQ(socket.TakeSent(), sent) << row.line.substr(0, 50);
    EXPECT_EQ(Known().size() - known, sent.size());
    EXPECT_EQ(TakeQueued().size(), 2 * sent.size());
    // What is sent is never an announcement to be acted on once more.
    detection.Scan(row.line);
    EXPECT_EQ(socket.TakeSent(), Texts{});
  }
}

TEST_F(ServerDetectionTest, WorksOnEveryLineThatIsAboutToBeShown) {
  pump.SetScanner(detection);
  options.sounds[static_cast<size_t>(SoundSlot::kServerAdded)].path = "added.wav";
  screenName = "J !Evil send";
  for (int i = 0; i < 2; ++i) {
    Receive(":b!u@h PRIVMSG #room :Type !MailBot send 12\r\n");
    for (int tick = 0; tick < 20; ++tick) pump.tmrProcess_Timer();
  }
  // The name in the request announces a server too; that is the end of it.
  EXPECT_EQ(socket.TakeSent(), (Texts{"PRIVMSG #room :!mailbot send J !Evil send accesscode",
                                      "PRIVMSG #room :!evil send J !Evil send accesscode"}));
  EXPECT_EQ(room.TakeText(),
            "\r\n<b> Type !MailBot send 12"
            "\r\n::( ATTENTION ):: ADDED MAILBOT REQUESTING ACCESSCODE."
            "\r\n<me> !mailbot send J !Evil send accesscode"
            "\r\n::( ATTENTION ):: ADDED EVIL REQUESTING ACCESSCODE."
            "\r\n<me> !evil send J !Evil send accesscode"
            "\r\n<b> Type !MailBot send 12");
  EXPECT_EQ(sounds.played, (Texts{"added.wav", "added.wav"}));
}

}  // namespace
}  // namespace brindle
