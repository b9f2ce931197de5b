#pragma once
// The update window's work: checks the update list, downloads the program file and hands over to
// the separate updater program. Nothing is handed over that is not whole and verified.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/clock.h"
#include "base/dialogs.h"
#include "settings/settings_file.h"
#include "update/http_client.h"
#include "update/update_check.h"
#include "update/update_folder.h"

namespace brindle {

enum class UpdateCaption { kUpdateCheck, kDownloadUpdate };

// What the update window shows.
class UpdateView {
 public:
  virtual ~UpdateView() = default;
  virtual void SetUpdateButton(UpdateCaption caption, bool enabled) = 0;
  virtual void SetStatus(const std::string& text) = 0;
  virtual void SetNews(const std::string& text) = 0;
  virtual void SetProgressText(const std::string& text) = 0;
  // 0 to 100
  virtual void SetProgress(double percent) = 0;
  // Both, for every chunk of a transfer: comes so often that not each one need be drawn.
  virtual void ShowTransfer(const std::string& text, double percent) = 0;
  virtual void Unload() = 0;
};

// Starts the program of that name that lies beside this one, to live on by itself with that one
// argument. Nothing on success, otherwise what went wrong.
using StartProgram =
    std::function<std::optional<std::string>(const std::string& name, const std::string& argument)>;

// Whether a list was signed by who may offer updates. The signature is as it came from the server.
using CheckSignature = std::function<bool(std::string_view list, std::string_view signature)>;

// What the updater works with; all must outlive it.
struct UpdateTools {
  HttpClient& iNet;
  UpdateFolder& folder;
  Dialogs& dialogs;
  EventPump& events;
  StartProgram start;
  CheckSignature isSigned = {};  // nothing when lists need no signature
};

class Updater {
 public:
  // `own` is the version that runs, `settings` where a finished download is marked. `endProgram`
  // ends the whole program once the updater program has been started.
  Updater(UpdateTools tools, UpdateView& view, SettingsFile settings, UpdateServer server,
          Version own, std::function<void()> endProgram);

  // The window opens. A transfer that was left running when it was closed goes on, and is shown.
  void Form_Load();
  void cmdUpdate_Click();
  // Closes the window; a running transfer is not cancelled by that.
  void cmdClose_Click();
  void iNet_StateChanged(HttpState state);

  // The program ends, or its window is gone: drops a running transfer. Nothing is handed over and
  // nothing is shown any more.
  void Stop();

 private:
  // A body on its way into a file.
  struct Body {
    std::int32_t total = 0;   // as the server says; 0 when it does not
    std::int64_t shown = 0;   // counted by the highest index of each chunk: slightly low
    std::int64_t length = 0;  // as it is
  };

  bool IsCheck() const { return caption_ == UpdateCaption::kUpdateCheck; }
  void Begin(const char* path);
  void Fail(const std::string& status);
  void Receive();
  // Puts the whole file in place; otherwise what to tell the user.
  const char* ReceiveBody();
  // False when the transfer broke, was dropped or could not be written.
  bool Take(Body& body, std::string& chunk);
  void ShowProgress(const Body& body);
  void FinishList();
  void FinishSignature();
  void Offer(const std::string& text);
  void FinishDownload();
  bool IsAnnouncedFile() const;

  UpdateTools tools_;
  UpdateView& view_;
  SettingsFile settings_;
  UpdateServer server_;
  Version own_;
  std::function<void()> endProgram_;
  UpdateCaption caption_ = UpdateCaption::kUpdateCheck;
  std::string downloadFileName_;
  std::string announcedSha256_;
  std::optional<std::string> unsignedList_;  // while its signature is on its way
  bool busy_ = false;
  bool stopped_ = false;
};

}  // namespace brindle
