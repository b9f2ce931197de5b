#include "program.h"

#include "ui/qt_text.h"

namespace brindle {
namespace {

constexpr int kFarewellMilliseconds = 500;

}  // namespace

Program::Program(const StartState& start, Dialogs& dialogs)
    : wsChat_(clock_),
      display_(window_.StatusView(), window_.RoomView(), options_),
      pump_(queue_, session_, options_, display_, window_, *sounds_, clock_),
      connection_(session_, wsChat_, queue_, display_, window_, dialogs, clock_),
      parser_(session_, connection_, queue_, pump_, who_, window_, options_, clock_),
      channels_(session_, connection_, options_, window_, dialogs),
      handles_(dialogs),
      commands_(session_, connection_, queue_, options_, dialogs, clock_),
      detection_(session_, connection_, queue_, options_, handles_, clock_,
                 [this] { return window_.Info().ScreenName().toStdString(); }),
      outgoing_(session_, connection_, queue_, display_, options_, window_, dialogs, clock_),
      advertisement_(session_, connection_, queue_, options_, window_.Info(), clock_),
      loader_(dialogs, events_, window_.List(), mailList_),
      selection_(dialogs),
      sender_(session_, connection_, queue_, options_, clock_, events_),
      requests_(mailList_, sender_, options_, window_, dialogs),
      manualRequest_(sender_, dialogs) {
  wsChat_.SetListener(connection_);
  connection_.SetReceiver(parser_);
  window_.Connection().Attach(connection_);
  window_.ChannelList().Attach(channels_);
  window_.Who().Attach(who_);
  window_.Info().Attach(handles_, commands_, advertisement_);
  window_.AttachSendBox(outgoing_);
  pump_.SetScanner(detection_);
  window_.List().Attach(mailList_, loader_, selection_, requests_);
  QObject::connect(&window_.List(), &ListPanel::ManualRequestClicked, &window_,
                   [this] { ShowManualRequest(); });
  QObject::connect(&window_, &FrmMain::Closing, &window_, [this] { Form_Unload(); });
  Form_Load(start);
}

Program::~Program() { Form_Unload(); }

void Program::Form_Load(const StartState& start) {
  for (const std::string& channel : start.channels) channels_.Rooms().Add(channel);
  window_.Connection().SetFields({start.nick, start.alternateNick, start.server, start.port});
  window_.SetScreenName(ToQString(start.screenName));
  window_.ShowTab(Tab::kConnection);
  // Last, so that nothing received is shown before the settings are in place.
  window_.AttachPump(pump_, queue_);
}

void Program::ShowManualRequest() {
  if (manualRequestWindow_.isNull()) {
    manualRequestWindow_ = new FrmManualRequest(manualRequest_, handles_.Items(),
                                                window_.List().ScreenName(), &window_);
  }
  manualRequestWindow_->show();
  manualRequestWindow_->activateWindow();
}

void Program::Form_Unload() {
  if (unloaded_) return;
  unloaded_ = true;
  requests_.Stop();
  manualRequest_.Stop();
  loader_.Stop();
  if (connection_.ButtonCaption() == ConnectCaption::kDisconnect) {
    connection_.cmdConnect_Click(window_.Connection().Fields());
    wsChat_.Flush(kFarewellMilliseconds);
  }
  wsChat_.Close();
}

}  // namespace brindle
