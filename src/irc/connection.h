#pragma once
// The one connection to an IRC server: the Connect button, the registration, the end of a session,
// and SendRaw, through which every line goes out.

#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/dialogs.h"
#include "irc/chat_colours.h"
#include "irc/chat_socket.h"
#include "irc/output_queue.h"
#include "irc/session.h"

namespace brindle {

// The texts of the connection panel at the moment of a click.
struct ConnectFields {
  std::string nick;           // txtConnectNick
  std::string alternateNick;  // txtAlternateNick
  std::string server;         // cmbConnectServer
  std::string port;           // txtConnectPort
};

enum class ConnectCaption { kConnect, kDisconnect };

class ConnectionView {
 public:
  virtual ~ConnectionView() = default;
  virtual void SetConnectButton(ConnectCaption caption, bool enabled) = 0;
  virtual void SetNickFieldsEnabled(bool enabled) = 0;
  virtual void SetAlternateNick(const std::string& nick) = 0;
  // The first panel of the status bar, and the label on the connection panel.
  virtual void SetStatusPanel(const std::string& text) = 0;
  virtual void SetLoginStatus(const std::string& text) = 0;
  virtual void SetWindowCaption(const std::string& text) = 0;
};

// Takes what the server says.
class ReceivedText {
 public:
  virtual ~ReceivedText() = default;
  virtual void Parse_Response(std::string_view received, std::string& currentNick) = 0;
};

class Connection : public ChatSocketEvents {
 public:
  Connection(Session& session, ChatSocket& wsChat, OutputQueue& queue, ChatColours& display,
             ConnectionView& view, Dialogs& dialogs, const Clock& clock)
      : session_(session),
        wsChat_(wsChat),
        queue_(queue),
        display_(display),
        view_(view),
        dialogs_(dialogs),
        clock_(clock) {}

  // Who takes the received text. Must be set before the first event arrives.
  void SetReceiver(ReceivedText& receiver) { receiver_ = &receiver; }

  // Sends one IRC line, CR LF appended. The line ends at its first CR, LF or NUL, so that nothing
  // in it can add a line of its own. Without a connection nothing happens.
  void SendRaw(std::string_view line);

  bool IsSocketConnected() const { return wsChat_.IsConnected(); }

  // Connects, or says farewell and quits, by the button's caption.
  void cmdConnect_Click(const ConnectFields& fields);

  void wsChat_Connect() override;
  void wsChat_DataArrival(std::string_view received) override;
  void wsChat_Error(const std::string& description) override;
  void wsChat_Close() override;

  // What the parser found. `text` is the server's own text.
  void Welcomed();
  void NickInUse(const std::string& text);
  void BannedFromServer(const std::string& text);
  void ClosingNotice();

  ConnectCaption ButtonCaption() const { return caption_; }

 private:
  void Connect(const ConnectFields& fields);
  void Disconnect();
  // True once the session was ended by our QUIT or by the server's closing notice: whatever the
  // socket says then is no news to the user.
  bool IsEndExpected() const;
  void EndQuietly();
  // Everything that the end of a session resets, whatever ended it.
  void EndSession();
  void SetButton(ConnectCaption caption, bool enabled);

  Session& session_;
  ChatSocket& wsChat_;
  OutputQueue& queue_;
  ChatColours& display_;
  ConnectionView& view_;
  Dialogs& dialogs_;
  const Clock& clock_;
  ReceivedText* receiver_ = nullptr;
  ConnectCaption caption_ = ConnectCaption::kConnect;
  ConnectFields fields_;
  bool quitSent_ = false;
};

}  // namespace brindle
