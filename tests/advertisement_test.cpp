// The advertisement: when it speaks, and what it says.
#include "advert/advertisement.h"

#include <gtest/gtest.h>

#include <set>

#include "support/talk_stage.h"

namespace brindle {
namespace {

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
