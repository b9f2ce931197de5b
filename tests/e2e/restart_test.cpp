// What the user sets up lies in the files when the window is closed, and is there again at the next
// start; no server is needed.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>
#include <QSplitter>
#include <QTest>

#include "meeting.h"

namespace brindle::test {
namespace {

void SetUpEverything(WindowDriver& window) {
  window.ShowTab(Tab::kOptions);
  // Every box but the one that forgets the searches; the scan, which greys another one, comes last.
  for (auto* box : window.App().Window().findChildren<QCheckBox*>(
           QRegularExpression("^chkOptions(?!Find_0|Misc_2)"))) {
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
  }
  window.Find<QCheckBox>("chkOptionsMisc_2").click();
  for (auto* box :
       window.App().Window().findChildren<QComboBox*>(QRegularExpression("^cmbOptions(?!Theme)"))) {
    for (int i = 0; i < 2; ++i) QTest::keyClick(box, Qt::Key_Down);
  }
  for (const auto* field : window.App().Window().findChildren<QLineEdit*>(
           QRegularExpression("^txt(Con|Alt|Opt)(?!.*Password)"))) {
    window.Type(qPrintable(field->objectName()), "/t\u00FCr =;" + field->objectName());
  }
  window.Find<QSpinBox>("spnOptionsLines").setValue(kFewestChatLines);
  std::uint8_t red = 0;
  for (const char* swatch :
       {"picListForecolor", "picListBackcolor", "picRoomForecolor", "picRoomBackcolor"}) {
    window.Boxes().colourAnswers.push_back(Colour{red++, 0, 0});
    window.Click(swatch);
  }
  window.ShowTab(Tab::kConnection);
  window.Boxes().inputAnswers = {"Irc.One.Example:6667", "two.example:7000", "#First", "second "};
  for (const char* add : {"cmdConnectAdd", "cmdConnectAdd", "lblChannelsAdd", "lblChannelsAdd"}) {
    window.Click(add);
  }
  for (int i = 0; i < 2; ++i) {
    QTest::keyClick(&window.Find<QComboBox>("cmbConnectServer"), Qt::Key_Down);
  }
  window.Click("chkConnectTls");
  window.Type("txtConnectPort", "7001");
  window.App().Window().setGeometry(20, 30, 780, 600);
  window.Find<QSplitter>("splitMain").setSizes({500, 280});
  window.Find<QSplitter>("splitSide").setSizes({300, 250});
}

// What the fields, boxes and lists of the window hold.
std::map<std::string, std::string> Shown(WindowDriver& window) {
  window.ShowTab(Tab::kOptions);  // which is made when it is first shown
  std::map<std::string, std::string> shown = {{"servers", window.Items("cmbConnectServer")},
                                              {"rooms", window.Items("lstChannels")}};
  for (const auto* field : window.App().Window().findChildren<QWidget*>(
           QRegularExpression("^(txt(Con|Alt|Opt)|cmb[CO]|chk|spn)"))) {
    shown[field->objectName().toStdString()] =
        window.Text(qPrintable(field->objectName())) + (field->isEnabled() ? "" : " off") +
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
  folder->Write("mails.txt", "!MailBot send x y\n1. First mail\n2. Second mail\n3. Other\n");
  auto window = std::make_unique<WindowDriver>(folder);
  auto untouched = Shown(*window);
  SetUpEverything(*window);
  const auto shown = Shown(*window);
  for (const auto& [name, text] : shown) {
    // Passwords are not kept in the folder.
    const bool isLeft =
        name == "chkOptionsFind_0" || name == "cmbOptionsTheme" || name.ends_with("Password");
    EXPECT_EQ(untouched[name] == text, isLeft) << name;
  }
  EXPECT_EQ(shown.at("servers") + " " + shown.at("rooms") + shown.at("back"),
            "irc.one.example two.example #first #second#030000");
  window->LoadList(folder->File("mails.txt"));
  window->Click("cmdFind");
  for (const char* search : {"mail", "Second"}) {
    window->Type("cmbSearch", search);
    window->Click("cmdSearch");
  }
  window->Find<QWidget>("frmResults").resize(700, 500);
  const QString place = QString("\r\nside=%1\r\nchannels=%2\r\n")
                            .arg(window->Find<QSplitter>("splitMain").sizes()[1])
                            .arg(window->Find<QSplitter>("splitSide").sizes()[0]);
  window->ShowTab(Tab::kOptions);
  window.reset();  // the search window is open still: it is saved with the rest
  const auto files = folder->All();
  EXPECT_EQ(files.size(), 5U);
  EXPECT_NE(files.at("brindle.ini").find(place.toStdString()), std::string::npos);
  const QDate today = QDate::currentDate();
  int dated = 0;
  for (const QDate& day : {today, today.addDays(-1)}) {  // it may be midnight now
    dated += Count(files.at("finds.txt"), qPrintable("=" + day.toString(Qt::ISODate)));
  }
  EXPECT_EQ(dated, 2);

  window = std::make_unique<WindowDriver>(folder);
  EXPECT_EQ(Count(window->Text(kHint), "Nothing can be written"), 0);
  EXPECT_EQ(Shown(*window), shown);
  EXPECT_EQ(window->App().Window().geometry(), QRect(20, 30, 780, 600));
  window->LoadList(folder->File("mails.txt"));
  window->Click("cmdFind");
  EXPECT_EQ(window->Find<QWidget>("frmResults").size(), QSize(700, 500));
  EXPECT_EQ(window->Items("cmbSearch") + ": " + window->Text("cmbSearch"), "mail Second: Second");
  for (int i = 0; i < 2 * kFewestChatLines; ++i) {
    window->App().Window().RoomView().Append({{kBlack, "\r\nline"}});
  }
  EXPECT_LE(window->App().Window().RoomView().Log().LineCount(), size_t{kFewestChatLines});
  window->ShowTab(Tab::kOptions);
  window.reset();
  EXPECT_EQ(folder->All(), files);
  window = std::make_unique<WindowDriver>(folder);
  window->ShowTab(Tab::kOptions);
  window->Find<QListWidget>("lstOptionPages").setCurrentRow(2);
  auto& lines = window->Find<QSpinBox>("spnOptionsLines");
  lines.setFocus();
  lines.selectAll();
  QTest::keyClicks(&lines, "2500");
  window.reset();
  EXPECT_NE(folder->Content("brindle.ini").find("\r\nlines=2500\r\n"), std::string::npos);
}

TEST(RestartTest, WhatCannotBeWrittenIsToldAndStays) {
  const auto folder = std::make_shared<DataFolder>();
  WindowDriver window(folder);
  const std::string before = folder->Content("brindle.ini");
  QFile file(folder->File("brindle.ini"));
  file.setPermissions(QFile::ReadOwner);
  window.ShowTab(Tab::kOptions);
  window.Boxes().colourAnswers.push_back(Colour{9, 9, 9});
  window.Click("picListForecolor");
  EXPECT_TRUE(
      window.Tells(kHint, "Cannot write " + PathsIn(folder->Path().toStdString()).settings));
  window.App().Close();
  EXPECT_FALSE(window.App().HasSaved());
  EXPECT_EQ(folder->Content("brindle.ini"), before);
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);  // or Windows would not remove it
}

TEST(RestartTest, AFileThatIsMissingIsTold) {
  const auto folder = std::make_shared<DataFolder>();
  folder->Remove("channels.txt");
  EXPECT_EQ(WindowDriver(folder).Boxes().notices.back().text,
            "Error : File not found.\r" + PathsIn(folder->Path().toStdString()).channels);
  EXPECT_NE(folder->Content("channels.txt"), "");  // it is made when the program ends
}

}  // namespace
}  // namespace brindle::test
