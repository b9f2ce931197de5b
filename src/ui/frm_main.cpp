#include "ui/frm_main.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStatusBar>
#include <QWindow>

#include "settings/product.h"
#include "ui/hover_guide.h"
#include "ui/qt_text.h"
#include "ui_frm_main.h"

namespace brindle {
namespace {

constexpr int kUptimeMilliseconds = 1000;
constexpr QSize kFirstSize{980, 640};
constexpr QSize kLeastSize{720, 480};
constexpr int kSideWidth = 190;

}  // namespace

FrmMain::FrmMain() : ui_(std::make_unique<Ui::FrmMain>()) {
  ui_->setupUi(this);
  setWindowTitle(ToQString(VersionText()));
  setMinimumSize(kLeastSize);
  resize(kFirstSize);
  ui_->splitMain->setStretchFactor(0, 1);
  ui_->splitMain->setSizes({kFirstSize.width() - kSideWidth, kSideWidth});
  ui_->splitSide->setSizes({1, 1});
  BuildStatusBar();

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
    return !key->modifiers().testFlag(Qt::AltModifier) && WalkHistory(key->key());
  }
  return QMainWindow::eventFilter(watched, event);
}

bool FrmMain::WalkHistory(int key) {
  if (key == Qt::Key_Up) {
    outgoing_->cmbSend_Up(ui_->cmbSend->currentText().toStdString());
  } else if (key == Qt::Key_Down) {
    outgoing_->cmbSend_Down();
  }
  return key == Qt::Key_Up || key == Qt::Key_Down;
}

void FrmMain::HoldPumpDuringSelection(bool selecting) {
  held_ = selecting;
  if (selecting) {
    tmrProcess_.stop();
  } else if (pump_ != nullptr && !pump_->IsIdle()) {
    tmrProcess_.start();
  }
}

void FrmMain::AttachOptions(OptionsPage& page, const Options& options) {
  options_ = &options;
  ui_->pnlOptions->Attach(page);
  connect(ui_->tabMain, &QTabWidget::currentChanged, this, &FrmMain::PlaceRoomView);
}

void FrmMain::ShowOptions() {
  OptionsPanel& panel = *ui_->pnlOptions;
  panel.ShowGroup(kMiscOptions, *options_);
  panel.ShowSounds(*options_);
  panel.ShowGroup(kListOptions, *options_);
  panel.ShowGroup(kRoomOptions, *options_);
  panel.ShowGroup(kFindOptions, *options_);
  panel.ShowFindDays(*options_);
  for (ColourSlot slot : {ColourSlot::kListForecolor, ColourSlot::kListBackcolor,
                          ColourSlot::kRoomForecolor, ColourSlot::kRoomBackcolor}) {
    ShowColour(slot, options_->*kColourOptions[static_cast<size_t>(slot)].colour);
  }
}

void FrmMain::EnableRequestAccessCode(bool enabled) {
  ui_->pnlOptions->EnableRequestAccessCode(enabled);
}

void FrmMain::EnableFindDays(bool enabled) { ui_->pnlOptions->EnableFindDays(enabled); }

void FrmMain::SetTopmost(bool topmost) {
  // On the window of the desktop, where there is one: the widget's own flag would hide the window.
  if (windowHandle() != nullptr) windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topmost);
  if (!isVisible()) setWindowFlag(Qt::WindowStaysOnTopHint, topmost);
}

void FrmMain::ShowRoomOnListTab(bool shown) {
  roomOnListTab_ = shown;
  PlaceRoomView();
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

void FrmMain::SetSoundPath(SoundSlot slot, const std::string& path) {
  ui_->pnlOptions->SetSoundPath(slot, ToQString(path));
}

void FrmMain::ShowColour(ColourSlot slot, Colour colour) {
  ui_->pnlOptions->SetSwatch(slot, colour);
  if (slot == ColourSlot::kRoomBackcolor) {
    ui_->txtChannel->SetBackColour(colour);
  } else if (slot != ColourSlot::kRoomForecolor) {
    ui_->pnlList->SetColours(options_->listForecolor, options_->listBackcolor);
  }
}

ChatTextView& FrmMain::StatusView() { return *ui_->txtStatus; }
ChatTextView& FrmMain::RoomView() { return *ui_->txtChannel; }
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

void FrmMain::SetConnectButton(ConnectCaption caption, bool enabled) {
  ui_->pnlConnection->SetConnectButton(caption, enabled);
}

void FrmMain::SetNickFieldsEnabled(bool enabled) {
  ui_->pnlConnection->SetNickFieldsEnabled(enabled);
}

void FrmMain::SetAlternateNick(const std::string& nick) {
  ui_->pnlConnection->SetAlternateNick(ToQString(nick));
}

void FrmMain::SetStatusPanel(const std::string& text) { statusPanel_->setText(ToQString(text)); }

void FrmMain::SetLoginStatus(const std::string& text) {
  ui_->pnlConnection->SetLoginStatus(ToQString(text));
}

void FrmMain::SetWindowCaption(const std::string& text) { setWindowTitle(ToQString(text)); }

void FrmMain::SetBufferMonitor(const std::string& text) {
  lblBufferSizePeak_->setText(ToQString(text));
}

void FrmMain::SetRtbMonitor(const std::string& text) { lblRTBSizePeak_->setText(ToQString(text)); }

void FrmMain::FocusSendBox() { ui_->cmbSend->setFocus(); }

void FrmMain::ShowHint(const std::string& text) { hintPanel_->setText(ToQString(text)); }

void FrmMain::SetSendText(const std::string& text) { ui_->cmbSend->setEditText(ToQString(text)); }

void FrmMain::closeEvent(QCloseEvent* event) {
  emit Closing();
  event->accept();
}

}  // namespace brindle
