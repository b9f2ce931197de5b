#include "app/chat_desk.h"

#include "settings/endpoint.h"

namespace brindle {
namespace {

constexpr int kSendMilliseconds = 10;
constexpr int kConnectMilliseconds = 250;
constexpr int kFarewellMilliseconds = 500;

}  // namespace

ChatDesk::ChatDesk(FrmMain& window, const StoredThings& stored, const Machine& machine,
                   const std::string& webAddress)
    : window_(window),
      secure_(stored.settings),
      pump_({queue_, window}, session_, {stored.options, machine.clock},
            {window.StatusView(), window.RoomView()}, machine.sounds),
      connection_(session_, *wsChat_, queue_, {window.Connection(), window, machine.dialogs},
                  machine.clock, {stored.options, secure_, webAddress}),
      lines_(session_, connection_, machine.clock),
      voice_(session_, lines_, {queue_, window}, {stored.options, machine.clock}),
      parser_(session_, connection_, lines_, who_, {queue_, window},
              {stored.options, machine.clock}),
      channels_(session_, connection_, stored.options, window, machine.dialogs),
      servers_(window.Connection(), machine.dialogs),
      outgoing_(connection_, voice_, {queue_, window}, {stored.options, machine.clock},
                machine.dialogs) {
  wsChat_->SetListener(connection_);
  connection_.SetReceiver([this](std::string_view received, std::string& currentNick) {
    parser_.Parse_Response(received, currentNick);
  });
  window.Connection().Attach(connection_, servers_);
  window.ChannelList().Attach(channels_);
  window.Who().Attach(who_);
  window.AttachSession(session_, who_, outgoing_);

  tmrSend_.setInterval(kSendMilliseconds);
  tmrSend_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&tmrSend_, &QTimer::timeout, &tmrSend_, [this] {
    lines_.tmrSend_Timer();
    if (turn_) turn_();
    if (!lines_.IsWaiting()) tmrSend_.stop();
  });
  lines_.OnWaiting([this] { tmrSend_.start(); });
  tmrConnect_.setInterval(kConnectMilliseconds);
  QObject::connect(&tmrConnect_, &QTimer::timeout, &tmrConnect_, [this] {
    connection_.tmrConnect_Timer();
    if (!connection_.IsWaiting()) tmrConnect_.stop();
  });
  connection_.OnWaiting([this] {
    if (!tmrConnect_.isActive()) tmrConnect_.start();
  });
}

void ChatDesk::Reset() {
  while (queue_.Pending() > 0) queue_.Take();
  wsChat_->Close();
}

void ChatDesk::GoTo(const IrcAddress& address) {
  ConnectionPanel& panel = window_.Connection();
  const bool isFree = session_.connectionState == ConnectionState::kDisconnected;
  const ConnectFields fields = panel.Fields();
  const bool isThere = BareHost(fields.server) == address.host &&
                       fields.port == std::to_string(address.port) &&
                       (fields.tls || !address.secure);
  if (!isFree && !isThere) {
    return window_.ShowHint("Disconnect first to go to " + address.host + ".");
  }
  if (isFree) {
    // An address cannot take away what the user has set up.
    const bool tls = address.secure || servers_.IsTls(address.host, address.port);
    panel.SetServer(address.host, address.port, tls);
    window_.ShowTab(Tab::kConnection);
    panel.Connect();
  }
  if (!address.room.empty()) connection_.EnterRoom(address.room);
}

void ChatDesk::Close() {
  connection_.Stop();
  // Nothing is left for a session that never began.
  if (connection_.ButtonCaption() == ConnectCaption::kDisconnect) {
    connection_.cmdConnect_Click(window_.Connection().Fields());
    wsChat_->Flush(kFarewellMilliseconds);
  }
  wsChat_->Close();
}

}  // namespace brindle
