#include "app/program.h"

#include <QGuiApplication>
#include <QScreen>

#include "base/twips.h"
#include "settings/product.h"
#include "settings/product_addresses.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

constexpr int kFarewellMilliseconds = 500;

}  // namespace

Program::Program(const std::string& dataFolder, Dialogs& dialogs)
    : dataFolder_(dataFolder),
      paths_(PathsIn(dataFolder)),
      instance_(dataFolder),
      systemMenu_(static_cast<std::uintptr_t>(window_.winId())),
      wsChat_(clock_),
      display_(window_.StatusView(), window_.RoomView(), options_),
      pump_(queue_, session_, options_, display_, window_, *sounds_, clock_),
      connection_(session_, wsChat_, queue_, display_, window_, dialogs, clock_),
      parser_(session_, connection_, queue_, pump_, who_, window_, options_, clock_),
      channels_(session_, connection_, options_, window_, dialogs),
      servers_(window_.Connection(), dialogs),
      handles_(dialogs),
      commands_(session_, connection_, queue_, options_, dialogs, clock_),
      detection_(session_, connection_, queue_, options_, handles_, clock_,
                 [this] { return window_.Info().ScreenName().toStdString(); }),
      outgoing_(session_, connection_, queue_, display_, options_, window_, dialogs, clock_),
      advertisement_(session_, connection_, queue_, options_, window_.Info(), clock_),
      optionsPage_(options_, settings_, window_, files_, paths_.finds, *sounds_, dialogs),
      loader_(dialogs, events_, window_.List(), mailList_),
      selection_(dialogs),
      sender_(session_, connection_, queue_, options_, clock_, events_),
      requests_(mailList_, sender_, options_, window_, dialogs),
      manualRequest_(sender_, dialogs),
      storedResults_(settings_, files_, paths_.finds, options_, clock_),
      results_(mailList_, window_.List(), storedResults_, dialogs, clock_, events_),
      aol_(*windows_, events_),
      startUp_(*this, {options_, channels_.Rooms(), servers_}, files_, paths_, dialogs, systemMenu_,
               aol_, events_),
      dialogs_(dialogs) {
  wsChat_.SetListener(connection_);
  connection_.SetReceiver(parser_);
  pump_.SetScanner(detection_);
  AttachPanels();
}

Program::~Program() {
  Close();
  ownedWindow_.reset();
}

void Program::AttachPanels() {
  window_.AttachOptions(optionsPage_, options_);
  window_.AttachSendBox(outgoing_);
  window_.Connection().Attach(connection_, servers_);
  window_.ChannelList().Attach(channels_);
  window_.Who().Attach(who_);
  window_.Info().Attach(handles_, commands_, advertisement_);
  window_.List().Attach(mailList_, loader_, selection_, requests_);
  QObject::connect(&window_.List(), &ListPanel::ManualRequestClicked, &window_,
                   [this] { ShowManualRequest(); });
  QObject::connect(&window_.List(), &ListPanel::FindClicked, &window_, [this] { ShowResults(); });
  QObject::connect(&window_.Connection(), &ConnectionPanel::CheckForUpdateClicked, &window_,
                   [this] { CheckForUpdate(); });
  QObject::connect(&window_, &FrmMain::Closing, &window_, [this] { Close(); });
}

bool Program::Open() {
  if (!startUp_.Form_Load()) return false;
  window_.ShowTab(Tab::kConnection);
  window_.show();
  return true;
}

int Program::ScreenWidthInTwips() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  return screen == nullptr ? 0 : screen->size().width() * kTwipsPerPixel;
}

void Program::ResetOutputQueue() {
  while (queue_.Pending() > 0) queue_.Take();
}

void Program::SetScreenName(const std::string& name) { window_.SetScreenName(ToQString(name)); }

void Program::SetNicks(const std::string& nick, const std::string& alternateNick) {
  window_.Connection().SetNicks(ToQString(nick), ToQString(alternateNick));
}

ClosingFields Program::FieldsAtClosing() {
  const ConnectFields fields = window_.Connection().Fields();
  return {fields.nick, fields.alternateNick, window_.Connection().SelectedServer()};
}

bool Program::IsDisconnectOffered() {
  return connection_.ButtonCaption() == ConnectCaption::kDisconnect;
}

void Program::ClickConnectButton() {
  connection_.cmdConnect_Click(window_.Connection().Fields());
  wsChat_.Flush(kFarewellMilliseconds);
}

void Program::ShowManualRequest() {
  if (manualRequestWindow_.isNull()) {
    manualRequestWindow_ = new FrmManualRequest(manualRequest_, handles_.Items(),
                                                window_.List().ScreenName(), &window_);
  }
  manualRequestWindow_->show();
  manualRequestWindow_->activateWindow();
}

void Program::ShowResults() {
  if (!results_.cmdFind_Click()) return;
  if (resultsWindow_.isNull()) {
    resultsWindow_ = new FrmResults(
        results_, selection_,
        [this](const SelectTarget& target, const QWidget& button) {
          window_.List().PopUpSelectFor(target, button);
        },
        &window_);
  }
  resultsWindow_->show();
  resultsWindow_->activateWindow();
}

void Program::ShowHelpPage() { window_.Help().SetWebAddress(ReadProductAddresses(settings_).web); }

void Program::CheckForUpdate() {
  if (updateDesk_ == nullptr) {
    UpdateDeskOptions options;
    options.dataFolder = dataFolder_;
    options.server = ReadProductAddresses(settings_).update;
    options.own = {kVersionMajor, kVersionMinor, kVersionRevision};
    updateDesk_ = std::make_unique<UpdateDesk>(&window_, settings_, dialogs_, options,
                                               [this] { window_.close(); });
  }
  updateDesk_->cmdCheckForUpdate_Click();
}

void Program::Close() {
  if (closed_) return;
  closed_ = true;
  requests_.Stop();
  manualRequest_.Stop();
  loader_.Stop();
  if (updateDesk_ != nullptr) updateDesk_->Stop();
  if (!resultsWindow_.isNull()) results_.Save(resultsWindow_->Geometry());
  startUp_.Form_Unload();
  wsChat_.Close();
}

}  // namespace brindle
