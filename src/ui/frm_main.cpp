#include "ui/frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QUrl>
#include <QWindow>
#include <utility>

#include "settings/product.h"
#include "ui/accessible_tree.h"
#include "ui/file_drop.h"
#include "ui/hover_guide.h"
#include "ui/icons.h"
#include "ui/qt_text.h"
#include "ui_frm_main.h"

namespace brindle {
namespace {

constexpr int kUptimeMilliseconds = 1000;
constexpr QSize kFirstSize{1100, 720};
constexpr double kMostOfScreen = 0.9;
constexpr QSize kLeastSize{720, 480};
constexpr int kSideWidth = 200;

}  // namespace

FrmMain::FrmMain() : ui_(std::make_unique<Ui::FrmMain>()) {
  InstallButtonAccessibility();
  ui_->setupUi(this);
  ui_->tabMain->findChild<QStackedWidget*>()->setObjectName("picTab");  // holds the tabs' pages
  NameTextFields(*this);
  setWindowTitle(ToQString(VersionText()));
  setMinimumSize(kLeastSize);
  const QSize screen = QGuiApplication::primaryScreen()->availableSize() * kMostOfScreen;
  resize(kFirstSize.boundedTo(screen).expandedTo(kLeastSize));
  ui_->splitMain->setStretchFactor(0, 1);
  ui_->splitMain->setCollapsible(1, true);
  ui_->splitSide->setMinimumWidth(kSideWidth);
  ui_->splitMain->setSizes({width() - kSideWidth, kSideWidth});
  ui_->splitSide->setStretchFactor(1, 1);
  ui_->splitList->setStretchFactor(0, 1);
  AddKeys();

  tmrProcess_.setObjectName("tmrProcess");
  tmrProcess_.setInterval(LinePump::kTickMilliseconds);
  tmrProcess_.setTimerType(Qt::PreciseTimer);
  uptimeTimer_.setInterval(kUptimeMilliseconds);
  for (ChatTextView* view : {ui_->txtStatus, ui_->txtChannel}) {
    connect(view, &ChatTextView::Selecting, this, &FrmMain::HoldPumpDuringSelection);
  }
  ConnectPanels();
  ConnectOptions();
  new FileDrop(*this, [this](const QString& path) { OpenListFile(path); });
  new HoverGuide(
      *this, [this](const std::string& help) { ui_->barStatus->ShowHelp(help); },
      [this](const std::string& help) { ui_->pnlOptions->SetQuickHelp(ToQString(help)); });
}

FrmMain::~FrmMain() = default;

void FrmMain::ConnectPanels() {
  // One screen name, shown in two places.
  connect(ui_->pnlInfo, &InfoPanel::ScreenNameEdited, ui_->pnlList, &ListPanel::SetScreenName);
  connect(ui_->pnlList, &ListPanel::ScreenNameEdited, ui_->pnlInfo, &InfoPanel::SetScreenName);
  connect(ui_->pnlList, &ListPanel::Hint, this,
          [this](const QString& hint) { ShowHint(hint.toStdString()); });
  connect(ui_->pnlInfo, &InfoPanel::ListAsked, this, [this] { asked_ = true; });
  connect(ui_->pnlSend, &SendBar::ScrollKey, this, &FrmMain::ScrollChat);
  connect(ui_->pnlRoomHeader, &RoomHeader::FindClicked, ui_->txtChannel, &ChatTextView::OpenFind);
  connect(ui_->picWhosHere, &WhoPanel::MessageWanted, this,
          [this](const QString& nick) { ui_->pnlSend->Begin("/msg " + nick + " "); });
  connect(ui_->picWhosHere, &WhoPanel::ServerWanted, this, [this](const QString& nick) {
    ui_->pnlList->SetListServer(nick.toStdString());
    ui_->pnlInfo->SetServer(nick);
    ShowHint("Requests go to " + nick.toStdString() + ".");
  });
  const auto watch = [this](ChatTextView* view, Tab tab) {
    connect(view, &ChatTextView::Grew, this, [this, view, tab] { MarkTab(tab, *view); });
    connect(view, &ChatTextView::LinkClicked, this, [](const QString& address) {
      QDesktopServices::openUrl(QUrl(address, QUrl::StrictMode));
    });
  };
  watch(ui_->txtStatus, Tab::kStatus);
  watch(ui_->txtChannel, Tab::kRoom);
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
  add(QKeySequence(Qt::Key_F6), [this] { StepPane(1); });
  add(QKeySequence(Qt::SHIFT | Qt::Key_F6), [this] { StepPane(-1); });
  add(QKeySequence(Qt::Key_F1), [this] { ShowTab(Tab::kHelp); });
  add(QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { close(); });
  add(QKeySequence(Qt::CTRL | Qt::Key_L), [this] {
    ShowTab(Tab::kList);
    ui_->pnlList->FocusFilter();
  });
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

void FrmMain::AttachSession(const Session& session, const WhoList& who, OutgoingText& outgoing) {
  session_ = &session;
  ui_->pnlSend->Attach(outgoing, who);
  connect(ui_->pnlSend, &SendBar::Sent, this, [this, &outgoing](const QString& text) {
    outgoing.cmdSend_Click(text.toStdString(), ui_->tabMain->currentIndex());
  });
  SessionChanged();
}

void FrmMain::SessionChanged() {
  RefreshGuide();
  ui_->barStatus->ShowSession(*session_);
  ui_->pnlRoomHeader->ShowSession(*session_);
  ui_->picChannels->ShowSession(*session_);
  ui_->pnlConnection->ShowSession(*session_);
  ui_->pnlSend->SetPurpose(session_->currentRoom.empty()
                               ? QString("Connect and enter a room to talk")
                               : "Message " + ToQString(session_->currentRoom));
  // Next comes a room, for a user who waited for the connection.
  const ConnectionState before = std::exchange(shownState_, session_->connectionState);
  const bool welcomed = before != shownState_ && shownState_ == ConnectionState::kRegistered;
  if (welcomed && ui_->pnlConnection->isAncestorOf(focusWidget())) ui_->picChannels->FocusList();
}

void FrmMain::CallUser() { QApplication::alert(this); }

void FrmMain::ShowRun(const std::optional<RunProgress>& progress) {
  ui_->pnlList->ShowRun(progress);
  requested_ = true;
  if (!progress) CallUser();
}

// It stands on the tab of the connection, so only that one shows what has changed.
void FrmMain::RefreshGuide() {
  GuideCard& guide = ui_->pnlConnection->Guide();
  const ListPanel& list = *ui_->pnlList;
  guide.SetDone(GuideStep::kConnect, session_->connectionState == ConnectionState::kRegistered);
  guide.SetDone(GuideStep::kRoom, !session_->currentRoom.empty());
  guide.SetDone(GuideStep::kAsk, asked_ || list.HasRows());
  guide.SetDone(GuideStep::kCheck, list.HasRows() && (list.HasChecks() || requested_));
  guide.SetDone(GuideStep::kRequest, requested_);
}

WindowPlace FrmMain::Place() const {
  WindowPlace place;
  const QRect rect = isMaximized() ? normalGeometry() : geometry();
  place.rect = {rect.x(), rect.y(), rect.width(), rect.height()};
  place.maximised = isMaximized();
  place.side = ui_->splitMain->sizes().last();
  place.channels = ui_->splitSide->sizes().first();
  place.room = IsRoomBelowList() ? ui_->splitList->sizes().last() : roomHeight_;
  place.tab = ui_->tabMain->currentIndex();
  return place;
}

void FrmMain::ShowAt(const WindowPlace& place) {
  if (place.rect) {
    const QRect rect(place.rect->left, place.rect->top, place.rect->width, place.rect->height);
    const QScreen* screen = QGuiApplication::screenAt(rect.center());
    if (screen != nullptr) {
      const QRect free = screen->availableGeometry();
      setGeometry(QRect(rect.topLeft(), rect.size().boundedTo(free.size())));
    }
  }
  if (place.maximised) setWindowState(windowState() | Qt::WindowMaximized);
  roomHeight_ = place.room;
  // The chat views are empty at first, and lead nowhere.
  const auto tab = static_cast<Tab>(place.tab.value_or(static_cast<int>(Tab::kConnection)));
  const bool leads = tab >= Tab::kList && tab <= Tab::kHelp;
  ShowTab(leads ? tab : Tab::kConnection);
  show();
  // Only now the panes have their places.
  if (place.side) ui_->splitMain->setSizes({width() - *place.side, *place.side});
  const int channels = place.channels.value_or(ui_->splitSide->height() / 3);
  ui_->splitSide->setSizes({channels, std::max(1, ui_->splitSide->height() - channels)});
  SizeListPane();
  ui_->pnlConnection->FocusFirst();
}

// What nobody below wanted.
void FrmMain::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Find)) return Find();
  if (event->key() == Qt::Key_Escape) {
    if (!ui_->pnlList->StopRun() && !ui_->pnlConnection->CancelAttempt()) {
      ui_->pnlSend->TakeFocus();
    }
    return;
  }
  const bool inChat = qobject_cast<ChatTextView*>(focusWidget()) != nullptr;
  const bool types = !event->text().isEmpty() && event->text().front().isPrint() &&
                     !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
  if (inChat && (types || event->matches(QKeySequence::Paste))) {
    return ui_->pnlSend->TakeKey(*event);
  }
  QMainWindow::keyPressEvent(event);
}

