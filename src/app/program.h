#pragma once
// The program as a whole: opens and closes everything, in order. What asks the user (the dialogs)
// comes from outside, so that the same program runs under a test.

#include <memory>
#include <stop_token>
#include <string>

#include "app/chat_desk.h"
#include "app/kept_secrets.h"
#include "app/machine.h"
#include "app/mail_desk.h"
#include "app/update_desk.h"
#include "platform/clock_qt.h"
#include "platform/hand_over.h"
#include "platform/native.h"
#include "platform/single_instance.h"
#include "settings/finds.h"
#include "settings/options_page.h"
#include "settings/stored_state.h"
#include "ui/frm_main.h"

namespace brindle {

class Program {
 public:
  // `dataFolder` must exist; settings and lists live in it.
  // `startedWith` is an address or the full path of a list file, or empty.
  Program(const std::string& dataFolder, Dialogs& dialogs, std::string startedWith = "");
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // Restores what was set up last time and shows the window. False when the program already runs
  // with this folder (the user has been told) or the window was closed meanwhile: there is nothing
  // more to do.
  bool Open();

  // True when the program that runs already has taken what this one was started with.
  bool IsHandedOver() const { return handedOver_; }

  // Ends every loop that runs, saves, and ends the session; once.
  void Close();
  // False after a Close that could not write every file: what they held before is there still.
  bool HasSaved() const { return saved_; }

  FrmMain& Window() { return *window_; }
  MailList& Mails() { return mail_.Mails(); }
  Options& Settings() { return stored_.options; }
  const Session& CurrentSession() const { return chat_.CurrentSession(); }

 private:
  bool Form_Load();
  void APP_LOAD();
  void Form_Unload();
  void WarnAboutSmallScreen();
  void TellMissing(LoadResult result, const std::string& path);
  void MakeMissing(const StoredState::Results& results);
  void CheckForUpdate();
  // Follows an address, or loads a list.
  void Take(const std::string& text);

  // What is chosen to be proved.
  void ReadSecrets();

  QtClock clock_;
  QtEventPump events_;
  NativeFiles files_;
  std::unique_ptr<SoundPlayer> sounds_ = NativeSoundPlayer();
  KeptSecrets secrets_;
  Dialogs& dialogs_;
  const std::string dataFolder_;
  const DataPaths paths_;
  const std::string startedWith_;
  SettingsFile settings_{files_, paths_.settings};
  SingleInstance instance_;
  std::stop_source ending_;  // ends the long loops with the program
  StoredState stored_;       // its options are the program's
  Finds finds_;
  // The window goes before the desks: its widgets show what lives there.
  std::unique_ptr<FrmMain> window_ = std::make_unique<FrmMain>();
  ChatDesk chat_;
  MailDesk mail_;
  OptionsPage optionsPage_;
  std::unique_ptr<UpdateDesk> updateDesk_;  // made at the first look for an update
  std::unique_ptr<HandOver> handOver_;
  bool handedOver_ = false;
  bool closed_ = false;
  bool saved_ = true;
};

}  // namespace brindle
