#pragma once
// Dialogs that answer from a script and write down what they were asked.

#include <deque>
#include <optional>
#include <ostream>
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
    friend bool operator==(const Shown&, const Shown&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Shown& shown) {
      return out << static_cast<int>(shown.icon) << " " << shown.text;
    }
  };

  void Notice(Icon icon, const std::string& text) override { notices.push_back({icon, text}); }

  bool Question(Icon icon, const std::string& text) override {
    questions.push_back({icon, text});
    return Next(questionAnswers, false);
  }

  std::optional<std::string> Input(const std::string& prompt) override {
    prompts.push_back(prompt);
    return Next(inputAnswers, std::optional<std::string>());
  }

  std::optional<std::string> OpenFile(const std::string& filter) override {
    filters.push_back(filter);
    return Next(fileAnswers, std::optional<std::string>());
  }

  std::optional<Colour> PickColour(Colour) override {
    return Next(colourAnswers, std::optional<Colour>());
  }

  // The answers to come; without one, the user cancels.
  std::deque<bool> questionAnswers;
  std::deque<std::optional<std::string>> inputAnswers;
  std::deque<std::optional<std::string>> fileAnswers;

  std::deque<std::optional<Colour>> colourAnswers;

  std::vector<Shown> notices;
  std::vector<Shown> questions;
  std::vector<std::string> prompts;
  std::vector<std::string> filters;

 private:
  template <typename Answer>
  static Answer Next(std::deque<Answer>& answers, Answer otherwise) {
    if (answers.empty()) return otherwise;
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
  }
};

}  // namespace brindle
