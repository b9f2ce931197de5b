// Hover help and the help page, in the real window.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
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
  const auto find = [&window](const std::string& name) {
    return name == "frmMain" ? &window : window.findChild<QWidget*>(QString::fromStdString(name));
  };
  auto& tabs = *window.findChild<QTabWidget*>("tabMain");
  for (int tab : {static_cast<int>(Tab::kOptions), 0}) tabs.setCurrentIndex(tab);
  for (const std::string& name : ControlsWithHelp()) EXPECT_NE(find(name), nullptr) << name;
  const auto* pages = find("pnlOptions")->findChild<QStackedWidget*>();
  const auto text = [&](const char* label) {
    return window.findChild<QLabel*>(label)->text().toStdString();
  };
  const auto show = [&](const std::string& name) {
    for (QWidget* page = find(name); page != nullptr; page = page->parentWidget()) {
      if (tabs.indexOf(page) >= 0) tabs.setCurrentWidget(page);
      const int option = pages->indexOf(page);
      if (option >= 0) window.findChild<QListWidget*>("lstOptionPages")->setCurrentRow(option);
    }
    QCoreApplication::processEvents();
    return find(name);
  };
  const auto moveOver = [&](const std::string& name, QPoint corner = {}) {
    QWidget* widget = show(name);
    const QPoint place = corner.isNull() ? widget->rect().center() : corner;
    QTest::mouseMove(window.windowHandle(), widget->mapTo(&window, place));
    QCoreApplication::processEvents();
  };
  const std::string forecolor =
      "List / Forecolor\r\n\r\nDetermines the forecolor of the list window.";
  const struct {
    const char* control;
    std::string hint;
    std::string help;
    QPoint corner = {};  // from there, rather than over the middle
  } table[] = {
      {"cmdFind", "Search for a specific item in the list and display the results.", ""},
      // A control without a hint leaves the last one; what lies behind the controls clears it.
      {"cmdSend", "Search for a specific item in the list and display the results.", ""},
      {"picWhosHere", "", "", {2, 2}},
      {"cmdInfoRemove", "Remove selected servers  handle.", ""},
      {"fmeNicks", "", "", {3, 3}},
      {"lstServerList",
       "Selecting list items made easier by shift+left clicking or using the 'Select' button.", ""},
      {"lblListForecolor", "", forecolor},
      {"cmdConnect", "Connect to the selected IRC server.", forecolor},
  };
  for (const auto& row : table) {
    moveOver(row.control, row.corner);
    EXPECT_EQ(text("barStatusPanel2"), row.hint) << row.control;
    EXPECT_EQ(text("lblQuickHelp"), row.help) << row.control;
  }
  static_cast<QAbstractButton*>(find("cmdConnect"))->setText("Disconnect");
  moveOver("cmdConnect", {9, 9});
  EXPECT_EQ(text("barStatusPanel2"), "Disconnect from the current IRC server.");
  show("chkOptionsFind_1")->setFocus();
  EXPECT_EQ(text("lblQuickHelp").substr(0, 45), "Finds / Remove inactive finds after X days\r\n\r");
  // What joins the window later is watched too, another window is not.
  show("cmdConnect");
  auto* late = new QPushButton(find("fmeServer"));
  late->setObjectName("cmdCheckForUpdate");
  late->show();
  QTest::mouseMove(window.windowHandle(), late->mapTo(&window, QPoint(4, 4)));
  QCoreApplication::processEvents();
  EXPECT_EQ(text("barStatusPanel2"), "Check for program updates.");
  QWidget dialog(&window, Qt::Dialog);
  QPushButton inside(&dialog);
  inside.setObjectName("cmdLoadList");
  dialog.show();
  QTest::mouseMove(dialog.windowHandle(), {5, 5});
  QCoreApplication::processEvents();
  EXPECT_TRUE(inside.underMouse());
  EXPECT_EQ(text("barStatusPanel2"), "Check for program updates.");
}

TEST(HoverHelp, OfOptionsIsLookedUpByIndex) {
  EXPECT_EQ(OptionHelp("chkOptionsFind", 0, "Clear * finds"),
            "Finds / Clear * finds\r\n\r\n"
            "Clear the finds combobox of any items that were searched for.");
  EXPECT_EQ(OptionHelp("picRoomForecolor", -1, ""), OptionHelp("lblRoomForecolor", -1, ""));
  EXPECT_FALSE(OptionHelp("chkOptionsFind", 2, "") || OptionHelp("chkOptionsMisc", -1, ""));
  EXPECT_FALSE(StatusHint("", "") || StatusHint("chkOptionsMisc", ""));
}

TEST(HelpPage, LeadsToTheWebSiteAndNowhereElse) {
  HelpPage page;
  std::vector<QUrl> opened;
  page.SetOpener([&](const QUrl& address) { opened.push_back(address); });
  for (const char* word : {"Request Selected", "(12) Some title", "/join room"}) {
    EXPECT_TRUE(page.toPlainText().contains(word)) << word;
  }
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
