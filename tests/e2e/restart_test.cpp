// What the user sets up lies in the files when the window is closed, and is there again at the next
// start; no server is needed.
#include <sys/stat.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QHeaderView>
#include <QTest>

#include "meeting.h"

namespace brindle::test {
namespace {

// "|" stands for a line end.
std::string File(std::string text) {
  return QString::fromStdString(text).replace("|", "\r\n").toStdString();
}

const std::string kListHeader = File(
    "// PLEASE DO NOT TRY TO MODIFY THIS FILE DIRECTLY.|// INSTEAD PLEASE USE THE ABILITY TO DO SO "
    "IN THE|// PROGRAM. THANK YOU.| |");
const std::string kMails = File("!MailBot send x y|1. First mail|2. Second mail|3. Other|");

const struct {
  const char* name;
  const char* typed;
} kSounds[] = {
    {"txtOptionsSound_0", "/sounds/He joins.wav"},
    {"txtOptionsSound_1", "/sounds/t\xC3\xBCr.wav"},
    {"txtOptionsSound_2", "c:\\notify.wav"},
    {"txtOptionsSound_4", "C:\\Sounds\\x=y; z.wav"},
    {"txtOptionsSound_6", ""},
};

const struct {
  const char* name;
  Colour picked;
} kSwatches[] = {
    {"picListForecolor", {255, 0, 0}},
    {"picListBackcolor", {0, 0, 128}},
    {"picRoomForecolor", {1, 2, 3}},
    {"picRoomBackcolor", {224, 255, 224}},
};

// Every box is turned over from its first state but the one that forgets the searches; asking for
// codes comes before the scan, which greys it.
constexpr const char* kLastBoxes[] = {"chkOptionsMisc_3", "chkOptionsMisc_2"};
const std::string kSettings = File(
    "[list]|forecolor=255|backcolor=8388608|[room]|forecolor=197121|backcolor=14745568|"
    "[find]|last=Second|[results]|height=7500|width=10500|column1=2250|column2=<rest>|"
    "[nicks]|preferred=Wanda|alternate=Wanda`|[server]|last used=1|[misc options]|"
    "Send notices to status window=1|Send mesagess to status window=1|Scan chat for servers=0|"
    "Request accesscode if found=1|Make window stay on top=1|[sound options]|"
    "Play when someone joins channel=0|sound0= /sounds/He joins.wav|"
    "Play when someone parts channel=0|sound1= /sounds/t\xC3\xBCr.wav|"
    "Play when notice is recieved=0|sound2= c:\\notify.wav|"
    "Play when msg is received=0|sound3= c:\\windows\\media\\ding.wav|"
    "Play when server is added=0|sound4= C:\\Sounds\\x=y; z.wav|"
    "Play on irc server connection=0|sound5= c:\\windows\\media\\chimes.wav|"
    "Play on irc server disconnection=0|sound6= |"
    "[list options]|View channel on list tab=1|Deselect selected after requested=0|"
    "[room options]|Include timestamp on chat lines=0|Try to enter room upon adding it=0|"
    "[find options]|Clear finds list on program exit=0|Remove inactive finds after=1|days=6|"
    "[chat options]|Keep digits that stand apart from a colour mark=1|");

Colour Middle(QWidget& widget) {
  const QColor colour = widget.grab().toImage().pixelColor(widget.rect().center());
  return {static_cast<std::uint8_t>(colour.red()), static_cast<std::uint8_t>(colour.green()),
          static_cast<std::uint8_t>(colour.blue())};
}

// The states of the boxes, by their names.
std::map<QString, bool> Boxes(WindowDriver& window) {
  std::map<QString, bool> states;
  for (const auto* box : window.App().Window().findChildren<QCheckBox*>()) {
    if (box->objectName().startsWith("chkOptions")) states[box->objectName()] = box->isChecked();
  }
  return states;
}

void Tick(WindowDriver& window, const QString& name) {
  auto& box = window.Find<QCheckBox>(qPrintable(name));
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
}

void OpenSearch(WindowDriver& window) {
  window.LoadList(window.Folder().File("mails.txt"));
  window.Click("cmdFind");
}

void SetUpOptions(WindowDriver& window) {
  window.ShowTab(Tab::kOptions);
  auto states = Boxes(window);
  states.erase("chkOptionsFind_0");
  for (const char* last : kLastBoxes) states.erase(last);
  for (const auto& [name, state] : states) Tick(window, name);
  for (const char* last : kLastBoxes) Tick(window, last);
  for (const auto& sound : kSounds) window.Type(sound.name, QString::fromUtf8(sound.typed));
  for (int i = 0; i < 5; ++i) {
    QTest::keyClick(&window.Find<QComboBox>("cmbOptionsFinds"), Qt::Key_Down);
  }
  for (const auto& swatch : kSwatches) {
    window.Boxes().colourAnswers.push_back(swatch.picked);
    window.Click(swatch.name);
  }
}

void SetUpConnection(WindowDriver& window) {
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
  EXPECT_EQ(window.Text("txtConnectPort"), "7000");
  window.Type("txtConnectPort", "7001");
}

// The list has its colours, and the room is seen beside it.
void ExpectColours(WindowDriver& window) {
  window.ShowTab(Tab::kOptions);
  for (const auto& swatch : kSwatches) {
    EXPECT_EQ(Middle(window.Find<QWidget>(swatch.name)), swatch.picked) << swatch.name;
  }
  auto& room = window.Find<QWidget>("txtChannel");
  window.ShowTab(Tab::kList);
  EXPECT_TRUE(room.isVisible());
  EXPECT_EQ(Middle(*window.Find<QTableView>("lstServerList").viewport()), kSwatches[1].picked);
  window.ShowTab(Tab::kRoom);
  EXPECT_TRUE(room.isVisible());
  EXPECT_EQ(Middle(room), kSwatches[3].picked);
}

TEST(RestartTest, EverythingThatWasSetUpIsThereAgain) {
  const auto folder = std::make_shared<DataFolder>();
  folder->Remove("brindle.ini");
  folder->Write("mails.txt", kMails);
  const std::string today = QDate::currentDate().toString(Qt::ISODate).toStdString();
  std::string settings = kSettings;
  std::map<QString, bool> boxes;
  {
    WindowDriver window(folder);
    SetUpOptions(window);
    SetUpConnection(window);
    OpenSearch(window);
    for (const char* search : {"mail", "Second"}) {
      window.Type("cmbSearch", search);
      window.Click("cmdSearch");
    }
    auto& table = window.Find<QTableView>("lstResults");
    window.Find<QWidget>("frmResults").resize(700, 500);
    table.horizontalHeader()->resizeSection(0, 150);
    LetTicksPass(1);
    settings.replace(settings.find("<rest>"), 6, std::to_string(table.columnWidth(1) * 15));
    window.Click("cmdReturn");
    ExpectColours(window);
    boxes = Boxes(window);
    window.App().Window().close();
  }
  EXPECT_EQ(folder->Content("brindle.ini"), settings);
  EXPECT_EQ(folder->Content("irc_servers.txt"),
            kListHeader + File("irc.one.example:6667|two.example:7001|"));
  EXPECT_EQ(folder->Content("channels.txt"), kListHeader + File("#first|#second|"));
  EXPECT_EQ(folder->Content("finds.txt"), File("[finds]|count=1|item0=mail|date0=" + today +
                                               "|item1=Second|date1=" + today + "|"));
  const auto stored = folder->All();
  WindowDriver window(folder);
  EXPECT_EQ(Boxes(window), boxes);
  for (const auto& sound : kSounds) EXPECT_EQ(window.Text(sound.name), sound.typed);
  EXPECT_FALSE(window.Find<QWidget>("chkOptionsMisc_3").isEnabled());
  EXPECT_EQ(window.Text("cmbOptionsFinds"), "7");
  EXPECT_EQ(window.Text("txtConnectNick") + " " + window.Text("txtAlternateNick"), "Wanda Wanda`");
  EXPECT_EQ(window.Items("cmbConnectServer"), "irc.one.example two.example");
  EXPECT_EQ(window.Text("cmbConnectServer"), "two.example");
  EXPECT_EQ(window.Text("txtConnectPort"), "7001");
  EXPECT_EQ(window.Items("lstChannels"), "#first #second");
  OpenSearch(window);
  EXPECT_EQ(window.Find<QWidget>("frmResults").size(), QSize(700, 500));
  EXPECT_EQ(window.Find<QTableView>("lstResults").columnWidth(0), 150);
  EXPECT_EQ(window.Items("cmbSearch") + ": " + window.Text("cmbSearch"), "mail Second: Second");
  ExpectColours(window);
  // The search window is open still: it is saved with the rest.
  window.App().Window().close();
  auto again = folder->All();
  again.erase("brindle.lock");
  EXPECT_EQ(again, stored);
}

TEST(RestartTest, AFirstStartMakesItsListsWithoutAWord) {
  const auto folder = std::make_shared<DataFolder>();
  for (const char* name : {"brindle.ini", "channels.txt", "irc_servers.txt"}) folder->Remove(name);
  auto window = std::make_unique<WindowDriver>(folder);
  EXPECT_EQ(window->Boxes().notices.size(), 1U);  // about the small screen
  EXPECT_EQ(folder->Content("channels.txt") + folder->Content("irc_servers.txt"),
            kListHeader + kListHeader);
  window.reset();
  // A list that goes missing later is told.
  folder->Remove("channels.txt");
  WindowDriver later(folder);
  EXPECT_EQ(later.Boxes().notices.back().text,
            "Error : File not found.\r" + folder->Path().toStdString() + "/channels.txt");
}

TEST(RestartTest, WhatCannotBeReadSurvives) {
  // Broken files are read as far as they go; a folder in a file's place cannot be read at all.
  const auto folder = std::make_shared<DataFolder>();
  folder->Write("brindle.ini", "[nicks\r\n=\xFF\r\n[nicks]\r\npreferred=Wanda\r\n[mine]\r\nkey=1");
  folder->Write("irc_servers.txt", "no port\r\n:\r\nh.example:99999\r\nirc.example:6667");
  folder->Remove("channels.txt");
  ASSERT_EQ(::mkdir(qPrintable(folder->File("channels.txt")), 0755), 0);
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
