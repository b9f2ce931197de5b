#pragma once
// Manual requests: mails asked for by number, from any server, without a loaded list. The user
// builds a list of handles and numbers and sends it, one line for each pair.

#include <functional>
#include <string>
#include <vector>

#include "base/dialogs.h"
#include "mail/request_sender.h"

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

  ManualRequest(RequestSender& sender, Dialogs& dialogs) : sender_(sender), dialogs_(dialogs) {}

  // The window that shows the rows, while there is one. Null ends it.
  void SetView(ManualRequestView* view) { view_ = view; }

  const std::vector<Row>& Rows() const { return rows_; }
  // REQUIRES: row < Rows().size().
  void SetChecked(size_t row, bool checked) { rows_[row].checked = checked; }

  void cmdAdd_Click(const std::string& handle, const std::string& number);
  void cmdRemove_Click();
  void cmdClear_Click();
  // Requests every row, checked or not, and keeps the rows. Ends early when Stop is called or when
  // the session or the room is left.
  void cmdRequest_Click(const std::string& screenName);

  // Ends every pass that is running: for closing the window.
  void Stop() { ++stops_; }

 private:
  void Tell() {
    if (view_ != nullptr) view_->RowsChanged();
  }

  RequestSender& sender_;
  Dialogs& dialogs_;
  ManualRequestView* view_ = nullptr;
  std::vector<Row> rows_;
  unsigned stops_ = 0;
};

}  // namespace brindle
