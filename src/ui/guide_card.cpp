#include "ui/guide_card.h"

#include <QGridLayout>
#include <QPainter>

#include "ui/icons.h"
#include "ui/look.h"
#include "ui/look_paint.h"

namespace brindle {
namespace {

constexpr std::array<const char*, kGuideSteps> kTexts = {
    "Connect to an IRC server", "Enter the room of a mail server", "Ask the server for its list",
    "Load the list and check mails (List)", "Request Selected"};
constexpr int kMarkSize = 22;

}  // namespace

// A step's number in a disc, or a tick.
class GuideCard::Mark : public QWidget {
 public:
  enum class State { kLater, kNext, kDone };

  Mark(int number, QWidget* parent) : QWidget(parent), number_(number) {
    setFixedSize(kMarkSize, kMarkSize);
  }

  void SetState(State state) {
    state_ = state;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const LookColours& colours = CurrentColours();
    if (state_ == State::kDone) {
      const QIcon tick = MakeIcon(IconName::kCheck, LookRole::kGood);
      const int margin = (kMarkSize - kIconSize) / 2;
      return tick.paint(&painter, rect().adjusted(margin, margin, -margin, -margin));
    }
    const bool next = state_ == State::kNext;
    painter.setPen(Qt::NoPen);
    painter.setBrush(next ? colours.accentFill : colours.divider);
    painter.drawEllipse(rect());
    painter.setPen(next ? colours.accentText : colours.text);
    painter.setFont(Medium(font()));
    painter.drawText(rect(), Qt::AlignCenter, QString::number(number_));
  }

 private:
  const int number_;
  State state_ = State::kLater;
};

GuideCard::GuideCard(QWidget* parent) : QGroupBox("From here to your first mail", parent) {
  auto* grid = new QGridLayout(this);
  grid->setColumnStretch(1, 1);
  for (size_t i = 0; i < kGuideSteps; ++i) {
    const int row = static_cast<int>(i);
    marks_[i] = new Mark(row + 1, this);
    labels_[i] = new QLabel(kTexts[i], this);
    labels_[i]->setWordWrap(true);
    grid->addWidget(marks_[i], row, 0);
    grid->addWidget(labels_[i], row, 1);
  }
  Refresh();
}

void GuideCard::SetDone(GuideStep step, bool done) {
  bool& before = done_[static_cast<size_t>(step)];
  if (before == done) return;
  before = done;
  Refresh();
}

void GuideCard::Refresh() {
  bool nextFound = false;
  for (size_t i = 0; i < kGuideSteps; ++i) {
    const bool next = !done_[i] && !nextFound;
    nextFound |= next;
    marks_[i]->SetState(done_[i] ? Mark::State::kDone
                        : next   ? Mark::State::kNext
                                 : Mark::State::kLater);
    labels_[i]->setForegroundRole(next ? QPalette::WindowText : kDimText);
    labels_[i]->setAccessibleName(
        QString("Step %1%2: %3").arg(i + 1).arg(done_[i] ? ", done" : "").arg(kTexts[i]));
  }
}

}  // namespace brindle
