#include "ui/frm_main.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QStatusBar>
#include <QWindow>

#include "settings/product.h"
#include "ui/hover_guide.h"
#include "ui/icons.h"
#include "ui/qt_text.h"
#include "ui_frm_main.h"

namespace brindle {
namespace {

constexpr int kUptimeMilliseconds = 1000;
constexpr int kHintMilliseconds = 30000;
constexpr QSize kFirstSize{1100, 720};
constexpr double kMostOfScreen = 0.9;
constexpr QSize kLeastSize{720, 480};
constexpr int kSideWidth = 200;

}  // namespace

FrmMain::FrmMain() : ui_(std::make_unique<Ui::FrmMain>()) {
  ui_->setupUi(this);
  ui_->tabMain->findChild<QStackedWidget*>()->setObjectName("picTab");  // holds the tabs' pages
  setWindowTitle(ToQString(VersionText()));
  setMinimumSize(kLeastSize);
  const QSize screen = QGuiApplication::primaryScreen()->availableSize() * kMostOfScreen;
  resize(kFirstSize.boundedTo(screen).expandedTo(kLeastSize));
  ui_->splitMain->setStretchFactor(0, 1);
  ui_->splitMain->setSizes({kFirstSize.width() - kSideWidth, kSideWidth});
  ui_->splitSide->setSizes({1, 1});
  ui_->cmdSend->setIcon(MakeIcon(IconName::kSend));
  BuildStatusBar();
  AddKeys();

  tmrProcess_.setObjectName("tmrProcess");
  tmrProcess_.setInterval(LinePump::kTickMilliseconds);
  tmrProcess_.setTimerType(Qt::PreciseTimer);
  uptimeTimer_.setInterval(kUptimeMilliseconds);
  for (ChatTextView* view : {ui_->txtStatus, ui_->txtChannel}) {
    connect(view, &ChatTextView::Selecting, this, &FrmMain::HoldPumpDuringSelection);
  }
  // One screen name, shown in two places.
  connect(ui_->pnlInfo, &InfoPanel::ScreenNameEdited, ui_->pnlList, &ListPanel::SetScreenName);
  connect(ui_->pnlList, &ListPanel::ScreenNameEdited, ui_->pnlInfo, &InfoPanel::SetScreenName);
  connect(ui_->pnlList, &ListPanel::Hint, hintPanel_, &QLabel::setText);
  hintTimer_.setSingleShot(true);
  hintTimer_.setInterval(kHintMilliseconds);
  connect(&hintTimer_, &QTimer::timeout, hintPanel_, &QLabel::clear);
  ConnectOptions();
  new HoverGuide(
      *this, [this](const std::string& hint) { ShowHint(hint); },
      [this](const std::string& help) { ui_->pnlOptions->SetQuickHelp(ToQString(help)); });
}

FrmMain::~FrmMain() = default;

void FrmMain::BuildStatusBar() {
  const auto panel = [this](const char* name, const char* text, const char* help) {
    auto* label = new QLabel(text, this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setToolTip(help);
    return label;
  };
  statusPanel_ = panel("barStatusPanel1", "Status - Disconnected", "");
  hintPanel_ = panel("barStatusPanel2", "", "");
  lblBufferSizePeak_ = panel("lblBufferSizePeak", "0/0", "Lines waiting to be shown / most so far");
  lblRTBSizePeak_ = panel("lblRTBSizePeak", "0/0", "Characters in the room view / most so far");
  ui_->barStatus->addWidget(statusPanel_);
  ui_->barStatus->addWidget(hintPanel_, 1);
  ui_->barStatus->addPermanentWidget(lblBufferSizePeak_);
  ui_->barStatus->addPermanentWidget(lblRTBSizePeak_);
}

void FrmMain::AddKeys() {
  const auto add = [this](const QKeySequence& keys, auto act) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
  };
  for (int tab = 0; tab < ui_->tabMain->count(); ++tab) {
    add(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + tab)),
        [this, tab] { ShowTab(static_cast<Tab>(tab)); });
  }
  for (const int next : {Qt::Key_PageDown, Qt::Key_Tab}) {
    add(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(next)), [this] { StepTab(1); });
  }
  add(QKeySequence(Qt::CTRL | Qt::Key_PageUp), [this] { StepTab(-1); });
  add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), [this] { StepTab(-1); });
  add(QKeySequence(Qt::Key_F1), [this] { ShowTab(Tab::kHelp); });
  add(QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { close(); });
  add(QKeySequence::Open, [this] {
    ShowTab(Tab::kList);
    ui_->pnlList->LoadFromFile();
  });
}

