#include "app/program.h"

#include <QFocusEvent>
#include <QGuiApplication>
#include <QScreen>

#include "aol/screen_name.h"
#include "irc/irc_address.h"
#include "irc/irc_line.h"
#include "settings/product.h"
#include "settings/product_addresses.h"
#include "ui/pop_up.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

constexpr int kSmallScreenWidth = 800;
constexpr const char* kSmallScreen =
    "You are running in 800x600 resolution. This program runs best in 1024x768, but if you must "
    "run it in 800x600 be sure to maximize it.";
constexpr size_t kMostShown = 200;  // bytes of an address in a box

}  // namespace

Program::Program(const std::string& dataFolder, Dialogs& dialogs, std::string startedWith)
    : secrets_([this](const std::string& trouble) {
        window_->ShowHint("The system cannot keep the password, which holds until Brindle ends: " +
                          trouble);
      }),
      dialogs_(dialogs),
      dataFolder_(dataFolder),
      paths_(PathsIn(dataFolder)),
      startedWith_(std::move(startedWith)),
      instance_(dataFolder),
      finds_(files_, paths_.finds, stored_.options, clock_),
      chat_(*window_, {settings_, stored_.options, finds_},
            {files_, dialogs, clock_, events_, *sounds_}, ReadProductAddresses(settings_).web),
      mail_(*window_, chat_, {settings_, stored_.options, finds_},
            {files_, dialogs, clock_, events_, *sounds_}, ReadProductAddresses(settings_).webHost),
      optionsPage_(stored_.options, settings_, window_->OptionsControls(), files_, finds_, *sounds_,
                   dialogs) {
  window_->OptionsControls().Attach(optionsPage_, stored_.options);
  chat_.SetPassword([this] { return secrets_.Text(Secret::kAccountPassword); });
  chat_.SetProxyPassword([this] { return secrets_.Text(Secret::kProxyPassword); });
  files_.OnTrouble([this](const std::string& path) {
    if (!closed_) window_->ShowHint("Cannot write " + path + ".");
  });
  sounds_->OnTrouble(
      [this](const std::string& path) { window_->ShowHint("Cannot play the sound " + path); });
  QObject::connect(
      &window_->OptionsControls(), &OptionsPanel::SecretTyped, window_.get(),
      [this](Secret which, const QString& text) { secrets_.Keep(which, text.toStdString()); });
  QObject::connect(&window_->Connection(), &ConnectionPanel::CheckForUpdateClicked, window_.get(),
                   [this] { CheckForUpdate(); });
  QObject::connect(window_.get(), &FrmMain::Closing, window_.get(), [this] { Close(); });
}

Program::~Program() {
  Close();
  window_.reset();
}

bool Program::Open() {
  if (!Form_Load() || closed_) return false;
  window_->ShowAt(stored_.window);
  handOver_ = std::make_unique<HandOver>(dataFolder_, [this](const std::string& text) {
    BringUp(*window_);
    Take(text);
  });
  if (!IsWritableFolder(dataFolder_)) {
    window_->ShowHint("Nothing can be written to " + dataFolder_ +
                      ": what you change will be lost when Brindle ends.");
  }
  // Where the way leads through passwords, it is gone with them.
  secrets_.WhenRead([this] {
    if (!closed_) Take(startedWith_);
  });
  return true;
}

void Program::Take(const std::string& text) {
  if (text.empty()) return;
  if (!LooksLikeIrcAddress(text)) {
    // Loading lets events run, and who calls this is in the middle of something.
    QMetaObject::invokeMethod(
        window_.get(), [this, text] { window_->OpenListFile(ToQString(text)); },
        Qt::QueuedConnection);
    return;
  }
  const std::optional<IrcAddress> address = ParseIrcAddress(text);
  if (!address) {
    dialogs_.Notice(Icon::kExclamation, "This is no address of an IRC server or room:\r" +
                                            std::string(FirstBytes(text, kMostShown)));
  } else {
    chat_.GoTo(*address);
  }
}

