#pragma once
// Dialogs that answer from a script and write down what they told.

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/dialogs.h"

namespace brindle {

class FakeDialogs : public Dialogs {
 public:
  struct Shown {
    Icon icon;
    std::string text;
  };
  using Texts = std::deque<std::optional<std::string>>;

  void Notice(Icon icon, const std::string& text) override { notices.push_back({icon, text}); }
  bool Question(Icon icon, const std::string& text) override {
    questions.push_back({icon, text});
    return Next(questionAnswers);
  }
  std::optional<std::string> Input(const std::string&) override { return Next(inputAnswers); }
  std::optional<std::string> OpenFile(const std::string&) override { return Next(fileAnswers); }
  std::optional<Colour> PickColour(Colour) override { return Next(colourAnswers); }

  // The answers to come; without one, the user cancels.
  std::deque<bool> questionAnswers;
  Texts inputAnswers, fileAnswers;
  std::deque<std::optional<Colour>> colourAnswers;

  std::vector<Shown> notices, questions;

 private:
  template <typename Answer>
  static Answer Next(std::deque<Answer>& answers) {
    if (answers.empty()) return {};
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
  }
};

}  // namespace brindle