void FrmMain::Find() {
  switch (static_cast<Tab>(ui_->tabMain->currentIndex())) {
    case Tab::kStatus:
      return ui_->txtStatus->OpenFind();
    case Tab::kRoom:
      return ui_->txtChannel->OpenFind();
    case Tab::kList:
      return ui_->pnlList->Find();
    default:
      return;
  }
}

void FrmMain::ScrollChat(int key) {
  const bool status = ui_->tabMain->currentIndex() == static_cast<int>(Tab::kStatus);
  QKeyEvent forwarded(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(status ? ui_->txtStatus : ui_->txtChannel, &forwarded);
}

void FrmMain::StepPane(int step) {
  QWidget* const panes[] = {ui_->tabMain->currentWidget(), ui_->picChannels, ui_->picWhosHere,
                            ui_->pnlSend};
  constexpr int kPanes = 4;
  int at = 0;
  while (at < kPanes && !panes[at]->isAncestorOf(focusWidget())) ++at;
  QWidget* pane = panes[at == kPanes ? 0 : (at + step + kPanes) % kPanes];
  for (QWidget* inner : pane->findChildren<QWidget*>()) {
    if (!inner->isVisible() || !inner->isEnabled() || inner->focusProxy() != nullptr) continue;
    if (inner->focusPolicy() & Qt::TabFocus) return inner->setFocus(Qt::TabFocusReason);
  }
}

void FrmMain::OnTabShown() {
  PlaceRoomView();
  if (session_ != nullptr) RefreshGuide();
  const int shown = ui_->tabMain->currentIndex();
  if (ui_->txtChannel->isVisible()) ui_->tabMain->setTabIcon(static_cast<int>(Tab::kRoom), {});
  if (shown == static_cast<int>(Tab::kStatus)) ui_->tabMain->setTabIcon(shown, {});
  // To talk is what these two are for; a user on the tabs themselves walks on.
  const bool talks =
      shown == static_cast<int>(Tab::kStatus) || shown == static_cast<int>(Tab::kRoom);
  if (talks && !ui_->tabMain->tabBar()->hasFocus()) ui_->pnlSend->TakeFocus();
}

void FrmMain::MarkTab(Tab tab, const ChatTextView& view) {
  const int index = static_cast<int>(tab);
  if (view.isVisible() || !isVisible() || !ui_->tabMain->tabIcon(index).isNull()) return;
  ui_->tabMain->setTabIcon(index, MakeIcon(IconName::kDot, LookRole::kAccent));
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
  connect(ui_->tabMain, &QTabWidget::currentChanged, this, &FrmMain::OnTabShown);
  connect(ui_->pnlOptions, &OptionsPanel::TopmostChanged, this, &FrmMain::SetTopmost);
  connect(ui_->pnlOptions, &OptionsPanel::RoomOnListTabChanged, this, [this](bool shown) {
    roomOnListTab_ = shown;
    PlaceRoomView();
  });
  connect(ui_->pnlOptions, &OptionsPanel::ColoursChanged, this, &FrmMain::ShowColours);
  connect(ui_->pnlOptions, &OptionsPanel::ChatLinesChanged, this, [this](int lines) {
    for (ChatTextView* view : {ui_->txtStatus, ui_->txtChannel}) {
      view->KeepAtMost(static_cast<size_t>(lines));
    }
  });
  connect(ui_->pnlOptions, &OptionsPanel::Hint, this, &FrmMain::ShowHint);
}

void FrmMain::SetTopmost(bool topmost) {
  // Told to the window of the desktop, where there is one: the widget's own way makes a new window,
  // which hides it and loses what was changed in its menu.
  if (windowHandle() != nullptr) windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topmost);
  Qt::WindowFlags flags = windowFlags();
  overrideWindowFlags(flags.setFlag(Qt::WindowStaysOnTopHint, topmost));
}

