#pragma once
// Manual requests: mails asked for by number, from any server, without a loaded list. The user
// builds a list of handles and numbers and sends it, one line for each pair.

#include <string>
#include <vector>

#include "base/dialogs.h"
#include "irc/room_voice.h"
#include "mail/request_stack.h"
#include "mail/server_presence.h"

namespace brindle {

class ManualRequestView {
 public:
  virtual ~ManualRequestView() = default;
  // Empties txtRequest and puts the focus back in it.
  virtual void ReadyForNextNumber() = 0;
  // The rows have changed.
  virtual void RowsChanged() = 0;
};

class ManualRequest {
 public:
  struct Row {
    std::string handle;
    std::string number;
    bool checked = false;
  };

  ManualRequest(RequestStack& stack, const RoomVoice& voice, const ServerPresence& presence,
                Dialogs& dialogs)
      : stack_(stack), voice_(voice), presence_(presence), dialogs_(dialogs) {}

  // The window that shows the rows, while there is one. Null ends it.
  void SetView(ManualRequestView* view) { view_ = view; }

  const std::vector<Row>& Rows() const { return rows_; }
  // REQUIRES: row < Rows().size().
  void SetChecked(size_t row, bool checked) { rows_[row].checked = checked; }

  void cmdAdd_Click(const std::string& handle, const std::string& number);
  void cmdRemove_Click();
  void cmdClear_Click();
  // Begins a run over every row, checked or not, and keeps the rows.
  void cmdRequest_Click(const std::string& screenName);

  // Ends every run that was begun here: the window closes.
  void Stop() { stack_.StopRunsOf(this); }

 private:
  void Tell() {
    if (view_ != nullptr) view_->RowsChanged();
  }

  RequestStack& stack_;
  const RoomVoice& voice_;
  const ServerPresence& presence_;
  Dialogs& dialogs_;
  ManualRequestView* view_ = nullptr;
  std::vector<Row> rows_;
};

}  // namespace brindle
