#include "irc/reconnect.h"

#include <algorithm>
#include <utility>

#include "base/random.h"

namespace brindle {
namespace {

constexpr int kSpread = 5;  // a pause is changed by up to a fifth of it

}  // namespace

void Reconnect::Lost(TickCount now) {
  due_ = now + pause_ + RandomBetween(-pause_ / kSpread, pause_ / kSpread);
  pause_ = std::min(pause_ * 2, kLongestPause);
}

void Reconnect::Made() {
  due_.reset();
  pause_ = kFirstPause;
}

int Reconnect::SecondsLeft(TickCount now) const {
  return due_ ? static_cast<int>(std::max<TickCount>((*due_ - now + 999) / 1000, 1)) : 0;
}

LinkWatch::Verdict LinkWatch::Look(TickCount now) {
  if (std::exchange(hasHeard_, false)) heard_ = now;
  if (asked_) return now - *asked_ >= kPatience ? Verdict::kDead : Verdict::kWell;
  if (now - heard_ < kSilence) return Verdict::kWell;
  asked_ = now;
  return Verdict::kAsk;
}

}  // namespace brindle
