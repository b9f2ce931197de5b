#pragma once
// frmMain, the one window: the tab strip with its panels, the channels and who's-here lists beside
// it, the line for typing and the status bar. It shows what it is told and passes on what the user
// does.

#include <QLabel>
#include <QMainWindow>
#include <QTimer>
#include <memory>

#include "irc/line_pump.h"
#include "irc/outgoing_text.h"
#include "irc/window_view.h"
#include "settings/options.h"
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

  void AttachSendBox(OutgoingText& outgoing);

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
  void SetScreenName(const QString& name);

  void SetStatusPanel(const std::string& text) override;
  void SetWindowCaption(const std::string& text) override;
  void SetBufferMonitor(const std::string& text) override;
  void SetRtbMonitor(const std::string& text) override;
  void Show_RoomTab() override { ShowTab(Tab::kRoom); }
  void FocusSendBox() override;
  void SetSendText(const std::string& text) override;
  // Goes by itself after a while.
  void ShowHint(const std::string& text) override;

 signals:
  // The user closes the window.
  void Closing();

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildStatusBar();
  // The keys that work wherever the focus is.
  void AddKeys();
  // The tab so many places on, past either end to the other.
  void StepTab(int step);
  void ConnectOptions();
  void SetTopmost(bool topmost);
  void ShowColours(const Options& options);
  // Puts the room view where the shown tab wants it.
  void PlaceRoomView();
  // True when the key belongs to the history of the send box.
  bool WalkHistory(int key);
  // True when the key scrolls a chat view, which it then does.
  bool ScrollChat(const QKeyEvent& key);
  void HoldPumpDuringSelection(bool selecting);

  std::unique_ptr<Ui::FrmMain> ui_;
  QLabel* statusPanel_ = nullptr;
  QLabel* hintPanel_ = nullptr;
  QLabel* lblBufferSizePeak_ = nullptr;
  QLabel* lblRTBSizePeak_ = nullptr;
  QTimer tmrProcess_;
  QTimer uptimeTimer_;
  QTimer hintTimer_;
  LinePump* pump_ = nullptr;
  OutgoingText* outgoing_ = nullptr;
  bool roomOnListTab_ = false;
  bool held_ = false;  // a mouse selection is under way
};

}  // namespace brindle
