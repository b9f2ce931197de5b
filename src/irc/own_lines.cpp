#include "irc/own_lines.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace brindle {
namespace {

constexpr std::string_view kTagStart = "@label=";
// In grey behind the text.
constexpr char kUnconfirmed[] = "\00314 (not confirmed by the server)";

std::string LabelIn(std::string_view tag) {
  return tag.empty() ? "" : std::string(TrimBlanks(tag.substr(kTagStart.size())));
}

}  // namespace

std::string OwnLines::NextTag() {
  return labelled_ ? std::string(kTagStart) + "b" + std::to_string(++labels_) + " " : "";
}

void OwnLines::ShowUnlessRelayed(OwnLine& line) const {
  if (relayed_ || !line.show) return;
  std::exchange(line.show, nullptr)(line.text, std::nullopt);
}

void OwnLines::Sent(OwnLine line, const std::string& tag, TickCount now) {
  ShowUnlessRelayed(line);
  if (!relayed_ && tag.empty()) return;
  waiting_.push_back({std::move(line), LabelIn(tag), now});
  if (relayed_ && changed_) changed_();
}

OwnLines::Place OwnLines::Find(std::string_view label) {
  return std::find_if(waiting_.begin(), waiting_.end(), [&](const Waiting& waiting) {
    return !label.empty() && waiting.label == label;
  });
}

// Without labels the text decides; a server that changes texts still keeps their order.
OwnLines::Place OwnLines::FindRelayed(std::string_view label, std::string_view target,
                                      std::string_view text) {
  const Place labelled = Find(label);
  if (labelled != waiting_.end()) return labelled;
  Place first = waiting_.end();
  for (Place place = waiting_.begin(); place != waiting_.end(); ++place) {
    const bool isLabelled = !place->label.empty();
    if (isLabelled || !EqualsIgnoringCase(place->line.target, target)) continue;
    if (place->line.text == text) return place;
    if (first == waiting_.end()) first = place;
  }
  return first;
}

OwnLines::Waiting OwnLines::TakeOut(Place place) {
  Waiting taken = std::move(*place);
  waiting_.erase(place);
  if (taken.line.show && changed_) changed_();
  return taken;
}

bool OwnLines::Relayed(std::string_view label, std::string_view target, std::string_view text,
                       const std::optional<std::tm>& saidAt) {
  const Place place = FindRelayed(label, target, text);
  if (place == waiting_.end()) return false;
  const Waiting taken = TakeOut(place);
  if (taken.line.show) taken.line.show(std::string(text), saidAt);
  if (taken.line.request != 0 && answered_) answered_(taken.line.request, "");
  return true;
}

void OwnLines::Taken(std::string_view label) {
  const Place place = Find(label);
  if (place == waiting_.end()) return;
  const Waiting taken = TakeOut(place);
  if (taken.line.show) taken.line.show(taken.line.text, std::nullopt);
  if (taken.line.request != 0 && answered_) answered_(taken.line.request, "");
}

void OwnLines::Refused(std::string_view label, const std::string& reason) {
  const Place place = Find(label);
  if (place == waiting_.end()) return;
  const Waiting taken = TakeOut(place);
  if (taken.line.show) {
    taken.line.show(taken.line.text + "\00314 (refused: " + reason + ")", std::nullopt);
  }
  if (taken.line.request != 0 && answered_) answered_(taken.line.request, reason);
}

bool OwnLines::Knows(std::string_view label) const {
  return std::any_of(waiting_.begin(), waiting_.end(), [&](const Waiting& waiting) {
    return !label.empty() && waiting.label == label;
  });
}

void OwnLines::tmrAnswer_Timer(TickCount now) {
  while (IsWaiting() && now - waiting_.front().since >= kAnswerMilliseconds) GiveUpFirst();
}

void OwnLines::EndSession() {
  SetModes(false, false);
  while (IsWaiting()) GiveUpFirst();
}

void OwnLines::GiveUpFirst() {
  const Waiting taken = TakeOut(waiting_.begin());
  if (taken.line.show) taken.line.show(taken.line.text + kUnconfirmed, std::nullopt);
}

size_t OwnLines::OnTheWay() const {
  return static_cast<size_t>(
      std::count_if(waiting_.begin(), waiting_.end(),
                    [](const Waiting& waiting) { return static_cast<bool>(waiting.line.show); }));
}

}  // namespace brindle
