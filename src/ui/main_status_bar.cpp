#include "ui/main_status_bar.h"

#include "ui/qt_text.h"

namespace brindle {
namespace {

constexpr int kHintMilliseconds = 30000;
constexpr int kFreshMilliseconds = 5000;

// A rule between two panels.
class Divider : public QWidget {
 public:
  Divider() {
    setFixedWidth(1);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter(this).fillRect(rect().adjusted(0, kSmallGap, 0, -kSmallGap), CurrentColours().divider);
  }
};

}  // namespace

LookRole StateRole(ConnectionState state) {
  switch (state) {
    case ConnectionState::kRegistered:
      return LookRole::kGood;
    case ConnectionState::kConnecting:
      return LookRole::kWarning;
    case ConnectionState::kDisconnected:
      break;
  }
  return LookRole::kBad;
}

MainStatusBar::MainStatusBar(QWidget* parent)
    : QStatusBar(parent),
      dot_(new IconLabel(IconName::kDot, LookRole::kBad, kDotSize)),
      hintPanel_(new ElidedLabel) {
  dot_->setContentsMargins(kGap, 0, 0, 0);
  addWidget(dot_);
  statusPanel_ = AddPanel(new QLabel("Status - Disconnected"), "barStatusPanel1", 0);
  addWidget(new Divider);
  roomPanel_ = AddPanel(new QLabel, "barStatusRoom", 0);
  AddPanel(hintPanel_, "barStatusPanel2", 1);
  const auto monitor = [this](const char* name, const char* help) {
    auto* label = new QLabel("0/0");
    label->setObjectName(name);
    label->setToolTip(help);
    label->setForegroundRole(kDimText);
    addPermanentWidget(new Divider);
    addPermanentWidget(label);
    return label;
  };
  lblBufferSizePeak_ = monitor("lblBufferSizePeak", "Lines waiting to be shown / most so far");
  lblRTBSizePeak_ = monitor("lblRTBSizePeak", "Characters in the room view / most so far");
  hintTimer_.setSingleShot(true);
  hintTimer_.setInterval(kHintMilliseconds);
  connect(&hintTimer_, &QTimer::timeout, this, [this] {
    hint_.clear();
    Refresh();
  });
  freshTimer_.setSingleShot(true);
  freshTimer_.setInterval(kFreshMilliseconds);
  connect(&freshTimer_, &QTimer::timeout, this, &MainStatusBar::Refresh);
}

QLabel* MainStatusBar::AddPanel(QLabel* label, const char* name, int stretch) {
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  addWidget(label, stretch);
  return label;
}

void MainStatusBar::ShowSession(const Session& session) {
  dot_->SetIcon(IconName::kDot, StateRole(session.connectionState));
  roomPanel_->setText(ToQString(session.currentRoom));
}

void MainStatusBar::SetStatus(const std::string& text) { statusPanel_->setText(ToQString(text)); }

void MainStatusBar::ShowHint(const std::string& text) {
  hint_ = ToQString(text);
  help_.clear();
  hintTimer_.start();
  freshTimer_.start();
  Refresh();
}

void MainStatusBar::Refresh() {
  const bool hint = help_.isEmpty() || (freshTimer_.isActive() && !hint_.isEmpty());
  hintPanel_->ShowText(hint ? hint_ : help_);
}

void MainStatusBar::ShowHelp(const std::string& text) {
  help_ = ToQString(text);
  Refresh();
}

void MainStatusBar::SetBufferMonitor(const std::string& text) {
  lblBufferSizePeak_->setText(ToQString(text));
}

void MainStatusBar::SetRtbMonitor(const std::string& text) {
  lblRTBSizePeak_->setText(ToQString(text));
}

}  // namespace brindle
