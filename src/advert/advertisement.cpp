#include "advert/advertisement.h"

#include "base/random.h"

namespace brindle {
namespace {

constexpr int kTicksInCycle = 10;

std::string AdvertisementLine(const std::string& web) {
  return std::string(
             "\0035Check out \0039Brindle \0035for your \0039server helper \0035needs! No need for "
             "IRC! Head over to \0039\002") +
         web +
         "\002 \0035to check out screens, updates, and features. \0039v0.5.70 released \0035jan. "
         "05! \00313\002[\0036AD : 10 minutes\00313]";
}

// The testimonial of draw 1 or 2.
std::string TestimonialLine(int draw) {
  constexpr char kIntro[] = "\0035Here's what people are saying about Brindle : ";
  constexpr char kFirst[] =
      "\0039Brindle has unimaginable features that are second to none.  It does all the work for "
      "you not missing a beat.  Makes getting the mails you want 10 times easier.\0035";
  constexpr char kSecond[] =
      "\0039I think Brindle is by far the best helper program out there.  It is very easy to use "
      "and has great features that no competitor offers.  The most standout feature is the list "
      "viewing feature, where I can search through thousands of mails using any search criteria I "
      "want.  This makes searching for the files I need a quick and fun experience, instead of "
      "taking all day!\0035";
  const bool first = draw == 1;
  return std::string(kIntro) + "\"" + (first ? kFirst : kSecond) + "\"" +
         (first ? " -Harrowgate" : " -Lumenfox");
}

}  // namespace

void Advertisement::tmrAD_Timer() {
  ++tag_;
  if (tag_ == 1) {
    if (MayAdvertise()) {
      Advertise();
    } else {
      SetCaption("Idle");
    }
  } else if (tag_ == kTicksInCycle) {
    tag_ = 0;
  }
}

void Advertisement::cmdIdle_Click() {
  if (caption_ != "Idle") {
    SetCaption("Idle");
    view_.EnableAdTimer(false);
    return;
  }
  SetCaption("Back");
  tag_ = 0;
  view_.EnableAdTimer(true);
}

bool Advertisement::MayAdvertise() const {
  return session_.connectionState == ConnectionState::kRegistered && !session_.currentRoom.empty();
}

void Advertisement::Advertise() {
  ++state_.count;
  Say(AdvertisementLine(web_));
  Say(TestimonialLine(RandomBetween(1, 2)));
  view_.SetSentAd("Sent advertise " + std::to_string(state_.count) + " time(s)");
}

void Advertisement::Say(std::string text) {
  state_.text = std::move(text);
  voice_.Say(state_.text);
}

void Advertisement::SetCaption(const char* caption) {
  caption_ = caption;
  view_.SetIdleCaption(caption_);
}

}  // namespace brindle
