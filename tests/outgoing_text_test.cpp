#include "irc/outgoing_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/session_fixture.h"

namespace brindle {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

class FakeSendBox : public SendBoxView {
 public:
  void SetSendText(const std::string& newText) override { text = newText; }
  void ShowHint(const std::string& newHint) override { hint = newHint; }
  std::string text = "as typed";
  std::string hint;
};

class OutgoingTextTest : public testing::Test, protected SessionFixture {
 protected:
  void Send(const std::string& typed, int tab = 1) {
    box.text = "as typed";
    outgoing.cmdSend_Click(typed, tab);
  }

  FakeSendBox box;
  OutgoingText outgoing{session, connection, queue, display, options, box, dialogs, clock};
};

TEST_F(OutgoingTextTest, SendsAndEchoesWhatIsTyped) {
  const Texts tooShort = {"0|^C2Not enough parameters for tell."};
  const struct {
    std::string typed;
    int tab;
    Texts sent;
    Texts queued;
  } table[] = {
      {"hi  there ", 0, {"PRIVMSG #room :hi  there "}, {"1|^C1<me> hi  there "}},
      {"hi", 1, {"PRIVMSG #room :hi"}, {"2|^C1<me> hi"}},
      {"hi", 2, {"PRIVMSG #room :hi"}, {"2|^C1<me> hi"}},
      {"hi", 3, {"PRIVMSG #room :hi"}, {"0|^C1<me> hi"}},
      {"hi", 6, {"PRIVMSG #room :hi"}, {"0|^C1<me> hi"}},
      {"/me waves", 1, {"PRIVMSG #room :/me waves"}, {"2|^C1<me> /me waves"}},
      {"/", 1, {"PRIVMSG #room :/"}, {"2|^C1<me> /"}},
      {" /msg bob x", 1, {"PRIVMSG #room : /msg bob x"}, {"2|^C1<me>  /msg bob x"}},
      {"/msgbob x y", 1, {"PRIVMSG #room :/msgbob x y"}, {"2|^C1<me> /msgbob x y"}},
      {"/msg bob hi", 0, {"PRIVMSG bob :hi"}, {"0|^C11You tell bob, ^C15'^C11hi^C15'"}},
      {"/TELL Bob a  b", 1, {"PRIVMSG Bob :a  b"}, {"0|^C11You tell Bob, ^C15'^C11a  b^C15'"}},
      {"/msg bob ", 1, {"PRIVMSG bob :"}, {"0|^C11You tell bob, ^C15'^C11^C15'"}},
      {"/msg bob", 0, {}, tooShort},
      {"/Tell", 2, {}, tooShort},
      {"/join mailroom", 1, {"JOIN #mailroom"}, {}},
      {"/J #mailroom", 1, {"JOIN #mailroom"}, {}},
      // One line at most goes out, whatever was pasted.
      {"a\rQUIT", 1, {"PRIVMSG #room :a"}, {"2|^C1<me> a\rQUIT"}},
      {"a\nQUIT", 1, {"PRIVMSG #room :a"}, {"2|^C1<me> a\nQUIT"}},
      {"a\0b"s, 1, {"PRIVMSG #room :a"}, {"2|^C1<me> a\0b"s}},
      {"/join x\r\nQUIT", 1, {"JOIN #x"}, {}},
      {"/msg bob\nQUIT hi", 1, {"PRIVMSG bob"}, {"0|^C11You tell bob\nQUIT, ^C15'^C11hi^C15'"}},
      {"\001VERSION\001", 1, {"PRIVMSG #room :\001VERSION\001"}, {"2|^C1<me> \001VERSION\001"}},
  };
  EnterRoom();
  status.TakeText();
  for (const auto& row : table) {
    Send(row.typed, row.tab);
    EXPECT_EQ(socket.TakeSent(), row.sent) << row.typed;
    EXPECT_EQ(TakeQueued(), row.queued) << row.typed;
    EXPECT_EQ(box.text, "") << row.typed;
  }
  EXPECT_EQ(status.text, "");
  options.timestampChatLines = true;
  for (const char* typed : {"hi", "/msg bob hi", "/msg"}) Send(typed);
  EXPECT_EQ(TakeQueued(), (Texts{"2|^C15[^C113:07pm^C15] ^C1<me> hi",
                                 "0|^C15[^C113:07pm^C15] ^C11You tell bob, ^C15'^C11hi^C15'",
                                 "0|^C15[^C113:07pm^C15] ^C2Not enough parameters for tell."}));
}

TEST_F(OutgoingTextTest, RefusesARoomChangeThatIsNotOneWord) {
  EnterRoom();
  for (const char* typed : {"/join", "/J ", "/join a b", "/j  a", "/j a "}) {
    status.runs.clear();
    status.TakeText();
    Send(typed);
    EXPECT_EQ(status.text, "Either not enough or too many parameters for room change.\r\n");
    ASSERT_EQ(status.runs.size(), 1U);
    EXPECT_EQ(status.runs[0].colour, (Colour{0, 0, 255}));
    EXPECT_EQ(socket.TakeSent(), Texts{}) << typed;
    EXPECT_EQ(TakeQueued(), Texts{});
    EXPECT_EQ(box.text, "");
  }
}

TEST_F(OutgoingTextTest, ARefusedLineStaysInTheBox) {
  const auto expectRefused = [this](const char* typed) {
    Send(typed);
    EXPECT_EQ(box.text, "as typed") << typed;
    EXPECT_EQ(socket.TakeSent(), Texts{});
    EXPECT_EQ(TakeQueued(), Texts{});
  };
  expectRefused("hi");
  expectRefused("");
  const FakeDialogs::Shown notice = {
      Icon::kInformation, "You must first connect to a server before sending text to a room."};
  EXPECT_EQ(dialogs.notices, (std::vector<FakeDialogs::Shown>{notice, notice}));
  Register();
  expectRefused("  ");
  EXPECT_EQ(box.hint, "");
  for (const char* typed : {"hi", "/msg bob hi", "/join room", "/join"}) expectRefused(typed);
  EXPECT_NE(box.hint, "");
  EnterRoom();
  expectRefused("   ");
  EXPECT_EQ(outgoing.History().Items(), Texts{});
  EXPECT_EQ(dialogs.notices.size(), 2U);
}

TEST_F(OutgoingTextTest, RemembersEveryLineOnceAndWalksBack) {
  EnterRoom();
  for (const char* typed : {"one", "/msg bob", "ONE", "One ", "\u00C9t\u00E9", "\u00E9T\u00C9"}) {
    Send(typed);
  }
  EXPECT_EQ(outgoing.History().Items(), (Texts{"one", "/msg bob", "One ", "\u00C9t\u00E9"}));

  box.text = "begun";
  Texts seen;
  const auto press = [&](bool up) {
    up ? outgoing.cmbSend_Up(box.text) : outgoing.cmbSend_Down();
    seen.push_back(box.text);
  };
  press(false);
  for (int i = 0; i < 5; ++i) press(true);
  for (int i = 0; i < 5; ++i) press(false);
  EXPECT_EQ(seen, (Texts{"begun", "\u00C9t\u00E9", "One ", "/msg bob", "one", "one", "/msg bob",
                         "One ", "\u00C9t\u00E9", "begun", "begun"}));
  // A line that is sent ends the walk.
  press(true);
  press(true);
  Send("two");
  press(true);
  EXPECT_EQ(seen.back(), "two");
  press(false);
  EXPECT_EQ(seen.back(), "");
}

}  // namespace
}  // namespace brindle
