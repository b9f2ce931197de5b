// What the user sets up lies in the files when the window is closed, and is there again at the next
// start; no server is needed.
#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDir>
#include <QGuiApplication>
#include <QScreen>
#include <QSplitter>
#include <QTest>

#include "meeting.h"

namespace brindle::test {
namespace {

// "|" stands for a line end.
std::string File(const std::string& text) {
  return QString::fromStdString(text).replace("|", "\r\n").toStdString();
}

const std::string kListHeader = File(
    "// PLEASE DO NOT TRY TO MODIFY THIS FILE DIRECTLY.|// INSTEAD PLEASE USE THE ABILITY TO DO SO "
    "IN THE|// PROGRAM. THANK YOU.| |");
const std::string kSettings = File(
    "[list]|forecolor=0|backcolor=1|[room]|forecolor=2|backcolor=3|[window]|list0=<list>|<place>["
    "find]|"
    "last=Second|[results]|"
    "height=7500|width=10500|column1=<first>|column2=<rest>|[nicks]|preferred=Wanda|"
    "alternate=Wanda`|[server]|last used=1|[misc options]|Send notices to status window=1|"
    "Send mesagess to status window=1|Scan chat for servers=0|Request accesscode if found=1|"
    "Make window stay on top=1|[sound options]|"
    "Play when someone joins channel=0|sound0= /t\u00FCr 0=;.wav|"
    "Play when someone parts channel=0|sound1= /t\u00FCr 1=;.wav|"
    "Play when notice is recieved=0|sound2= /t\u00FCr 2=;.wav|"
    "Play when msg is received=0|sound3= /t\u00FCr 3=;.wav|"
    "Play when server is added=0|sound4= /t\u00FCr 4=;.wav|"
    "Play on irc server connection=0|sound5= /t\u00FCr 5=;.wav|"
    "Play on irc server disconnection=0|sound6= /t\u00FCr 6=;.wav|"
    "[list options]|View channel on list tab=1|Deselect selected after requested=0|"
    "[room options]|Include timestamp on chat lines=0|Try to enter room upon adding it=0|"
    "[find options]|Clear finds list on program exit=0|Remove inactive finds after=1|days=6|"
    "[chat options]|Keep digits that stand apart from a colour mark=1|"
    "Ask before saying an unknown command=0|"
    "[theme options]|Keep chat colours readable=0|theme=0|"
    "[connection options]|Connect again when the connection is lost=1|"
    "Use what newer servers offer=1|Catch up when many lines wait=1|"
    "Ask before requests to a server that is not in the room=1|"
    "Answer questions about this program=1|"
    "Tell NickServ the password where a server has no accounts=1|"
    "account proof=2|account=Wanda|certificate=/me.pem|proxy=3|proxy address=localhost:1|");

void SetUpEverything(WindowDriver& window) {
  window.ShowTab(Tab::kOptions);
  // Every box but the one that forgets the searches; the scan, which greys another one, comes last.
  for (auto* box : window.App().Window().findChildren<QCheckBox*>(
           QRegularExpression("^chkOptions(?!Find_0|Misc_2)"))) {
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
  }
  window.Find<QCheckBox>("chkOptionsMisc_2").click();
  for (int i = 0; i < 7; ++i) {
    window.Type(qPrintable(QString("txtOptionsSound_%1").arg(i)),
                QString("/t\u00FCr %1=;.wav").arg(i));
  }
  for (int i = 0; i < 5; ++i) {
    QTest::keyClick(&window.Find<QComboBox>("cmbOptionsFinds"), Qt::Key_Down);
  }
  for (const auto& [box, steps] : {std::pair{"cmbOptionsAccount", 2}, {"cmbOptionsProxy", 3}}) {
    for (int i = 0; i < steps; ++i) QTest::keyClick(&window.Find<QComboBox>(box), Qt::Key_Down);
  }
  window.Type("txtOptionsAccount", "Wanda");
  window.Type("txtOptionsCertificate", "/me.pem");
  window.Type("txtOptionsProxy", "localhost:1");
  std::uint8_t red = 0;
  for (const char* swatch :
       {"picListForecolor", "picListBackcolor", "picRoomForecolor", "picRoomBackcolor"}) {
    window.Boxes().colourAnswers.push_back(Colour{red++, 0, 0});
    window.Click(swatch);
  }
  window.ShowTab(Tab::kConnection);
  window.Type("txtConnectNick", "Wanda");
  window.Type("txtAlternateNick", "Wanda`");
  window.Boxes().inputAnswers = {"Irc.One.Example:6667", "two.example:7000", "#First", "second "};
  for (const char* add : {"cmdConnectAdd", "cmdConnectAdd", "lblChannelsAdd", "lblChannelsAdd"}) {
    window.Click(add);
  }
  for (int i = 0; i < 2; ++i) {
    QTest::keyClick(&window.Find<QComboBox>("cmbConnectServer"), Qt::Key_Down);
  }
  window.Type("txtConnectPort", "7001");
}

// What the fields, boxes and lists of the window hold.
std::map<QString, std::string> Shown(WindowDriver& window) {
  window.ShowTab(Tab::kOptions);  // which is made when it is first shown
  std::map<QString, std::string> shown = {{"servers", window.Items("cmbConnectServer")},
                                          {"rooms", window.Items("lstChannels")}};
  for (const auto* field : window.App().Window().findChildren<QWidget*>(
           QRegularExpression("^(txt(Con|Alt|Opt)|cmb[CO]|chk)"))) {
    shown[field->objectName()] = window.Text(qPrintable(field->objectName())) +
                                 (field->isEnabled() ? "" : " off") +
                                 (field->property("checked").toBool() ? " checked" : "");
  }
  window.ShowTab(Tab::kRoom);
  const QImage room = window.Find<QWidget>("txtChannel").grab().toImage();
  shown["back"] = room.pixelColor(room.rect().center()).name().toStdString();
  return shown;
}

TEST(RestartTest, EverythingThatWasSetUpIsThereAgain) {
  const auto folder = std::make_shared<DataFolder>();
  folder->Remove("brindle.ini");
  folder->Write("mails.txt", File("!MailBot send x y|1. First mail|2. Second mail|3. Other|"));
  auto window = std::make_unique<WindowDriver>(folder);
  SetUpEverything(*window);
  const auto shown = Shown(*window);
  EXPECT_EQ(shown.at("servers") + " " + shown.at("rooms") + shown.at("back"),
            "irc.one.example two.example #first #second#030000");
  window->LoadList(folder->File("mails.txt"));
  window->Click("cmdFind");
  for (const char* search : {"mail", "Second"}) {
    window->Type("cmbSearch", search);
    window->Click("cmdSearch");
  }
  auto& table = window->Find<QTableView>("lstResults");
  window->Find<QWidget>("frmResults").resize(700, 500);
  LetTicksPass(1);
  QString settings = QString::fromStdString(kSettings);
  settings.replace("<list>", folder->File("mails.txt"));
  settings.replace("<first>", QString::number(table.columnWidth(0) * 15));
  settings.replace("<rest>", QString::number(table.columnWidth(1) * 15));
  window->App().Window().setGeometry(20, 30, 780, 600);
  window->Find<QSplitter>("splitMain").setSizes({500, 280});
  window->Find<QSplitter>("splitSide").setSizes({300, 250});
  LetTicksPass(1);
  settings.replace("<place>",
                   QString("left=20\r\ntop=30\r\nwidth=780\r\nheight=600\r\nmaximised=0\r\n"
                           "side=%1\r\nchannels=%2\r\nroom=%3\r\ntab=5\r\n")
                       .arg(window->Find<QSplitter>("splitMain").sizes()[1])
                       .arg(window->Find<QSplitter>("splitSide").sizes()[0])
                       .arg(window->Find<QSplitter>("splitList").sizes()[1]));
  window->ShowTab(Tab::kOptions);
  window.reset();  // the search window is open still: it is saved with the rest
  const std::string today = QDate::currentDate().toString(Qt::ISODate).toStdString();
  const std::map<std::string, std::string> files = {
      {"brindle.ini", settings.toStdString()},
      {"channels.txt", kListHeader + File("#first|#second|")},
      {"finds.txt",
       File("[finds]|count=1|item0=mail|date0=" + today + "|item1=Second|date1=" + today + "|")},
      {"irc_servers.txt", kListHeader + File("irc.one.example:6667|two.example:7001|")},
      {"mails.txt", folder->Content("mails.txt")}};
  EXPECT_EQ(folder->All(), files);

  window = std::make_unique<WindowDriver>(folder);
  EXPECT_EQ(Shown(*window), shown);
  EXPECT_EQ(window->App().Window().geometry(), QRect(20, 30, 780, 600));
  window->LoadList(folder->File("mails.txt"));
  window->Click("cmdFind");
  EXPECT_EQ(window->Find<QWidget>("frmResults").size(), QSize(700, 500));
  EXPECT_EQ(window->Items("cmbSearch") + ": " + window->Text("cmbSearch"), "mail Second: Second");
  window->ShowTab(Tab::kOptions);
  window.reset();
  EXPECT_EQ(folder->All(), files);
}

TEST(RestartTest, AFirstStartMakesItsListsWithoutAWord) {
  const auto folder = std::make_shared<DataFolder>();
  for (const char* name : {"brindle.ini", "channels.txt", "irc_servers.txt"}) folder->Remove(name);
  auto window = std::make_unique<WindowDriver>(folder);
  const bool isSmall = QGuiApplication::primaryScreen()->size().width() == 800;
  EXPECT_EQ(window->Boxes().notices.size(), isSmall ? 1U : 0U);
  EXPECT_EQ(folder->Content("channels.txt") + folder->Content("irc_servers.txt"),
            kListHeader + kListHeader);
  window.reset();
  // A list that goes missing later is told.
  folder->Remove("channels.txt");
  EXPECT_EQ(WindowDriver(folder).Boxes().notices.back().text,
            "Error : File not found.\r" + PathsIn(folder->Path().toStdString()).channels);
}

TEST(RestartTest, WhatCannotBeReadSurvives) {
  // Broken files are read as far as they go; a folder in a file's place cannot be read at all.
  const auto folder = std::make_shared<DataFolder>();
  folder->Write("brindle.ini", File("[nicks|=\xFF|[nicks]|preferred=Wanda|[mine]|key=1"));
  folder->Write("irc_servers.txt", File("no port|:|h.example:99999|irc.example:6667"));
  folder->Remove("channels.txt");
  ASSERT_TRUE(QDir(folder->Path()).mkdir("channels.txt"));
  for (int start = 0; start < 2; ++start) {
    WindowDriver window(folder);
    EXPECT_EQ(window.Text("txtConnectNick"), "Wanda");
    EXPECT_NE(window.Items("cmbConnectServer").find("irc.example"), std::string::npos);
    window.App().Window().close();
    EXPECT_NE(folder->Content("brindle.ini").find("key=1"), std::string::npos);
    EXPECT_TRUE(QFileInfo(folder->File("channels.txt")).isDir());
  }
}

}  // namespace
}  // namespace brindle::test
