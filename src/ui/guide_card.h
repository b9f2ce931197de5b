#pragma once
// "From here to your first mail": the five steps of the program's job, each ticked off when it is
// done, the next one standing out.

#include <QGroupBox>
#include <QLabel>
#include <array>

namespace brindle {

enum class GuideStep { kConnect, kRoom, kAsk, kCheck, kRequest };
inline constexpr size_t kGuideSteps = 5;

class GuideCard : public QGroupBox {
  Q_OBJECT

 public:
  explicit GuideCard(QWidget* parent = nullptr);

  void SetDone(GuideStep step, bool done);

 private:
  class Mark;

  void Refresh();

  std::array<Mark*, kGuideSteps> marks_;
  std::array<QLabel*, kGuideSteps> labels_;
  std::array<bool, kGuideSteps> done_ = {};
};

}  // namespace brindle
