// Hover help and the help page, in the real window.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QListWidget>
#include <QTabWidget>
#include <QtTest/QTest>

#include "ui/frm_main.h"
#include "ui/help_page.h"
#include "ui/hover_help.h"

namespace brindle {
namespace {

TEST(HoverHelp, ExplainsWhatTheMouseIsOverAndWhatHasTheKeyboard) {
#ifdef Q_OS_WIN
  GTEST_SKIP() << "The system's own pointer takes part here.";
#endif
  FrmMain window;
  window.show();
  (void)QTest::qWaitForWindowActive(&window);
  const auto find = [&](const char* name) { return window.findChild<QWidget*>(name); };
  const auto text = [&](const char* label) {
    return window.findChild<QLabel*>(label)->text().toStdString();
  };
  auto& tabs = *window.findChild<QTabWidget*>("tabMain");
  // Made when it is first shown, and watched from then on.
  tabs.setCurrentIndex(static_cast<int>(Tab::kOptions));
  auto& pages = *window.findChild<QListWidget*>("lstOptionPages");
  pages.setCurrentRow(5);
  for (const std::string& name : ControlsWithHelp()) {
    EXPECT_TRUE(name == "frmMain" || find(name.c_str()) != nullptr) << name;
  }
  const auto moveOver = [&](Tab tab, const QWidget& widget, QPoint place) {
    tabs.setCurrentIndex(static_cast<int>(tab));
    QCoreApplication::processEvents();
    QTest::mouseMove(window.windowHandle(), widget.mapTo(&window, place));
    QCoreApplication::processEvents();
  };
  const std::string forecolor =
      "List / Forecolor\r\n\r\nDetermines the forecolor of the list window.";
  const std::string search = "Search for a specific item in the list and display the results.";
  const std::tuple<Tab, const char*, std::string, std::string> table[] = {
      {Tab::kList, "cmdFind", search, ""},
      // A control without a hint leaves the last one; what lies behind the controls clears it.
      {Tab::kList, "cmdSend", search, ""},
      {Tab::kList, "picWhosHere", "", ""},
      {Tab::kOptions, "lblListForecolor", "", forecolor},
      {Tab::kConnection, "cmdConnect", "Connect to the selected IRC server.", forecolor},
  };
  for (const auto& [tab, control, hint, help] : table) {
    moveOver(tab, *find(control), {3, 3});
    EXPECT_EQ(text("barStatusPanel2"), hint) << control;
    EXPECT_EQ(text("lblQuickHelp"), help) << control;
  }
  static_cast<QAbstractButton*>(find("cmdConnect"))->setText("Disconnect");
  moveOver(Tab::kConnection, *find("cmdConnect"), {9, 9});
  EXPECT_EQ(text("barStatusPanel2"), "Disconnect from the current IRC server.");
  tabs.setCurrentIndex(static_cast<int>(Tab::kOptions));
  pages.setCurrentRow(3);
  find("chkOptionsFind_1")->setFocus();
  EXPECT_EQ(text("lblQuickHelp").substr(0, 45), "Finds / Remove inactive finds after X days\r\n\r");
}

TEST(HelpPage, LeadsToTheWebSiteAndNowhereElse) {
  HelpPage page;
  page.show();  // it is read when somebody looks
  std::vector<QUrl> opened;
  page.SetOpener([&](const QUrl& address) { opened.push_back(address); });
  const auto click = [&page](const char* link) { emit page.anchorClicked(QUrl(link)); };
  for (const char* link : {"https://elsewhere.example", "file:///etc/fstab", "#options"})
    click(link);
  page.SetWebAddress("file:///etc/fstab");
  click("web");
  EXPECT_TRUE(opened.empty() && page.toPlainText().contains("Request Selected"));
  page.SetWebAddress("https://self.hosted.example");
  click("web");
  EXPECT_EQ(opened, std::vector<QUrl>{QUrl("https://self.hosted.example")});
}

}  // namespace
}  // namespace brindle