void FrmMain::StepTab(int step) {
  const int tabs = ui_->tabMain->count();
  ui_->tabMain->setCurrentIndex((ui_->tabMain->currentIndex() + step + tabs) % tabs);
}

void FrmMain::AttachPump(LinePump& pump, OutputQueue& queue) {
  pump_ = &pump;
  queue.OnQueued([this] {
    if (!held_ && !tmrProcess_.isActive()) tmrProcess_.start();
  });
  connect(&tmrProcess_, &QTimer::timeout, this, [this] {
    pump_->tmrProcess_Timer();
    if (pump_->IsIdle()) tmrProcess_.stop();
  });
  // While the pump rests, only the uptime in the caption moves on.
  connect(&uptimeTimer_, &QTimer::timeout, this, [this] {
    if (!held_ && !tmrProcess_.isActive()) pump_->tmrProcess_Timer();
  });
  uptimeTimer_.start();
}

void FrmMain::AttachSendBox(OutgoingText& outgoing) {
  outgoing_ = &outgoing;
  ui_->cmbSend->Attach(outgoing.History());
  // What is said may have colours, and what is pasted several lines.
  ui_->cmbSend->lineEdit()->setValidator(nullptr);
  ui_->cmbSend->installEventFilter(this);
  connect(ui_->cmdSend, &QPushButton::clicked, this, [this] {
    outgoing_->cmdSend_Click(ui_->cmbSend->currentText().toStdString(),
                             ui_->tabMain->currentIndex());
    ui_->cmbSend->setFocus();
  });
  connect(ui_->cmbSend->lineEdit(), &QLineEdit::returnPressed, ui_->cmdSend, &QPushButton::click);
}

bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->cmbSend && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    // With Alt, the keys open the list.
    if (key->modifiers().testFlag(Qt::AltModifier)) return false;
    return WalkHistory(key->key()) || ScrollChat(*key);
  }
  return QMainWindow::eventFilter(watched, event);
}

bool FrmMain::WalkHistory(int key) {
  if (key == Qt::Key_Up) {
    outgoing_->cmbSend_Up(ui_->cmbSend->currentText().toStdString());
  } else if (key == Qt::Key_Down) {
    outgoing_->cmbSend_Down(ui_->cmbSend->currentText().toStdString());
  }
  return key == Qt::Key_Up || key == Qt::Key_Down;
}

bool FrmMain::ScrollChat(const QKeyEvent& key) {
  if (key.key() != Qt::Key_PageUp && key.key() != Qt::Key_PageDown) return false;
  const bool status = ui_->tabMain->currentIndex() == static_cast<int>(Tab::kStatus);
  QKeyEvent forwarded(key.type(), key.key(), key.modifiers());
  QCoreApplication::sendEvent(status ? ui_->txtStatus : ui_->txtChannel, &forwarded);
  return true;
}

void FrmMain::HoldPumpDuringSelection(bool selecting) {
  held_ = selecting;
  if (selecting) {
    tmrProcess_.stop();
  } else if (pump_ != nullptr && !pump_->IsIdle()) {
    tmrProcess_.start();
  }
}

