#include "mail/request_stack.h"

#include <algorithm>
#include <utility>

namespace brindle {
namespace {

constexpr char kGivenBack[] = " What may not have arrived is checked again.";

std::string HowFar(size_t sent, size_t lines) {
  return " after " + std::to_string(sent) + " of " + std::to_string(lines) +
         (lines == 1 ? " request" : " requests");
}

}  // namespace

std::string RequestText(const std::string& handle, const std::string& screenName,
                        const std::string& what) {
  return "!" + handle + " send " + screenName + " " + what;
}

void RequestStack::Push(RequestRun run) {
  if (EndedWithRoom()) return;
  if (runs_.empty()) {
    said_.clear();
    sessionNumber_ = session_.number;
    room_ = session_.currentRoom;
  }
  lines_.BeginRun(run.lines);
  runs_.push_back({std::move(run), 0});
  due_ = clock_.Ticks();
  tmrRequest_Timer();
}

void RequestStack::tmrRequest_Timer() {
  ForgetArrived();
  if (runs_.empty()) return WatchLastLines();
  if (EndedWithRoom()) return;
  DropStaleRuns();
  while (!runs_.empty() && clock_.Ticks() >= due_) {
    if (!lines_.MayRequest()) {
      const bool stalled = lines_.IsStalled();
      if (stalled && !std::exchange(toldStalled_, true)) {
        window_.ShowHint("The server has not answered for a minute; the requests wait for it.");
      }
      return;
    }
    toldStalled_ = false;
    SayNext();
  }
}

void RequestStack::SayNext() {
  std::optional<RequestLine> line = runs_.back().run.next();
  if (!line) {
    FinishTop();
    return;
  }
  const std::optional<std::uint64_t> number = voice_.SayRequest(line->text);
  if (!number) {
    // A hint has said why.
    if (line->takeBack) line->takeBack();
    while (!runs_.empty()) Pop();
    return;
  }
  said_.push_back({*number, clock_.Ticks(), std::move(line->takeBack)});
  due_ = clock_.Ticks() + SendQueue::kPauseMilliseconds;
  Running& top = runs_.back();
  ++top.sent;
  Show(RunProgress{top.sent, std::max(top.sent, top.run.lines), line->what});
}

void RequestStack::FinishTop() {
  std::string words = runs_.back().run.afterword;
  const size_t sent = runs_.back().sent;
  Pop();
  if (sent > 0)
    words = "Requests sent: " + std::to_string(sent) + (words.empty() ? "" : ". ") + words;
  if (!words.empty()) window_.ShowHint(words);
}

bool RequestStack::IsSessionLost() const {
  return session_.number != sessionNumber_ ||
         session_.connectionState == ConnectionState::kDisconnected;
}

void RequestStack::WatchLastLines() {
  const bool isMissed = std::any_of(said_.begin(), said_.end(),
                                    [](const Said& said) { return said.takeBack != nullptr; });
  if (!isMissed || !IsSessionLost()) return;
  TakeBackSince(0);
  EndAll("The session ended");
}

bool RequestStack::EndedWithRoom() {
  if (runs_.empty()) return false;
  const bool lost = IsSessionLost();
  if (!lost && session_.currentRoom == room_) return false;
  const std::string why = session_.endReason.empty() ? "" : " (" + session_.endReason + ")";
  if (lost) {
    // A run as short as this asks for no confirmation, so all of it is in doubt.
    TakeBackSince(0);
    for (const Running& running : runs_) {
      if (running.run.sessionLost) running.run.sessionLost(room_);
    }
    EndAll("The session ended" + why);
  } else {
    EndAll("The room was left" + why);
  }
  return true;
}

void RequestStack::DropStaleRuns() {
  while (!runs_.empty() && runs_.back().run.isStale && runs_.back().run.isStale()) {
    const Running& top = runs_.back();
    window_.ShowHint("The list was replaced" + HowFar(top.sent, top.run.lines) + ".");
    Pop();
  }
}

void RequestStack::ForgetArrived() {
  while (!said_.empty() &&
         (said_.front().number <= lines_.ConfirmedRequest() ||
          (runs_.empty() && clock_.Ticks() - said_.front().when > SendQueue::kDoubtMilliseconds))) {
    said_.pop_front();
  }
}

void RequestStack::Stop() {
  if (!runs_.empty()) EndAll("Stopped");
}

void RequestStack::StopRunsOf(const void* owner) {
  const bool ran = !runs_.empty();
  std::erase_if(runs_, [this, owner](const Running& running) {
    if (running.run.owner != owner) return false;
    lines_.EndRun(running.run.lines);
    return true;
  });
  if (runs_.empty() && ran) Show(std::nullopt);
}

void RequestStack::LineRefused(const std::string& reason) {
  ForgetArrived();
  if (runs_.empty() && said_.empty()) return;
  TakeBackSince(clock_.Ticks() - SendQueue::kDoubtMilliseconds);
  EndAll("The room takes no requests (" + reason + ")");
}

void RequestStack::Answered(std::uint64_t number, const std::string& refusal) {
  const auto said = std::find_if(said_.begin(), said_.end(),
                                 [number](const Said& row) { return row.number == number; });
  if (said == said_.end()) return;
  const Said answered = std::move(*said);
  said_.erase(said);
  if (refusal.empty()) return;
  if (answered.takeBack) answered.takeBack();
  EndAll("The room takes no requests (" + refusal + ")");
}

void RequestStack::TakeBackSince(TickCount moment) {
  for (const Said& said : std::exchange(said_, {})) {
    if (said.when >= moment && said.takeBack) said.takeBack();
  }
}

void RequestStack::EndAll(const std::string& words) {
  const std::string far = runs_.empty() ? "" : HowFar(runs_.back().sent, runs_.back().run.lines);
  while (!runs_.empty()) Pop();
  const bool stopped = words == "Stopped";
  window_.ShowHint(words + far + "." + (stopped ? "" : kGivenBack));
}

void RequestStack::Pop() {
  lines_.EndRun(runs_.back().run.lines);
  runs_.pop_back();
  if (runs_.empty()) Show(std::nullopt);
}

}  // namespace brindle
