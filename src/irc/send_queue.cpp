#include "irc/send_queue.h"

#include <utility>

#include "base/text.h"

namespace brindle {
namespace {

constexpr std::string_view kPingToken = "brindle";
// As servers count them; lines of the run, typed lines and our own PINGs are told apart elsewhere,
// and all others cost nothing.
constexpr struct {
  std::string_view command;
  int weight;
} kWeights[] = {{"JOIN ", 2}, {"WHOIS ", 2}, {"WHO ", 2}, {"PART ", 1}};
constexpr TickCount kStalledMilliseconds = 60000;

}  // namespace

void SendQueue::FollowSession() {
  if (sessionNumber_ == session_.number) return;
  sessionNumber_ = session_.number;
  typed_.clear();
  pace_.Reset();
  confirmedBefore_ = requests_;
}

void SendQueue::SendTyped(std::string line, std::function<void()> sent) {
  FollowSession();
  const TickCount now = clock_.Ticks();
  if (now - lastTyped_ >= kTypedBurst * kPauseMilliseconds) typedInBurst_ = 0;
  typed_.push_back({std::move(line), std::move(sent)});
  if (typed_.size() == 1 && typedInBurst_ < kTypedBurst) {
    SendNextTyped();
  } else {
    Wake();
  }
}

void SendQueue::SendNextTyped() {
  const Typed next = std::move(typed_.front());
  typed_.pop_front();
  ++typedInBurst_;
  lastTyped_ = clock_.Ticks();
  connection_.SendRaw(next.line);
  pace_.TypedSent(lastTyped_);
  if (next.sent) next.sent();
  if (own_.IsWaiting()) Wake();
}

void SendQueue::Count(std::string_view line) {
  FollowSession();
  for (const auto& [command, weight] : kWeights) {
    if (line.starts_with(command)) pace_.OtherSent(clock_.Ticks(), weight);
  }
}

void SendQueue::BeginRun(size_t lines) {
  FollowSession();
  ++runs_;
  if (lines > kShortRun) ++longRuns_;
  if (longRuns_ > 0) pace_.BeginRun();
  Wake();
}

void SendQueue::EndRun(size_t lines) {
  --runs_;
  if (lines > kShortRun) --longRuns_;
  if (longRuns_ == 0) pace_.EndRun();
}

bool SendQueue::MayRequest() {
  FollowSession();
  return typed_.empty() && pace_.MayLine(clock_.Ticks());
}

std::uint64_t SendQueue::SendRequest(std::string_view line) {
  connection_.SendRaw(line);
  lastRequest_ = clock_.Ticks();
  pace_.RequestSent(lastRequest_);
  return ++requests_;
}

std::uint64_t SendQueue::ConfirmedRequest() const {
  return confirmedBefore_ + pace_.RequestsConfirmed();
}

bool SendQueue::IsStalled() const { return pace_.Waiting(clock_.Ticks()) >= kStalledMilliseconds; }

void SendQueue::Whois(std::string_view nick) {
  FollowSession();
  const TickCount now = clock_.Ticks();
  if (IsSending() || now - lastWhois_ < kWhoisMilliseconds) return;
  lastWhois_ = now;
  connection_.SendRaw("WHOIS " + std::string(nick));
}

bool SendQueue::TakePong(std::string_view token) {
  if (!token.starts_with(kPingToken)) return false;
  const auto number = WholeNumber(token.substr(kPingToken.size()), 1, UINT32_MAX);
  return number && pace_.Answered(static_cast<std::uint32_t>(*number), clock_.Ticks());
}

void SendQueue::tmrSend_Timer() {
  FollowSession();
  const TickCount now = clock_.Ticks();
  if (session_.connectionState == ConnectionState::kDisconnected) own_.EndSession();
  own_.tmrAnswer_Timer(now);
  if (!typed_.empty() && now - lastTyped_ >= kPauseMilliseconds) SendNextTyped();
  while (const auto number = pace_.NextPing(now)) {
    connection_.SendRaw("PING :" + std::string(kPingToken) + std::to_string(*number));
  }
}

}  // namespace brindle
