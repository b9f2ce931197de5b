#include "irc/ctcp_answers.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "irc/irc_line.h"
#include "settings/product.h"

namespace brindle {
namespace {

constexpr char kMark = '\x01';
// So many within so many milliseconds.
constexpr struct {
  size_t answers;
  TickCount within;
} kLimits[] = {{3, 10000}, {10, 60000}};

std::string DateAndTime(const std::tm& time) {
  std::array<char, 64> text{};
  const size_t size = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &time);
  return {text.data(), size};
}

}  // namespace

bool CtcpAnswers::MayAnswer(TickCount now) {
  for (const auto& [answers, within] : kLimits) {
    if (answered_.size() >= answers && now - answered_[answers - 1] < within) return false;
  }
  answered_.push_front(now);
  answered_.resize(std::min(answered_.size(), std::rbegin(kLimits)->answers));
  return true;
}

std::optional<std::string> CtcpAnswers::AnswerTo(std::string_view request, size_t most,
                                                 const Clock& clock) {
  const std::string plain = RemoveChars(FirstLine(request), std::string_view(&kMark, 1));
  const size_t blank = std::min(plain.find(' '), plain.size());
  const std::string word = UpperCase(std::string_view(plain).substr(0, blank));
  std::string answer = word;
  if (word == "VERSION") {
    answer += " " + VersionText();
  } else if (word == "TIME") {
    answer += " " + DateAndTime(clock.LocalTime());
  } else if (word == "PING") {
    answer += plain.substr(blank);
  } else {
    return std::nullopt;
  }
  constexpr size_t kMarks = 2;
  if (most < word.size() + kMarks || !MayAnswer(clock.Ticks())) return std::nullopt;
  return kMark + std::string(FirstBytes(answer, most - kMarks)) + kMark;
}

}  // namespace brindle
