#pragma once
// frmMain, the one window: the tab strip with its panels, the channels and who's-here lists beside
// it, the line for typing and the status bar. It shows what it is told and passes on what the user
// does.

#include <QLabel>
#include <QMainWindow>
#include <QTimer>
#include <memory>

#include "irc/channels.h"
#include "irc/connection.h"
#include "irc/line_pump.h"
#include "irc/outgoing_text.h"
#include "irc/response_parser.h"
#include "mail/requests.h"
#include "settings/options_page.h"
#include "ui/channels_panel.h"
#include "ui/chat_text_view.h"
#include "ui/connection_panel.h"
#include "ui/help_page.h"
#include "ui/info_panel.h"
#include "ui/list_panel.h"
#include "ui/who_panel.h"

namespace Ui {
class FrmMain;
}

namespace brindle {

// The tabs of tabMain.
enum class Tab { kStatus = 0, kRoom, kList, kInfo, kConnection, kOptions, kHelp };

class FrmMain : public QMainWindow,
                public ConnectionView,
                public PumpView,
                public RoomTab,
                public ChannelsView,
                public RequestsView,
                public SendBoxView,
                public OptionsPageView {
  Q_OBJECT

 public:
  FrmMain();
  ~FrmMain() override;

  // Runs the pump from tmrProcess. The timer rests while there is nothing to show.
  void AttachPump(LinePump& pump, OutputQueue& queue);

  void AttachSendBox(OutgoingText& outgoing);

  ChatTextView& StatusView();
  ChatTextView& RoomView();
  void AttachOptions(OptionsPage& page, const Options& options);
  // Shows all options and lets them take effect.
  void ShowOptions();

  HelpPage& Help();
  ConnectionPanel& Connection();
  ListPanel& List();
  InfoPanel& Info();
  ChannelsPanel& ChannelList();
  WhoPanel& Who();

  void ShowTab(Tab tab);
  void SetScreenName(const QString& name);

  void SetConnectButton(ConnectCaption caption, bool enabled) override;
  void SetNickFieldsEnabled(bool enabled) override;
  void SetAlternateNick(const std::string& nick) override;
  void SetStatusPanel(const std::string& text) override;
  void SetLoginStatus(const std::string& text) override;
  void SetWindowCaption(const std::string& text) override;
  void SetBufferMonitor(const std::string& text) override;
  void SetRtbMonitor(const std::string& text) override;
  void Show_RoomTab() override { ShowTab(Tab::kRoom); }
  void FocusSendBox() override;
  void ShowHint(const std::string& text) override;
  void SetSendText(const std::string& text) override;
  void EnableRequestAccessCode(bool enabled) override;
  void EnableFindDays(bool enabled) override;
  void SetTopmost(bool topmost) override;
  void ShowRoomOnListTab(bool shown) override;
  void SetSoundPath(SoundSlot slot, const std::string& path) override;
  void ShowColour(ColourSlot slot, Colour colour) override;

 signals:
  // The user closes the window.
  void Closing();

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildStatusBar();
  // Puts the room view where the shown tab wants it.
  void PlaceRoomView();
  // True when the key belongs to the history of the send box.
  bool WalkHistory(int key);
  void HoldPumpDuringSelection(bool selecting);

  std::unique_ptr<Ui::FrmMain> ui_;
  QLabel* statusPanel_ = nullptr;
  QLabel* hintPanel_ = nullptr;
  QLabel* lblBufferSizePeak_ = nullptr;
  QLabel* lblRTBSizePeak_ = nullptr;
  QTimer tmrProcess_;
  QTimer uptimeTimer_;
  LinePump* pump_ = nullptr;
  OutgoingText* outgoing_ = nullptr;
  const Options* options_ = nullptr;
  bool roomOnListTab_ = false;
  bool held_ = false;  // a mouse selection is under way
};

}  // namespace brindle
