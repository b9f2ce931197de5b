#include "advert/advertisement.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "support/session_fixture.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;

// "^C" stands for the colour mark and "^B" for bold.
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

std::string WithMarks(std::string_view text) {
  return JoinFrom(Split(Readable(text), "\002"), 0, "^B");
}

class AdvertisementTest : public testing::Test,
                          protected SessionFixture,
                          protected AdvertisementView {
 protected:
  void SetIdleCaption(const std::string& text) override { idleCaption = text; }
  void SetSentAd(const std::string& text) override { sentAd = text; }
  void EnableAdTimer(bool enabled) override { running = enabled; }

  // The minutes in which something was said, of the next so many.
  std::vector<int> Minutes(int count) {
    std::vector<int> minutes;
    for (int minute = 1; minute <= count; ++minute) {
      if (running) ad.tmrAD_Timer();
      const size_t said = socket.TakeSent().size();
      EXPECT_TRUE(said == 0 || said == 2) << said;
      if (said > 0) minutes.push_back(minute);
    }
    return minutes;
  }

  std::string idleCaption = "Idle";
  std::string sentAd;
  bool running = false;
  Advertisement ad{session, connection, queue, options, *this, clock};
};

TEST_F(AdvertisementTest, SpeaksEveryTenMinutes) {
  EnterRoom();
  EXPECT_EQ(Minutes(30), std::vector<int>{});
  ad.cmdIdle_Click();
  EXPECT_EQ(idleCaption, "Back");
  EXPECT_EQ(Minutes(25), (std::vector<int>{1, 11, 21}));
  EXPECT_EQ(sentAd, "Sent advertise 3 time(s)");
  // Off in the fifth minute of a cycle, and on again.
  ad.cmdIdle_Click();
  EXPECT_EQ(idleCaption, "Idle");
  EXPECT_FALSE(running);
  EXPECT_EQ(Minutes(30), std::vector<int>{});
  ad.cmdIdle_Click();
  EXPECT_EQ(Minutes(180), (std::vector<int>{1, 11, 21, 31, 41, 51, 61, 71, 81, 91, 101, 111, 121,
                                            131, 141, 151, 161, 171}));
  EXPECT_EQ(sentAd, "Sent advertise 21 time(s)");
  EXPECT_EQ(ad.State().count, 21);
}

TEST_F(AdvertisementTest, WithoutARoomTheCaptionGoesBackAndTheTimerRunsOn) {
  const std::vector<int> never;
  ad.cmdIdle_Click();
  EXPECT_EQ(Minutes(1), never);
  EXPECT_EQ(idleCaption, "Idle");
  EXPECT_TRUE(running);
  Connect();
  session.currentRoom = "#room";
  ForgetRecords();
  EXPECT_EQ(Minutes(10), never);
  Register();
  EXPECT_EQ(Minutes(10), never);
  EXPECT_EQ(sentAd, "");
  EXPECT_EQ(ad.State().count, 0);
  EnterRoom();
  EXPECT_EQ(Minutes(10), std::vector<int>{10});
  EXPECT_EQ(idleCaption, "Idle");
  // The next click begins a cycle anew.
  EXPECT_EQ(Minutes(3), never);
  ad.cmdIdle_Click();
  EXPECT_EQ(idleCaption, "Back");
  EXPECT_EQ(Minutes(12), (std::vector<int>{1, 11}));
}

TEST_F(AdvertisementTest, SaysTheTextsByteForByte) {
  EnterRoom();
  options.timestampChatLines = true;
  ad.cmdIdle_Click();
  std::set<std::string> testimonials;
  for (int i = 0; i < 20000 && testimonials.size() < 2; ++i) {
    for (int minute = 0; minute < 10; ++minute) ad.tmrAD_Timer();
    const std::string text = WithMarks(ad.State().text);
    ASSERT_TRUE(text == kFirst || text == kSecond) << text;
    Texts shown = TakeQueued();
    shown.insert(shown.end(), socket.sent.begin(), socket.sent.end());
    socket.TakeSent();
    for (std::string& line : shown) line = WithMarks(line);
    const std::string echo = "2|^C15[^C113:07pm^C15] ^C1<me> ";
    EXPECT_EQ(shown,
              (Texts{echo + kAd, echo + text, "PRIVMSG #room :" + kAd, "PRIVMSG #room :" + text}));
    testimonials.insert(text);
  }
  EXPECT_EQ(testimonials.size(), 2U);
}

}  // namespace
}  // namespace brindle
