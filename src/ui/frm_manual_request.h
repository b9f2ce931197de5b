#pragma once
// frmManualRequest: asks for mails by number without a loaded list.

#include <QWidget>
#include <memory>

#include "base/observed_list.h"
#include "mail/manual_request.h"

namespace Ui {
class FrmManualRequest;
}

namespace brindle {

class FrmManualRequest : public QWidget, private ManualRequestView {
  Q_OBJECT

 public:
  // `handles` fills the box of servers, `screenName` its field, once. The window deletes itself
  // when closed. It has a size of its own where `size` is none.
  FrmManualRequest(ManualRequest& manualRequest, const ObservedList<std::string>& handles,
                   const QString& screenName, const QSize& size, QWidget* parent);
  ~FrmManualRequest() override;

 signals:
  // With the size to come back with.
  void Closing(const QSize& size);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void ReadyForNextNumber() override;
  void RowsChanged() override;
  void ConnectButtons();

  std::unique_ptr<Ui::FrmManualRequest> ui_;
  ManualRequest& manualRequest_;
};

}  // namespace brindle
