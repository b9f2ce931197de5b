// The real window: its list and its search, what it shows of a session wherever the user is, what
// its keys and menus do, and how it ends.
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QSplitter>
#include <QTabBar>
#include <QTest>
#include <QUrl>

#include "meeting.h"
#include "ui/frm_updater.h"

namespace brindle::test {
namespace {

struct ListTab : testing::Test {
  ListTab() { Open(); }
  void Open() {
    window = std::make_unique<WindowDriver>();
    window->Folder().Write("mails.txt", "!MailBot send x y\n1 a\n2 b\n3 ab\n4 c\n");
    window->Folder().Write("bad.txt", "");
    window->LoadList(File("mails.txt"));
  }
  QString File(const char* name) const { return window->Folder().File(name); }
  QWidget& Main() { return window->App().Window(); }
  bool IsOnList() { return Main().focusWidget() == &window->Find<QWidget>("lstServerList"); }
  // The rows that are shown, and the filter.
  std::string Shown() { return window->Items("lstServerList") + window->Text("txtListFilter"); }
  static void Click(QWidget& on, const char* button) {
    QTest::mouseClick(on.findChild<QAbstractButton*>(button), Qt::LeftButton);
  }
  static QPointer<QWidget> PopUp(QWidget& on, const char* button) {
    Click(on, button);
    EXPECT_NE(QApplication::activePopupWidget(), nullptr) << button;
    return QApplication::activePopupWidget();
  }