void FrmMain::ConnectOptions() {
  connect(ui_->tabMain, &QTabWidget::currentChanged, this, &FrmMain::PlaceRoomView);
  connect(ui_->pnlOptions, &OptionsPanel::TopmostChanged, this, &FrmMain::SetTopmost);
  connect(ui_->pnlOptions, &OptionsPanel::RoomOnListTabChanged, this, [this](bool shown) {
    roomOnListTab_ = shown;
    PlaceRoomView();
  });
  connect(ui_->pnlOptions, &OptionsPanel::ColoursChanged, this, &FrmMain::ShowColours);
}

void FrmMain::SetTopmost(bool topmost) {
  // On the window of the desktop, where there is one: the widget's own flag would hide the window.
  if (windowHandle() != nullptr) windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topmost);
  if (!isVisible()) setWindowFlag(Qt::WindowStaysOnTopHint, topmost);
}

void FrmMain::PlaceRoomView() {
  const bool onList =
      roomOnListTab_ && ui_->tabMain->currentIndex() == static_cast<int>(Tab::kList);
  QWidget* home = onList ? static_cast<QWidget*>(ui_->splitList) : ui_->tabRoom;
  if (ui_->txtChannel->parentWidget() == home) return;
  if (onList) {
    ui_->splitList->addWidget(ui_->txtChannel);
  } else {
    ui_->roomLayout->addWidget(ui_->txtChannel);
  }
  ui_->txtChannel->show();
}

void FrmMain::ShowColours(const Options& options) {
  for (ChatTextView* view : {ui_->txtStatus, ui_->txtChannel}) {
    view->SetBackColour(PickedColour(options, ColourSlot::kRoomBackcolor));
    view->SetInk(options.readableChatColours ? ChatInk::kReadable : ChatInk::kAsSent);
  }
  ui_->pnlList->SetColours(PickedColour(options, ColourSlot::kListForecolor),
                           PickedColour(options, ColourSlot::kListBackcolor));
}

ChatTextView& FrmMain::StatusView() { return *ui_->txtStatus; }
ChatTextView& FrmMain::RoomView() { return *ui_->txtChannel; }
OptionsPanel& FrmMain::OptionsControls() { return *ui_->pnlOptions; }
HelpPage& FrmMain::Help() { return *ui_->webHelp; }
ConnectionPanel& FrmMain::Connection() { return *ui_->pnlConnection; }
ListPanel& FrmMain::List() { return *ui_->pnlList; }
InfoPanel& FrmMain::Info() { return *ui_->pnlInfo; }
ChannelsPanel& FrmMain::ChannelList() { return *ui_->picChannels; }
WhoPanel& FrmMain::Who() { return *ui_->picWhosHere; }

void FrmMain::ShowTab(Tab tab) { ui_->tabMain->setCurrentIndex(static_cast<int>(tab)); }

void FrmMain::SetScreenName(const QString& name) {
  ui_->pnlInfo->SetScreenName(name);
  ui_->pnlList->SetScreenName(name);
}

void FrmMain::SetStatusPanel(const std::string& text) { statusPanel_->setText(ToQString(text)); }

void FrmMain::SetWindowCaption(const std::string& text) { setWindowTitle(ToQString(text)); }

void FrmMain::SetBufferMonitor(const std::string& text) {
  lblBufferSizePeak_->setText(ToQString(text));
}

void FrmMain::SetRtbMonitor(const std::string& text) { lblRTBSizePeak_->setText(ToQString(text)); }

void FrmMain::FocusSendBox() { ui_->cmbSend->setFocus(); }

void FrmMain::ShowHint(const std::string& text) {
  hintPanel_->setText(ToQString(text));
  hintTimer_.start();
}

void FrmMain::SetSendText(const std::string& text) { ui_->cmbSend->setEditText(ToQString(text)); }

void FrmMain::closeEvent(QCloseEvent* event) {
  emit Closing();
  event->accept();
}

}  // namespace brindle
