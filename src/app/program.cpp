#include "app/program.h"

#include <QGuiApplication>
#include <QScreen>

#include "settings/product.h"
#include "settings/product_addresses.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

constexpr int kFarewellMilliseconds = 500;
constexpr int kSmallScreenWidth = 800;
constexpr const char* kSmallScreen =
    "You are running in 800x600 resolution. This program runs best in 1024x768, but if you must "
    "run it in 800x600 be sure to maximize it.";

}  // namespace

Program::Program(const std::string& dataFolder, Dialogs& dialogs)
    : dataFolder_(dataFolder),
      paths_(PathsIn(dataFolder)),
      instance_(dataFolder),
      wsChat_(clock_),
      display_(window_.StatusView(), window_.RoomView(), stored_.options),
      pump_(queue_, session_, stored_.options, display_, window_, *sounds_, clock_),
      connection_(session_, wsChat_, queue_, display_, window_, dialogs, clock_),
      parser_(session_, connection_, queue_, pump_, who_, window_, stored_.options, clock_),
      channels_(session_, connection_, stored_.options, window_, dialogs),
      servers_(window_.Connection(), dialogs),
      handles_(dialogs),
      commands_(session_, connection_, queue_, stored_.options, dialogs, clock_),
      detection_(session_, connection_, queue_, stored_.options, handles_, clock_,
                 [this] { return window_.Info().ScreenName().toStdString(); }),
      outgoing_(session_, connection_, queue_, display_, stored_.options, window_, dialogs, clock_),
      advertisement_(session_, connection_, queue_, stored_.options, window_.Info(), clock_),
      optionsPage_(stored_.options, settings_, window_, files_, paths_.finds, *sounds_, dialogs),
      loader_(dialogs, events_, window_.List(), mailList_),
      selection_(dialogs),
      sender_(session_, connection_, queue_, stored_.options, clock_, events_),
      requests_(mailList_, sender_, stored_.options, window_, dialogs),
      manualRequest_(sender_, dialogs),
      storedResults_(settings_, files_, paths_.finds, stored_.options, clock_),
      results_(mailList_, window_.List(), storedResults_, dialogs, clock_, events_),
      aol_(*windows_, events_),
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
  window_.AttachOptions(optionsPage_, stored_.options);
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
  if (!Form_Load() || closed_) return false;
  window_.ShowTab(Tab::kConnection);
  window_.show();
  return true;
}

bool Program::Form_Load() {
  // 1. One program a folder.
  if (instance_.IsAnotherRunning()) {
    dialogs_.Notice(Icon::kExclamation, "Brindle is already running.");
    window_.close();
    return false;
  }
  // 2. The screen.
  WarnAboutSmallScreen();
  // 3. Nothing waits to be shown.
  while (queue_.Pending() > 0) queue_.Take();
  // 4. The border stays, the menu entry goes.
  RemoveSizeCommand(static_cast<std::uintptr_t>(window_.winId()));
  // 5. The session starts idle.
  wsChat_.Close();
  // 6. The paths are known since the program was made.
  // 7. The screen name.
  window_.SetScreenName(ToQString(
      ShownScreenName(aol_.GetAolScreenName(), settings_.ReadSetting("screen name", "last used"))));
  // 8. What was set up last time.
  APP_LOAD();
  // 9. The help page.
  window_.Help().SetWebAddress(ReadProductAddresses(settings_).web);
  // 10. The caption.
  window_.SetWindowCaption(VersionText());
  // 11. Last, so that nothing received is shown before the settings are in place. The window may
  // have been closed while a box was open.
  if (!closed_) window_.AttachPump(pump_, queue_);
  return true;
}

void Program::WarnAboutSmallScreen() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen != nullptr && screen->size().width() == kSmallScreenWidth) {
    dialogs_.Notice(Icon::kCritical, kSmallScreen);
  }
}

void Program::APP_LOAD() {
  StoredState loaded = LoadState(files_, paths_, &events_);
  TellMissing(loaded.results.rooms, paths_.channels);
  TellMissing(loaded.results.servers, paths_.servers);
  // A window that is closed by now saves nothing.
  if (closed_) return;
  stored_ = std::move(loaded);
  // 1. and 2. Rooms and servers.
  for (const std::string& room : stored_.rooms) channels_.Rooms().Add(room);
  for (const IrcServer& server : stored_.servers) servers_.Add(server);
  // 3. and 4. The connection panel; the selected server brings its port.
  window_.Connection().SetNicks(ToQString(stored_.nick), ToQString(stored_.alternateNick));
  window_.Connection().SelectServer(stored_.lastServer);
  // 5. to 9. The options, which take effect.
  window_.ShowOptions();
}

void Program::TellMissing(LoadResult result, const std::string& path) {
  if (result == LoadResult::kMissing) {
    dialogs_.Notice(Icon::kExclamation, "Error : File not found.\r" + path);
  }
}

void Program::Form_Unload() {
  // 1. to 6. What is set up now. Failure to write is ignored on purpose: the window is closing, and
  // the old files stand.
  const ConnectFields fields = window_.Connection().Fields();
  stored_.nick = fields.nick;
  stored_.alternateNick = fields.alternateNick;
  stored_.lastServer = window_.Connection().SelectedServer();
  stored_.rooms = channels_.Rooms().Items();
  stored_.servers = servers_.Entries().Items();
  SaveState(files_, paths_, stored_);
  // 7. The session ends as by the button's click.
  if (connection_.ButtonCaption() == ConnectCaption::kDisconnect) {
    connection_.cmdConnect_Click(fields);
    wsChat_.Flush(kFarewellMilliseconds);
  }
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
  Form_Unload();
  wsChat_.Close();
}

}  // namespace brindle