  std::unique_ptr<WindowDriver> window;
};

TEST_F(ListTab, FiltersAndCountsEverything) {
  EXPECT_TRUE(IsOnList());
  window->ClickCheckBox(3);
  const auto clears = [&] { return window->Find<QLineEdit>("txtListFilter").actions()[1]; };
  EXPECT_FALSE(clears()->isVisible());
  window->Type("txtListFilter", "B");
  EXPECT_TRUE(clears()->isVisible());
  EXPECT_EQ(Shown() + ", " + window->Text("lblRun"), "2 3B, 1 of 4 checked, 2 shown");
  window->Choose("mnuSelectNone");
  EXPECT_EQ(window->Text("lblRun"), "0 of 4 checked, 2 shown");
  for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
    window->Find<QWidget>("txtListFilter").setFocus();
    // As on a real desktop: from the shortcuts to what has the keyboard after them.
    QTest::keyClick(Main().windowHandle(), key);
    EXPECT_TRUE(IsOnList());
    EXPECT_EQ(Shown() + window->Checked(), key == Qt::Key_Return ? "2 3B" : "1 2 3 4");
  }
  window->Type("txtListFilter", "b");
  window->LoadList(File("mails.txt"));
  EXPECT_EQ(Shown(), "1 2 3 4");
}

TEST_F(ListTab, SaysWhatWasWrongAndUndoesIt) {
  window->ClickCheckBox(1);
  for (const bool web : {false, true}) {
    web ? window->Choose("mnuLoadListWeb") : window->LoadList(File("bad.txt"));
    EXPECT_EQ(Shown(), "");
    EXPECT_FALSE(window->Text("lblListNote").empty());
    EXPECT_EQ(window->Text("barStatusPanel2"), window->Text("lblListNote"));
    window->Click("cmdListUndo");
    EXPECT_EQ(window->Checked() + window->TitleHeader(), "2Mail Title [1/4]");
    EXPECT_TRUE(window->Find<QWidget>("barListNote").isHidden());
  }
}

TEST_F(ListTab, TakesListsFromTheMenuAndFromADrop) {
  window->Choose("mnuLoadListWeb");
  PopUp(Main(), "cmdLoadList")->close();
  window->Choose("mnuLoadListRecent_0");
  EXPECT_EQ(Shown(), "1 2 3 4");
  window->Folder().Write("other.txt", "7 x\n");
  window->ShowTab(Tab::kStatus);
  QMimeData dragged;
  dragged.setUrls({QUrl::fromLocalFile(File("other.txt"))});
  QDragEnterEvent enter({50, 50}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&Main(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({50, 50}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&Main(), &drop);
  EXPECT_TRUE(WaitUntil([&] { return Shown() == "7"; }, 5000));
}

TEST_F(ListTab, HasAMenuForItsRows) {
  auto& table = window->Find<QTableView>("lstServerList");
  QTest::keyClick(&table, Qt::Key_Down);
  QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
  QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5}, table.mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(table.viewport(), &event);
  const QPointer<QWidget> menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  window->Choose("mnuRowsCheck");
  EXPECT_EQ(window->Checked(), "2 3");
  window->Choose("mnuRowsUncheck");
  EXPECT_EQ(window->Checked(), "");
  menu->close();
}

TEST_F(ListTab, HasASearchWithChecksAndASizeOfItsOwn) {
  window->Click("cmdFind");
  window->Type("cmbSearch", "a");
  window->Press("cmbSearch", Qt::Key_Return);
  auto& search = window->Find<QWidget>("frmResults");
  EXPECT_EQ(window->Find<QGroupBox>("fmeSearch").title(), "Search Completed");
  // An item of the menu works on the list whose button has opened it.
  PopUp(search, "cmdSelect")->close();
  window->Choose("mnuSelectAll");
  PopUp(Main(), "cmdSelect")->close();
  window->Choose("mnuSelectNone");
  EXPECT_EQ(window->Checked(), "");
  Click(search, "cmdSelected");
  EXPECT_EQ(window->Checked(), "1 3");
  // Neither a minimised nor a maximised window is stored at that size.
  search.resize(500, 400);
  search.showMaximized();
  ASSERT_TRUE(WaitUntil([&] { return search.width() > 500; }, 5000));
  search.showMinimized();
  window->Click("cmdFind");
  EXPECT_FALSE(search.isMinimized());
  Click(search, "cmdReturn");
  LetTicksPass(1);
  const std::string settings = window->Folder().Content("brindle.ini");
  EXPECT_NE(settings.find("[results]\r\nheight=6000\r\nwidth=7500"), std::string::npos) << settings;
}

TEST_F(ListTab, EndsWithAnyWindowAndMenuOpenInAnyOrder) {
  // At the last the program ends with all of them open.
  for (const Texts& order :
       {Texts{"frmUpdater", "frmResults", "frmManualRequest", "frmMain"}, {"frmMain"}, {}}) {
    window->Boxes().questionAnswers.assign(9, true);
    PopUp(Main(), "cmdLoadList")->close();
    window->ShowTab(Tab::kInfo);
    PopUp(Main(), "cmdCommands")->close();
    window->ShowTab(Tab::kList);
    window->Click("cmdManualRequest");
    window->Click("cmdFind");
    window->Type("cmbSearch", "a");
    window->Press("cmbSearch", Qt::Key_Return);
    window->ClickCheckBox(1, "lstResults");
    window->ShowTab(Tab::kConnection);
    window->Click("cmdCheckForUpdate");
    for (const std::string& name : order) {
      QWidget& closing = name == "frmMain" ? Main() : window->Find<QWidget>(name.c_str());
      if (name == "frmResults") PopUp(closing, "cmdSelect");
      closing.close();
      LetTicksPass(1);
      // An item that is chosen when the search is gone works on nothing.
      if (name == "frmResults") window->Choose("mnuSelectAll");
    }
    EXPECT_EQ(window->Checked(), "");
    EXPECT_EQ(Main().isVisible(), order.empty());
    window.reset();
    LetTicksPass(2);
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
    Open();
  }
}

// Every button, tab and menu entry has a letter that works with Alt, none twice on a screen.
void ExpectLetters(const std::string& screen, const QStringList& captions) {
  QStringList taken = {""};
  for (const QString& caption : captions) {
    taken << QKeySequence::mnemonic(caption).toString();
    EXPECT_EQ(taken.count(taken.back()), 1) << screen << ": " << caption.toStdString();
  }
}

// A window, which no button may leave and whose buttons are not cut. What can have the keyboard is
// told from all others there by its name and its caption.
void ExpectScreen(const QWidget& window, const std::string& screen) {
  SCOPED_TRACE(screen);
  QStringList captions;
  QStringList told;
  for (const auto* bar : window.findChildren<QTabBar*>()) {
    for (int i = 0; bar->isVisible() && i < bar->count(); ++i) captions << bar->tabText(i);
  }
  for (const auto* label : window.findChildren<QLabel*>()) {
    const bool hasLetter = !QKeySequence::mnemonic(label->text()).isEmpty();
    if (label->isVisible() && label->buddy() != nullptr && hasLetter) captions << label->text();
  }
  for (auto* control : window.findChildren<QWidget*>(QRegularExpression("^(?!qt_)"))) {
    const QString name = control->objectName();
    const auto* button = qobject_cast<QAbstractButton*>(control);
    const QString caption = button == nullptr ? "" : button->text();
    // Stop and Cancel come and go, and then must not take another one's letter. Seven sounds have
    // the same buttons: they are next to their boxes, which have letters.
    const bool comes = name == "cmdRequestStop" || name == "cmdConnectCancel";
    const bool mayShow = comes || control->isVisibleTo(control->parentWidget());
    const bool needsLetter = mayShow && !caption.isEmpty() && !name.startsWith("cmdSound");
    if (needsLetter && control->parentWidget()->isVisible()) captions << caption;
    if (!control->isVisible()) continue;
    if ((control->focusPolicy() & Qt::TabFocus) && control->focusProxy() == nullptr) {
      const auto* accessible = QAccessible::queryAccessibleInterface(control);
      told << accessible->text(QAccessible::Name);
      for (int i = 0; i < accessible->childCount(); ++i) EXPECT_NE(accessible->child(i), nullptr);
      EXPECT_TRUE(!told.back().isEmpty() && told.count(told.back()) == 1)
          << name.toStdString() << ": " << told.back().toStdString();
    }
    if (caption.isEmpty()) continue;
    const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, caption);
    const int icon = button->icon().isNull() ? 0 : button->iconSize().width();
    EXPECT_GE(button->width(), text.width() + icon) << "cut: " << name.toStdString();
    const QPoint end = button->mapTo(button->window(), button->rect().bottomRight());
    EXPECT_TRUE(button->window()->rect().contains(end)) << "outside: " << name.toStdString();
  }
  ExpectLetters(screen, captions);
}

TEST_F(ListTab, AndAllScreensHaveALetterForEachButtonAndCutNoneAtTheirLeastSize) {
  Main().resize(Main().minimumSizeHint());
  const auto* tabs = Main().findChild<QTabBar*>();
  for (int tab = 0; tab < tabs->count(); ++tab) {
    window->ShowTab(static_cast<Tab>(tab));
    LetTicksPass(1);
    ExpectScreen(Main(), tabs->tabText(tab).toStdString());
  }
  window->ShowTab(Tab::kOptions);
  auto& pages = window->Find<QListWidget>("lstOptionPages");
  for (int page = 0; page < pages.count(); ++page) {
    pages.setCurrentRow(page);
    ExpectScreen(Main(), "options " + std::to_string(page));
  }
  window->ShowTab(Tab::kList);
  window->Click("cmdManualRequest");
  window->Click("cmdFind");
  FrmUpdater updater(nullptr);
  updater.show();
  for (QWidget* other : {&window->Find<QWidget>("frmManualRequest"),
                         &window->Find<QWidget>("frmResults"), static_cast<QWidget*>(&updater)}) {
    other->resize(other->minimumSizeHint());
    LetTicksPass(1);
    ExpectScreen(*other, other->objectName().toStdString());
  }
  for (const auto* menu : Main().findChildren<QMenu*>()) {
    QStringList captions;
    for (const QAction* entry : menu->actions())
      if (!entry->isSeparator()) captions << entry->text();
    ExpectLetters(menu->objectName().toStdString(), captions);
  }
}

struct FrameTest : testing::Test {
  void SetUp() override {
    EXPECT_EQ(Focus(), "lstChannels");
    session.server.Send(
        ":me!u@h JOIN #mailroom\r\n:s 332 me #mailroom :\0034Be \002kind\r\n"
        ":s 353 me = #mailroom :@Mailo me +bob\r\n:s 366 me #mailroom :End\r\n");
    ASSERT_TRUE(window.ShowsInRoom("-----"));
  }
  // Keys go to whatever has the focus, as on a real desktop.
  QWidget* Focused() { return window.App().Window().focusWidget(); }
  std::string Focus() { return Focused()->objectName().toStdString(); }
  void Press(const QKeySequence& keys) { QTest::keySequence(Focused(), keys); }
  bool HasDot(Tab tab) {
    return !window.Find<QTabWidget>("tabMain").tabIcon(static_cast<int>(tab)).isNull();
  }
  QPoint ClickRow(const char* name, int row) {
    auto& list = window.Find<QListView>(name);
    const QPoint at = list.visualRect(list.model()->index(row, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
    return at;
  }

  ScriptedSession session;
  WindowDriver& window = session.window;
};

TEST_F(FrameTest, ShowsRoomTopicAndWhatIsUnseen) {
  EXPECT_EQ(window.Text("lblRoom") + ": " + window.Text("lblTopic"), "#mailroom: Be kind");
  EXPECT_EQ(window.Text("barStatusRoom"), "#mailroom");
  EXPECT_TRUE(HasDot(Tab::kStatus) && !HasDot(Tab::kRoom));
  window.ShowTab(Tab::kList);
  session.server.Send(":bob!u@h PRIVMSG #mailroom :hi\r\n");
  EXPECT_TRUE(window.ShowsInRoom("hi") && HasDot(Tab::kRoom));
  window.ShowTab(Tab::kRoom);
  EXPECT_FALSE(HasDot(Tab::kRoom));
  window.ShowTab(Tab::kConnection);
  std::string next;
  for (const auto* step : window.App().Window().findChildren<QLabel*>()) {
    const bool isNext = step->foregroundRole() == QPalette::WindowText;
    if (isNext && step->accessibleName().startsWith("Step")) next += step->text().toStdString();
  }
  EXPECT_EQ(next, "Ask the server for its list");
  window.Find<QWidget>("txtAlternateNick").setFocus();
  session.server.Send(":me!u@h PART #mailroom\r\n");
  EXPECT_TRUE(window.Tells("lblRoom", "No room"));
  EXPECT_EQ(window.Text("barStatusRoom") + Focus(), "txtAlternateNick");  // as before the news
  window.Click("cmdConnect");
  ASSERT_TRUE(window.Tells("barStatusPanel1", "Status - Disconnected"));
  window.Click("cmdConnect");
  EXPECT_EQ(Focus(), "cmdConnectCancel");
}

TEST_F(FrameTest, TypingGoesToTheLineAndTabCompletes) {
  EXPECT_EQ(Focus(), "cmbSend");
  QTest::keyClicks(Focused(), "ma");
  Press(Qt::Key_Tab);
  QTest::keyClicks(Focused(), " ");
  EXPECT_EQ(window.Text("cmbSend"), "Mailo:  ");
  window.Find<ChatTextView>("txtChannel").setFocus();
  QTest::keyClicks(Focused(), "x");
  EXPECT_EQ(Focus() + window.Text("cmbSend"), "cmbSendMailo:  x");
  window.Type("cmbSend", "");
  Press(Qt::Key_Tab);
  EXPECT_NE(Focus(), "cmbSend");
  const QPoint at = ClickRow("lstWho", 0);
  QTest::mouseDClick(window.Find<QListView>("lstWho").viewport(), Qt::LeftButton, {}, at);
  EXPECT_EQ(Focus() + window.Text("cmbSend"), "cmbSend/msg Mailo ");
  Press(Qt::Key_Return);
  Press(Qt::Key_Up);
  EXPECT_EQ(window.Text("cmbSend"), "/msg Mailo ");
  Press(Qt::Key_Down);
  EXPECT_EQ(window.Text("cmbSend"), "");
}

TEST_F(FrameTest, KeysWalkThroughPanesAndTabs) {
  std::string walked;
  for (int i = 0; i < 4; ++i) {
    Press(Qt::Key_F6);
    walked += Focus() + " ";
  }
  EXPECT_EQ(walked, "txtChannel lstChannels lstWho cmbSend ");
  Press(QKeySequence("Ctrl+F"));
  EXPECT_TRUE(window.Find<QWidget>("txtChannel").isAncestorOf(window.App().Window().focusWidget()));
  Press(Qt::Key_Escape);
  Press(Qt::Key_Escape);
  // However the user pulls at them, the panes beside the tabs are wide enough to be read.
  auto& panes = window.Find<QSplitter>("splitMain");
  const QList<int> sizes = panes.sizes();
  panes.setSizes({panes.width(), 1});
  EXPECT_EQ(panes.sizes(), sizes);
  Press(QKeySequence("Alt+5"));
  EXPECT_EQ(window.Find<QTabWidget>("tabMain").currentIndex(), static_cast<int>(Tab::kConnection));
}

TEST_F(FrameTest, ListsAnswerKeysAndMenus) {
  auto& rooms = window.Find<QListView>("lstChannels");
  const QModelIndex here = rooms.model()->index(0, 0);
  EXPECT_EQ(here.data(Qt::AccessibleDescriptionRole), "The room that you are in");
  rooms.setFocus();
  window.Boxes().inputAnswers.push_back("other");
  Press(Qt::Key_Insert);
  EXPECT_EQ(window.Items("lstChannels"), "#mailroom #other");
  ClickRow("lstChannels", 1);
  rooms.setFocus();
  Press(Qt::Key_Delete);
  EXPECT_EQ(window.Items("lstChannels"), "#mailroom");
  EXPECT_FALSE(rooms.currentIndex().isValid());  // no other room in the place of the one
  ClickRow("lstWho", 2);
  emit window.Find<QListView>("lstWho").customContextMenuRequested({});
  window.Choose("mnuWhoServer");
  EXPECT_EQ(window.Text("txtListServer") + window.Text("cmbServers"), "bobbob");
  EXPECT_EQ(window.Text(kHint), "Requests go to bob.");
  window.Choose("mnuWhoCopy");
  EXPECT_EQ(QApplication::clipboard()->text(), "bob");
  window.App().Window().close();
  EXPECT_TRUE(session.server.TakeReceivedUpTo("\nQUIT\r\n").ends_with("\nQUIT\r\n"));
}

}  // namespace
}  // namespace brindle::test