bool Program::Form_Load() {
  // 1. One program a folder. What it was started with goes to the one that runs.
  if (instance_.IsAnotherRunning()) {
    handedOver_ = !startedWith_.empty() && HandOver::Give(dataFolder_, startedWith_);
    if (handedOver_) return false;
    dialogs_.Notice(Icon::kExclamation, "Brindle is already running.");
    window_->close();
    return false;
  }
  // 2. The screen.
  WarnAboutSmallScreen();
  // 3. and 5. Nothing waits to be shown, and the session starts idle.
  chat_.Reset();
  // 4. The border stays, the menu entry goes.
  RemoveSizeCommand(static_cast<std::uintptr_t>(window_->winId()));
  // 6. The paths are known since the program was made.
  // 7. The screen name.
  const std::unique_ptr<WindowTree> windows = NativeWindowTree();
  AolClient aol(*windows, events_, ending_.get_token());
  window_->SetScreenName(ToQString(
      ShownScreenName(aol.GetAolScreenName(), settings_.ReadSetting("screen name", "last used"))));
  // 8. What was set up last time.
  APP_LOAD();
  // 9. The help page.
  window_->Help().SetWebAddress(ReadProductAddresses(settings_).web);
  // 10. The caption.
  window_->SetWindowCaption(VersionText());
  // 11. Last, so that nothing received is shown before the settings are in place. The window may
  // have been closed while a box was open.
  if (!closed_) chat_.StartReceiveTimer();
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
  const bool isFirstStart = loaded.results.settings == LoadResult::kMissing;
  if (!isFirstStart) {
    TellMissing(loaded.results.rooms, paths_.channels);
    TellMissing(loaded.results.servers, paths_.servers);
  }
  // A window that is closed by now saves nothing.
  if (closed_) return;
  if (isFirstStart) MakeMissing(loaded.results);
  stored_ = std::move(loaded);
  // Those who know the program expect it to say what they type.
  stored_.options.askUnknownCommand |= isFirstStart;
  // 1. and 2. Rooms and servers.
  for (const std::string& room : stored_.rooms) chat_.Rooms().Rooms().Add(room);
  for (const IrcServer& server : stored_.servers) chat_.Servers().Add(server);
  // 3. and 4. The connection panel; the selected server brings its port.
  window_->Connection().SetNicks(ToQString(stored_.nick), ToQString(stored_.alternateNick));
  window_->Connection().SelectServer(stored_.lastServer);
  // 5. to 9. The options, which take effect.
  window_->OptionsControls().ShowAll();
  ReadSecrets();
}

void Program::ReadSecrets() {
  const ConnectionOptions& options = stored_.options.connection;
  if (options.proof == AccountProof::kPassword) secrets_.Read(Secret::kAccountPassword);
  if (!options.proxyUser.empty()) secrets_.Read(Secret::kProxyPassword);
}

void Program::TellMissing(LoadResult result, const std::string& path) {
  if (result == LoadResult::kMissing) {
    dialogs_.Notice(Icon::kExclamation, "Error : File not found.\r" + path);
  }
}

// What cannot be written now is tried again at the end.
void Program::MakeMissing(const StoredState::Results& results) {
  if (results.rooms == LoadResult::kMissing) SaveChannels(files_, {}, paths_.channels);
  if (results.servers == LoadResult::kMissing) SaveServers(files_, {}, paths_.servers);
}

void Program::Form_Unload() {
  // 1. to 6. What is set up now. Failure to write stops nothing: the window is closing, perhaps
  // with nobody there to answer, and the old files stand.
  const ConnectFields fields = window_->Connection().Fields();
  stored_.nick = fields.nick;
  stored_.alternateNick = fields.alternateNick;
  stored_.lastServer = window_->Connection().SelectedServer();
  stored_.window = window_->Place();
  stored_.rooms = chat_.Rooms().Rooms().Items();
  stored_.servers = chat_.Servers().Entries().Items();
  saved_ = SaveState(files_, paths_, stored_);
  // 7. The session ends as by the button's click.
  chat_.Close();
}

void Program::CheckForUpdate() {
  if (updateDesk_ == nullptr) {
    UpdateDeskOptions options;
    options.dataFolder = dataFolder_;
    const ProductAddresses addresses = ReadProductAddresses(settings_);
    options.server = addresses.update;
    options.key = addresses.key;
    options.own = {kVersionMajor, kVersionMinor, kVersionRevision};
    updateDesk_ = std::make_unique<UpdateDesk>(window_.get(), settings_, dialogs_, options,
                                               [this] { window_->close(); });
  }
  updateDesk_->SetConnection(stored_.options.connection, secrets_.Text(Secret::kProxyPassword));
  updateDesk_->cmdCheckForUpdate_Click();
}

void Program::Close() {
  if (closed_) return;
  closed_ = true;
  // What is half typed counts as if the user had left the field.
  QFocusEvent leave(QEvent::FocusOut);
  if (QWidget* field = window_->focusWidget()) QCoreApplication::sendEvent(field, &leave);
  secrets_.Finish();
  ending_.request_stop();
  if (updateDesk_ != nullptr) updateDesk_->Stop();
  mail_.Close();
  Form_Unload();
}

}  // namespace brindle
