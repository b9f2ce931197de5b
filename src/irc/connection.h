#pragma once
// The one connection to an IRC server: the Connect button, the registration, the end of a session,
// and SendRaw, through which every line goes out.

#include <functional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/dialogs.h"
#include "irc/chat_socket.h"
#include "irc/output_queue.h"
#include "irc/reconnect.h"
#include "irc/session.h"
#include "irc/window_view.h"
#include "settings/options.h"
#include "settings/secure_servers.h"

namespace brindle {

// The texts of the connection panel at the moment of a click.
struct ConnectFields {
  std::string nick;           // txtConnectNick
  std::string alternateNick;  // txtAlternateNick
  std::string server;         // cmbConnectServer
  std::string port;           // txtConnectPort
  bool tls = false;           // chkConnectTls
};

enum class ConnectCaption { kConnect, kDisconnect };

// The connection panel.
class ConnectView {
 public:
  virtual ~ConnectView() = default;
  virtual void SetConnectButton(ConnectCaption caption, bool enabled) = 0;
  // cmdConnectCancel, beside the Connect button while an attempt is under way.
  virtual void ShowCancelButton(bool shown) = 0;
  virtual void SetNickFieldsEnabled(bool enabled) = 0;
  virtual void SetAlternateNick(const std::string& nick) = 0;
  virtual void SetLoginStatus(const std::string& text) = 0;
  // Why the last attempt or session ended; empty once there is nothing to say about it.
  virtual void SetConnectTrouble(const std::string& text) = 0;
  // The text of txtConnectPort.
  virtual void SetPort(const std::string& text) = 0;
  // The box chkConnectTls.
  virtual void SetTls(bool on) = 0;
};

// Takes the text that the server sends.
using Receiver = std::function<void(std::string_view received, std::string& currentNick)>;

class Connection : public ChatSocketEvents {
 public:
  // An attempt without a welcome ends after this long, a QUIT that the server ignores after that.
  static constexpr int kWelcomeMilliseconds = 30000;
  static constexpr int kQuitMilliseconds = 3000;

  struct Views {
    ConnectView& panel;
    WindowView& window;
    Dialogs& dialogs;
  };

  struct Ways {
    const Options& options;
    SecureServers& secure;
    std::string webAddress;  // told to others in the farewell
  };

  Connection(Session& session, ChatSocket& wsChat, OutputQueue& queue, Views views,
             const Clock& clock, Ways ways)
      : session_(session),
        wsChat_(wsChat),
        queue_(queue),
        views_(views),
        clock_(clock),
        ways_(std::move(ways)) {}

  // Called when there is something to wait for, perhaps once more.
  void OnWaiting(std::function<void()> wake) { wake_ = std::move(wake); }

  // Must be set before the first event arrives.
  void SetReceiver(Receiver receiver) { receive_ = std::move(receiver); }

  // Called with every line that goes out.
  void OnSent(std::function<void(std::string_view line)> sent) { sent_ = std::move(sent); }

  // Called when a server has taken the connection, before the first line to it.
  void OnUp(std::function<void()> up) { up_ = std::move(up); }
  // Called after the server's welcome, before a room that waits for it is entered.
  void OnWelcome(std::function<void()> welcome) { welcome_ = std::move(welcome); }

  // Sends one IRC line, CR LF appended. The line ends at its first CR, LF or NUL, so that nothing
  // in it can add a line of its own, and at kLongestLine bytes; tags in front ("@key=value ") do
  // not count. Without a connection nothing happens.
  void SendRaw(std::string_view line);

  bool IsSocketConnected() const { return wsChat_.IsConnected(); }
  // The server that was asked for last, without blanks and brackets.
  std::string ServerHost() const;

  // Connects, or says farewell and quits, by the button's caption.
  void cmdConnect_Click(const ConnectFields& fields);
  // Gives up an attempt.
  void cmdConnectCancel_Click();
  // Ends what has waited too long, watches the link and makes a lost connection again. To be called
  // a few times a second while IsWaiting().
  void tmrConnect_Timer();
  bool IsWaiting() const;
  // The program ends: nothing is asked and nothing connected any more.
  void Stop();

  // Enters a room now or, before the server's welcome, after it. The wish outlives an attempt that
  // fails: it waits for the next one to the same server, unless the user gives up.
  void EnterRoom(const std::string& room);

  void wsChat_Connect() override;
  void wsChat_DataArrival(std::string_view received) override;
  void wsChat_Error(const std::string& description) override;
  void wsChat_Untrusted(const ServerCertificate& certificate) override;
  void wsChat_Close() override;

  bool IsSecure() const { return wsChat_.IsSecure(); }
  // The server wants to be reached by TLS only (IRCv3 "sts"): at that port, where the session is
  // not secure yet; else for so many seconds from now on.
  void StrictTransport(std::optional<int> port, std::optional<SecureServers::Seconds> duration);
  // True for the answer to a question of ours that nobody is to see.
  static bool IsOwnToken(std::string_view token) { return token == kLinkToken; }

  // What the parser found. `text` is the server's own text.
  void Welcomed();
  void NickInUse(const std::string& text);
  // A nick that the server refuses for another reason. After the welcome it is no matter of ours.
  void NickRefused(const std::string& text);
  void BannedFromServer(const std::string& text);
  // Ends an attempt that would not lead where the user wants to be.
  void EndAttempt(const std::string& reason);
  // The server says why it is about to end the session.
  void ServerError(const std::string& text);
  void ClosingNotice();

  ConnectCaption ButtonCaption() const { return caption_; }

 private:
  static constexpr TickCount kNoDeadline = -1;
  static constexpr std::string_view kLinkToken = "brindle-link";

  void Connect(const ConnectFields& fields);
  // The fields as they are meant: with TLS where the host asked for it.
  ConnectFields Strict(ConnectFields fields) const;
  // Connects once more, as the user wished at first.
  void ConnectAgain();
  // True when the end of the session is to be followed by another attempt.
  bool MayReconnect() const;
  void WatchLink();
  void ShowCountdown();
  void Disconnect();
  void OfferNextNick();
  // True once the session was ended by our QUIT or by the server's closing notice: whatever the
  // socket says then is no news to the user.
  bool IsEndExpected() const;
  void EndQuietly();
  // Everything that the end of a session resets, whatever ended it.
  void EndSession();
  void SetButton(ConnectCaption caption, bool enabled);
  void WaitFor(int milliseconds);

  Session& session_;
  ChatSocket& wsChat_;
  OutputQueue& queue_;
  Views views_;
  const Clock& clock_;
  const Ways ways_;
  Receiver receive_;
  std::function<void()> wake_;
  std::function<void(std::string_view line)> sent_;
  std::function<void()> up_;
  std::function<void()> welcome_;
  ConnectCaption caption_ = ConnectCaption::kConnect;
  ConnectFields fields_;
  ConnectFields wished_;  // as they were when the user clicked
  struct {
    std::string host;
    std::string room;
  } afterWelcome_;
  std::string lastRoom_;  // where the session stood when it was lost
  Reconnect reconnect_;
  LinkWatch link_;
  int shownSeconds_ = 0;     // of the countdown
  bool wasWelcome_ = false;  // since the user clicked
  bool stopped_ = false;
  int refusedNicks_ = 0;  // in this attempt, but for those in use
  bool quitSent_ = false;
  bool reached_ = false;  // the server took the connection of this attempt
  TickCount deadline_ = kNoDeadline;
};

}  // namespace brindle
