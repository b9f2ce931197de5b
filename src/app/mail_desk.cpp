#include "app/mail_desk.h"

#include <algorithm>

#include "ui/pop_up.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

constexpr char kManualWidth[] = "manual width";
constexpr char kManualHeight[] = "manual height";
constexpr long long kLargestSize = 10000;  // pixels; a size beyond is a fault of the settings

}  // namespace

MailDesk::MailDesk(FrmMain& window, ChatDesk& chat, const StoredThings& stored,
                   const Machine& machine, const std::string& webHost)
    : window_(window),
      chat_(chat),
      settings_(stored.settings),
      handles_(machine.dialogs),
      commands_(chat.Voice(), machine.dialogs),
      detection_(chat.Voice(), chat.Queue(), {stored.options, machine.clock}, handles_,
                 [this] { return window_.Info().ScreenName().toStdString(); }),
      advertisement_(chat.CurrentSession(), chat.Voice(), window.Info(), webHost),
      recentLists_(stored.settings),
      loader_(machine.dialogs, machine.events, window.List(), mailList_),
      selection_(machine.dialogs),
      stack_(chat.CurrentSession(), chat.Voice(), chat.Lines(), window, machine.clock),
      presence_(chat.Who(), stored.options, machine.dialogs),
      requests_(mailList_, stack_, chat.Voice(), presence_, stored.options, machine.dialogs),
      manualRequest_(stack_, chat.Voice(), presence_, machine.dialogs),
      results_(mailList_, stored.finds, stored.settings, machine.dialogs, machine.clock,
               machine.events) {
  chat.SetScanner([this](std::string_view line, Origin origin) { detection_.Scan(line, origin); });
  chat.OnTurn([this] { stack_.tmrRequest_Timer(); });
  chat.Parser().OnRefusedLine([this](const std::string& reason) { stack_.LineRefused(reason); });
  chat.Parser().OnEntered([this, &options = stored.options] {
    if (!options.reconnect) return;
    // A box may be shown, and the parser is in the middle of a line.
    QMetaObject::invokeMethod(
        &window_, [this] { requests_.OfferInterrupted(chat_.CurrentSession().currentRoom); },
        Qt::QueuedConnection);
  });
  stack_.OnProgress(
      [this](const std::optional<RunProgress>& progress) { window_.ShowRun(progress); });
  loader_.Remember(recentLists_);
  window.Info().Attach(handles_, commands_, advertisement_);
  window.List().Attach(mailList_, loader_, selection_, requests_);
  QObject::connect(&window.List(), &ListPanel::ManualRequestClicked, &window,
                   [this] { ShowManualRequest(); });
  QObject::connect(&window.List(), &ListPanel::StopClicked, &window, [this] { stack_.Stop(); });
  QObject::connect(&window.List(), &ListPanel::FindClicked, &window, [this] { ShowResults(); });
}

void MailDesk::Close() {
  stack_.Stop();
  loader_.Stop();
  if (!resultsWindow_.isNull()) results_.Save(resultsWindow_->Geometry());
}

void MailDesk::ShowManualRequest() {
  if (manualRequestWindow_.isNull()) {
    const auto stored = [this](const char* key) {
      const long long pixels = settings_.ReadNumber("window", key, "-1");
      return static_cast<int>(std::clamp(pixels, -1LL, kLargestSize));
    };
    manualRequestWindow_ =
        new FrmManualRequest(manualRequest_, handles_.Items(), window_.List().ScreenName(),
                             QSize(stored(kManualWidth), stored(kManualHeight)), &window_);
    QObject::connect(
        manualRequestWindow_, &FrmManualRequest::Closing, &window_, [this](const QSize& size) {
          settings_.WriteSettings({{"window", kManualWidth, std::to_string(size.width())},
                                   {"window", kManualHeight, std::to_string(size.height())}});
        });
  }
  BringUp(*manualRequestWindow_);
}

void MailDesk::ShowResults() {
  if (!results_.cmdFind_Click()) return;
  if (resultsWindow_.isNull()) {
    resultsWindow_ = new FrmResults(results_, window_.List().Select(), &window_);
  }
  BringUp(*resultsWindow_);
}

}  // namespace brindle
