// How the program ends with any windows open.
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QWindow>

#include "meeting.h"

namespace brindle::test {
namespace {

void LoadMails(WindowDriver& window) {
  std::string text = "!MailBot send x y\r\n";
  for (int i = 1; i <= 100; ++i) text += std::to_string(i) + ". mail\r\n";
  window.Folder().Write("mails.txt", text);
  window.LoadList(window.Folder().File("mails.txt"));
}

QPointer<QWidget> PopUp(QWidget& window, const char* button) {
  QTest::mouseClick(window.findChild<QAbstractButton*>(button), Qt::LeftButton);
  EXPECT_NE(QApplication::activePopupWidget(), nullptr) << button;
  return QApplication::activePopupWidget();
}

// As the window manager closes a window.
void CloseByManager(WindowDriver& window, const std::string& name) {
  QWidget& main = window.App().Window();
  const QWidget& which = name == "frmMain" ? main : window.Find<QWidget>(name.c_str());
  if (which.windowHandle() != nullptr) which.windowHandle()->close();
  LetTicksPass(1);
}

void OpenEverything(WindowDriver& window) {
  FrmMain& main = window.App().Window();
  for (const auto& [tab, button] : {std::pair{Tab::kList, "cmdLoadList"},
                                    {Tab::kList, "cmdSelect"},
                                    {Tab::kInfo, "cmdCommands"}}) {
    window.ShowTab(tab);
    PopUp(main, button)->close();
  }
  for (ChatTextView* view : main.findChildren<ChatTextView*>()) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {1, 1}, view->mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(view, &event);
    if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
  }
  window.ShowTab(Tab::kList);
  window.Click("cmdManualRequest");
  window.Click("cmdFind");
  window.Type("cmbSearch", "m");
  window.Press("cmbSearch", Qt::Key_Return);
  window.ClickCheckBox(1, "lstResults");
  window.ShowTab(Tab::kConnection);
  window.Click("cmdCheckForUpdate");
}

TEST(ClosingTest, EveryWindowAndMenuInSeveralOrders) {
  const std::vector<Texts> orders = {
      {"frmUpdater", "frmResults", "frmManualRequest", "frmMain"},
      {"frmUpdater", "frmManualRequest", "frmResults", "frmMain"},
      {"frmUpdater", "frmMain"},
      {"frmMain"},
      {},  // the program ends with all of them open
  };
  for (const Texts& order : orders) {
    SCOPED_TRACE(testing::PrintToString(order));
    auto window = std::make_unique<WindowDriver>();
    LoadMails(*window);
    window->Boxes().questionAnswers.assign(9, true);
    OpenEverything(*window);
    QPointer<QWidget> menu;
    for (const std::string& name : order) {
      const bool isSearch = name == "frmResults";
      if (isSearch) menu = PopUp(window->Find<QWidget>("frmResults"), "cmdSelect");
      CloseByManager(*window, name);
      if (!isSearch) continue;
      // An item that is chosen when the search is gone works on nothing.
      EXPECT_EQ(window->App().Window().findChild<QWidget*>("frmResults"), nullptr);
      for (const char* item : {"mnuSelectAll", "mnuSelectBetween", "mnuSelectNone"}) {
        window->Choose(item);
      }
      EXPECT_EQ(window->Checked(), "");
      menu->close();
    }
    EXPECT_EQ(window->App().Window().isVisible(), order.empty());
    window.reset();
    LetTicksPass(2);
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
  }
}

}  // namespace
}  // namespace brindle::test
