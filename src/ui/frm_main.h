#pragma once
// frmMain, the one window: the tab strip with its panels, the channels and who's-here lists beside
// it, the line for typing and the status bar. It shows what it is told and passes on what the user
// does.

#include <QMainWindow>
#include <QTimer>
#include <memory>

#include "irc/line_pump.h"
#include "irc/outgoing_text.h"
#include "irc/session.h"
#include "irc/who_list.h"
#include "irc/window_view.h"
#include "settings/options.h"
#include "settings/window_place.h"
#include "ui/channels_panel.h"
#include "ui/chat_text_view.h"
#include "ui/connection_panel.h"
#include "ui/help_page.h"
#include "ui/info_panel.h"
#include "ui/list_panel.h"
#include "ui/options_panel.h"
#include "ui/who_panel.h"

namespace Ui {
class FrmMain;
}

namespace brindle {

// The tabs of tabMain.
enum class Tab { kStatus = 0, kRoom, kList, kInfo, kConnection, kOptions, kHelp };

class FrmMain : public QMainWindow, public WindowView {
  Q_OBJECT

 public:
  FrmMain();
  ~FrmMain() override;

  // Runs the pump from tmrProcess. The timer rests while there is nothing to show.
  void AttachPump(LinePump& pump, OutputQueue& queue);

  // Shows how the session stands, whenever it says that it changed.
  void AttachSession(const Session& session, const WhoList& who, OutgoingText& outgoing);

  ChatTextView& StatusView();
  ChatTextView& RoomView();
  // The controls of the options page, and what they change in this window.
  OptionsPanel& OptionsControls();

  HelpPage& Help();
  ConnectionPanel& Connection();
  ListPanel& List();
  InfoPanel& Info();
  ChannelsPanel& ChannelList();
  WhoPanel& Who();

  void ShowTab(Tab tab);

  // Where the window stands, for the next start.
  WindowPlace Place() const;
  // Shows the window there, as far as the screens of today allow.
  void ShowAt(const WindowPlace& place);

  // How the run of requests goes; nothing when none goes.
  void ShowRun(const std::optional<RunProgress>& progress);
  // Shows the list, loaded from the file at `path`.
  void OpenListFile(const QString& path);
  void SetScreenName(const QString& name);

  void SetStatusPanel(const std::string& text) override;
  void SetWindowCaption(const std::string& text) override;
  void SetBufferMonitor(const std::string& text) override;
  void SetRtbMonitor(const std::string& text) override;
  void Show_RoomTab() override { ShowTab(Tab::kRoom); }
  void FocusSendBox() override;
  void SetSendText(const std::string& text) override;
  void ShowHint(const std::string& text) override;
  void SessionChanged() override;
  void CallUser() override;

 signals:
  // The user closes the window.
  void Closing();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void ConnectPanels();
  // The keys that work wherever the focus is.
  void AddKeys();
  // The tab so many places on, past either end to the other.
  void StepTab(int step);
  // To the next of the panes that make up the window.
  void StepPane(int step);
  void Find();
  void OnTabShown();
  void RefreshGuide();
  // A view that is out of sight has something new.
  void MarkTab(Tab tab, const ChatTextView& view);
  void ConnectOptions();
  void SetTopmost(bool topmost);
  void ShowColours(const Options& options);
  // Puts the room view where the shown tab wants it.
  void PlaceRoomView();
  void SizeListPane();
  bool IsRoomBelowList() const;
  void ScrollChat(int key);
  void HoldPumpDuringSelection(bool selecting);

  std::unique_ptr<Ui::FrmMain> ui_;
  QTimer tmrProcess_;
  QTimer uptimeTimer_;
  LinePump* pump_ = nullptr;
  const Session* session_ = nullptr;
  ConnectionState shownState_ = ConnectionState::kDisconnected;
  bool roomOnListTab_ = false;
  std::optional<int> roomHeight_;  // below the mail list
  bool asked_ = false;             // a server for its list
  bool requested_ = false;         // a mail
  bool held_ = false;              // a mouse selection is under way
};

}  // namespace brindle