void FrmMain::PlaceRoomView() {
  const bool onList =
      roomOnListTab_ && ui_->tabMain->currentIndex() == static_cast<int>(Tab::kList);
  QWidget* home = onList ? static_cast<QWidget*>(ui_->splitList) : ui_->tabRoom;
  if (ui_->txtChannel->parentWidget() == home) return;
  if (onList) {
    ui_->splitList->addWidget(ui_->txtChannel);
    SizeListPane();
  } else {
    roomHeight_ = ui_->splitList->sizes().last();
    ui_->roomLayout->addWidget(ui_->txtChannel);
  }
  ui_->txtChannel->show();
}

bool FrmMain::IsRoomBelowList() const { return ui_->txtChannel->parentWidget() == ui_->splitList; }

void FrmMain::SizeListPane() {
  if (!IsRoomBelowList()) return;
  const int height = ui_->splitList->height();
  const int room = roomHeight_.value_or(height / 3);
  ui_->splitList->setSizes({std::max(1, height - room), room});
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

void FrmMain::OpenListFile(const QString& path) {
  ShowTab(Tab::kList);
  ui_->pnlList->OpenFile(path);
}

void FrmMain::ShowTab(Tab tab) { ui_->tabMain->setCurrentIndex(static_cast<int>(tab)); }

void FrmMain::SetScreenName(const QString& name) {
  ui_->pnlInfo->SetScreenName(name);
  ui_->pnlList->SetScreenName(name);
}

void FrmMain::SetStatusPanel(const std::string& text) { ui_->barStatus->SetStatus(text); }

void FrmMain::SetWindowCaption(const std::string& text) { setWindowTitle(ToQString(text)); }

void FrmMain::SetBufferMonitor(const std::string& text) { ui_->barStatus->SetBufferMonitor(text); }

void FrmMain::SetRtbMonitor(const std::string& text) { ui_->barStatus->SetRtbMonitor(text); }

void FrmMain::FocusSendBox() { ui_->pnlSend->TakeFocus(); }

void FrmMain::ShowHint(const std::string& text) { ui_->barStatus->ShowHint(text); }

void FrmMain::SetSendText(const std::string& text) { ui_->pnlSend->SetText(text); }

void FrmMain::closeEvent(QCloseEvent* event) {
  emit Closing();
  event->accept();
}

}  // namespace brindle
