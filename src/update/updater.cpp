#include "update/updater.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "base/text.h"
#include "settings/connection_options.h"

namespace brindle {
namespace {

constexpr char kListPath[] = "/update/brindle.txt";
constexpr char kSignaturePath[] = "/update/brindle.txt.sig";
constexpr char kProgramPath[] = "/update/brindle.exe";
constexpr char kListFile[] = "update.tmp";
constexpr char kProgramFile[] = "brindle.exe";
constexpr char kUpdaterProgram[] = "updater";

// What an earlier update may have left in the folder.
constexpr const char* kLeftovers[] = {"glimmerpad.txt", "glimmerpad.exe", "updater.exe"};

constexpr char kReady[] = "Please press the \"Update Check\" button to begin.";
constexpr char kTransferError[] = "An error has occured. Try again later.";
constexpr char kNotSigned[] =
    "The update list has no valid signature, so nothing is updated. Try again later.";
constexpr char kNamesNoFile[] =
    "The update list does not say what the file must be, so nothing is updated. Try again later.";
constexpr char kWrongFile[] =
    "The downloaded file is not the announced one, so it was not kept. Try again later.";

constexpr char kUnknownLength[] =
    "The server does not say how long the file is, so it was not downloaded. Try again later.";

constexpr size_t kChunk = 1024;
constexpr double kWholeBar = 100;

// An update list is a few lines. A server that sends more is not believed.
constexpr size_t kLongestList = 1024 * 1024;
constexpr std::int64_t kLongestProgram = std::numeric_limits<std::int32_t>::max();

}  // namespace

Updater::Updater(UpdateTools tools, UpdateView& view, SettingsFile settings, UpdateServer server,
                 Version own, std::function<void()> endProgram)
    : tools_(std::move(tools)),
      view_(view),
      settings_(std::move(settings)),
      server_(std::move(server)),
      own_(own),
      endProgram_(std::move(endProgram)) {}

void Updater::Form_Load() {
  if (busy_) return;
  downloadFileName_ = kListFile;
  caption_ = UpdateCaption::kUpdateCheck;
  view_.SetUpdateButton(caption_, true);
  view_.SetStatus(kReady);
  view_.SetNews("");
  view_.SetProgressText("");
  view_.SetProgress(0);
}

void Updater::cmdUpdate_Click() {
  if (busy_ || stopped_) return;
  view_.SetUpdateButton(caption_, false);
  if (IsCheck()) {
    tools_.folder.Prepare();
    for (const char* name : kLeftovers) tools_.folder.Remove(name);
    Begin(kListPath);
  } else {
    downloadFileName_ = kProgramFile;
    Begin(kProgramPath);
  }
}

void Updater::Begin(const char* path) {
  if (server_.base.empty()) {
    Fail(kTransferError);
    return;
  }
  busy_ = true;
  tools_.iNet.Execute(server_.base + path);
}

void Updater::cmdClose_Click() {
  tools_.folder.Remove(kListFile);
  view_.Unload();
}

void Updater::Stop() {
  stopped_ = true;
  tools_.iNet.Cancel();
  tools_.folder.Discard();
  tools_.folder.Remove(kListFile);
}

void Updater::iNet_StateChanged(HttpState state) {
  if (stopped_) return;
  switch (state) {
    case HttpState::kError:
      Fail(kTransferError);
      break;
    case HttpState::kProxyRefused:
      unsignedList_.reset();
      Fail(kProxyRefusal);
      break;
    case HttpState::kConnecting:
      view_.SetStatus("Connecting to " + server_.address);
      break;
    case HttpState::kRequesting:
      view_.SetStatus("Communicating with " + server_.address);
      break;
    case HttpState::kResponseCompleted:
      Receive();
      break;
    default:
      break;
  }
}

void Updater::Fail(const std::string& status) {
  tools_.folder.Discard();
  busy_ = false;
  if (stopped_) return;
  view_.SetStatus(std::exchange(unsignedList_, {}) ? kNotSigned : status);
  tools_.iNet.Cancel();
}

void Updater::Receive() {
  if (const char* const fault = ReceiveBody()) {
    Fail(fault);
    return;
  }
  busy_ = false;
  if (IsCheck()) {
    unsignedList_ ? FinishSignature() : FinishList();
  } else {
    FinishDownload();
  }
  if (!stopped_) view_.SetProgress(0);
}

const char* Updater::ReceiveBody() {
  Body body;
  body.total = static_cast<std::int32_t>(
      std::clamp<long long>(LeadingNumber(tools_.iNet.GetHeader("Content-length")), 0,
                            std::numeric_limits<std::int32_t>::max()));
  // The end of a transfer alone does not tell a whole file from one that was cut.
  if (!IsCheck() && body.total == 0 && announcedSha256_.empty()) return kUnknownLength;
  std::string chunk;
  if (!tools_.folder.Open(downloadFileName_) || !Take(body, chunk)) return kTransferError;
  view_.SetStatus(IsCheck() ? "Getting update list" : "Downloading File....");
  do {
    if (!Take(body, chunk)) return kTransferError;
    ShowProgress(body);
  } while (!chunk.empty());
  if (body.total > 0 && body.length != body.total) return kTransferError;
  if (!IsCheck() && !IsAnnouncedFile()) return kWrongFile;
  return tools_.folder.Commit() ? nullptr : kTransferError;
}

bool Updater::Take(Body& body, std::string& chunk) {
  std::optional<std::string> next = tools_.iNet.GetChunk(kChunk);
  if (!next || stopped_) return false;
  chunk = std::move(*next);
  body.shown += static_cast<std::int64_t>(chunk.size()) - 1;
  body.length += static_cast<std::int64_t>(chunk.size());
  if (body.length > (IsCheck() ? static_cast<std::int64_t>(kLongestList) : kLongestProgram)) {
    return false;
  }
  if (!tools_.folder.Write(chunk)) return false;
  tools_.events.LetEventsRun(0);
  return !stopped_;
}

void Updater::ShowProgress(const Body& body) {
  const std::int64_t shown = std::max<std::int64_t>(body.shown, 0);
  if (body.total == 0) {
    view_.ShowTransfer(std::to_string(shown) + " bytes", 0);
    return;
  }
  const double percent = std::min(kWholeBar * static_cast<double>(shown) / body.total, kWholeBar);
  view_.ShowTransfer(std::to_string(shown) + " of " + std::to_string(body.total) + " bytes; " +
                         std::to_string(std::lround(percent)) + "%",
                     percent);
}

void Updater::FinishList() {
  view_.SetStatus("Checking for update");
  std::string text = tools_.folder.Read(kListFile, kLongestList).value_or("");
  tools_.folder.Remove(kListFile);
  if (!tools_.isSigned) return Offer(text);
  unsignedList_ = std::move(text);
  Begin(kSignaturePath);
}

void Updater::FinishSignature() {
  const std::string signature = tools_.folder.Read(kListFile, kLongestList).value_or("");
  tools_.folder.Remove(kListFile);
  if (!tools_.isSigned(*unsignedList_, signature)) return Fail(kNotSigned);
  Offer(*std::exchange(unsignedList_, {}));
}

void Updater::Offer(const std::string& text) {
  const UpdateList list = ReadUpdateList(text);
  if (!OffersUpdate(list.version, own_) || (tools_.isSigned && !IsLater(list.version, own_))) {
    view_.SetStatus("You have the most current version.");
    view_.SetProgressText("");
    return;
  }
  if (tools_.isSigned && !NamesFile(list)) return Fail(kNamesNoFile);
  announcedSha256_ = list.sha256;
  caption_ = UpdateCaption::kDownloadUpdate;
  view_.SetNews(list.news);
  view_.SetStatus("Update available, see below.");
  view_.SetProgressText(UpdateSummary(list));
  view_.SetUpdateButton(caption_, true);
}

void Updater::FinishDownload() {
  view_.SetStatus("Downloading Complete");
  view_.SetProgressText("");
  view_.SetProgress(kWholeBar);
  tools_.dialogs.Notice(Icon::kInformation,
                        "Download complete.\r\rBrindle must be restarted now to install update.");
  // While the box stood there, the program may have been told to end.
  if (stopped_) return;
  settings_.WriteSetting("update", "update", "1");
  const std::string download = tools_.folder.PathOf(kProgramFile);
  if (const std::optional<std::string> error = tools_.start(kUpdaterProgram, download)) {
    tools_.dialogs.Notice(Icon::kCritical, "An error has occured : " + *error);
    return;
  }
  stopped_ = true;
  endProgram_();
}

bool Updater::IsAnnouncedFile() const {
  return announcedSha256_.empty() || EqualsIgnoringCase(announcedSha256_, tools_.folder.Sha256());
}

}  // namespace brindle
