// What the user sets up takes effect at once, lies in the files when the window is closed, and is
// there again at the next start.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QHeaderView>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::test {
namespace {

using Shown = std::vector<FakeDialogs::Shown>;

constexpr const char* kSmallScreen =
    "You are running in 800x600 resolution. This program runs best in 1024x768, but if you must "
    "run it in 800x600 be sure to maximize it.";
constexpr const char* kListHeader =
    "// PLEASE DO NOT TRY TO MODIFY THIS FILE DIRECTLY.\r\n"
    "// INSTEAD PLEASE USE THE ABILITY TO DO SO IN THE\r\n"
    "// PROGRAM. THANK YOU.\r\n"
    " \r\n";
constexpr const char* kMails =
    "!MailBot send x y\r\n1. First mail\r\n2. Second mail\r\n3. Other\r\n";

// A box and its state in a folder where nothing is stored. Requesting access codes comes before the
// scan, which greys it.
struct Box {
  const char* name;
  bool atFirst;
};
constexpr Box kBoxes[] = {
    {"chkOptionsMisc_0", false}, {"chkOptionsMisc_1", false}, {"chkOptionsMisc_3", false},
    {"chkOptionsMisc_2", true},  {"chkOptionsMisc_4", false}, {"chkOptionsSound_0", true},
    {"chkOptionsSound_1", true}, {"chkOptionsSound_2", true}, {"chkOptionsSound_3", true},
    {"chkOptionsSound_4", true}, {"chkOptionsSound_5", true}, {"chkOptionsSound_6", true},
    {"chkOptionsList_0", false}, {"chkOptionsList_1", true},  {"chkOptionsRoom_0", true},
    {"chkOptionsRoom_1", true},  {"chkOptionsFind_1", false}, {"chkOptionsChat_0", false},
};

struct Sound {
  const char* name;
  const char* atFirst;
  const char* typed;  // nullptr: left as it is
};
constexpr Sound kSounds[] = {
    {"txtOptionsSound_0", "", "/sounds/He joins.wav"},
    {"txtOptionsSound_1", "", "/sounds/t\xC3\xBCr.wav"},
    {"txtOptionsSound_2", "c:\\windows\\media\\notify.wav", "  /sounds/blanks.wav "},
    {"txtOptionsSound_3", "c:\\windows\\media\\ding.wav", nullptr},
    {"txtOptionsSound_4", "c:\\windows\\media\\ding.wav", "C:\\Sounds\\x=y; z.wav"},
    {"txtOptionsSound_5", "c:\\windows\\media\\chimes.wav", "chimes.wav"},
    {"txtOptionsSound_6", "c:\\windows\\media\\tada.wav", ""},
};

struct Swatch {
  const char* name;
  Colour picked;
};
constexpr Swatch kSwatches[] = {
    {"picListForecolor", {255, 0, 0}},
    {"picListBackcolor", {0, 0, 128}},
    {"picRoomForecolor", {1, 2, 3}},
    {"picRoomBackcolor", {224, 255, 224}},
};

constexpr const char* kSettings =
    "[list]\r\nforecolor=255\r\nbackcolor=8388608\r\n"
    "[room]\r\nforecolor=197121\r\nbackcolor=14745568\r\n"
    "[find]\r\nlast=Second\r\n"
    "[results]\r\nheight=7500\r\nwidth=10500\r\ncolumn1=2250\r\ncolumn2=<rest>\r\n"
    "[nicks]\r\npreferred=Wanda\r\nalternate=Wanda`\r\n"
    "[server]\r\nlast used=1\r\n"
    "[misc options]\r\n"
    "Send notices to status window=1\r\n"
    "Send mesagess to status window=1\r\n"
    "Scan chat for servers=0\r\n"
    "Request accesscode if found=1\r\n"
    "Make window stay on top=1\r\n"
    "[sound options]\r\n"
    "Play when someone joins channel=0\r\n"
    "sound0= /sounds/He joins.wav\r\n"
    "Play when someone parts channel=0\r\n"
    "sound1= /sounds/t\xC3\xBCr.wav\r\n"
    "Play when notice is recieved=0\r\n"
    "sound2=   /sounds/blanks.wav \r\n"
    "Play when msg is received=0\r\n"
    "sound3= c:\\windows\\media\\ding.wav\r\n"
    "Play when server is added=0\r\n"
    "sound4= C:\\Sounds\\x=y; z.wav\r\n"
    "Play on irc server connection=0\r\n"
    "sound5= chimes.wav\r\n"
    "Play on irc server disconnection=0\r\n"
    "sound6= \r\n"
    "[list options]\r\n"
    "View channel on list tab=1\r\n"
    "Deselect selected after requested=0\r\n"
    "[room options]\r\n"
    "Include timestamp on chat lines=0\r\n"
    "Try to enter room upon adding it=0\r\n"
    "[find options]\r\n"
    "Clear finds list on program exit=0\r\n"
    "Remove inactive finds after=1\r\n"
    "days=6\r\n"
    "[chat options]\r\n"
    "Keep digits that stand apart from a colour mark=1\r\n";

std::shared_ptr<DataFolder> EmptyFolder() {
  auto folder = std::make_shared<DataFolder>();
  for (const char* name : {"brindle.ini", "channels.txt", "irc_servers.txt"}) folder->Remove(name);
  return folder;
}

// On the box itself: its caption may be short.
void Tick(WindowDriver& window, const char* name) {
  auto& box = window.Find<QCheckBox>(name);
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
}

Colour At(QWidget& widget, QPoint where) {
  const QColor colour = widget.grab().toImage().pixelColor(where);
  return {static_cast<std::uint8_t>(colour.red()), static_cast<std::uint8_t>(colour.green()),
          static_cast<std::uint8_t>(colour.blue())};
}
Colour Middle(QWidget& widget) { return At(widget, widget.rect().center()); }

bool IsOnTop(WindowDriver& window) {
  return window.App().Window().windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint);
}

std::string FieldText(WindowDriver& window, const char* name) {
  return window.Find<QLineEdit>(name).text().toStdString();
}

std::vector<std::string> ItemsOf(const QAbstractItemModel& model) {
  std::vector<std::string> items;
  for (int row = 0; row < model.rowCount(); ++row) {
    items.push_back(model.index(row, 0).data().toString().toStdString());
  }
  return items;
}

void OpenSearch(WindowDriver& window) {
  window.LoadList(window.Folder().File("mails.txt"));
  window.Click("cmdFind");
}

class RestartTest : public testing::Test {
 protected:
  // All that can be set up, by hand. Returns the width of the column that takes what is left.
  static int SetUpEverything(WindowDriver& window) {
    window.ShowTab(Tab::kOptions);
    for (const Box& box : kBoxes) {
      EXPECT_EQ(window.Find<QCheckBox>(box.name).isChecked(), box.atFirst) << box.name;
      Tick(window, box.name);
    }
    for (const Sound& sound : kSounds) {
      EXPECT_EQ(FieldText(window, sound.name), sound.atFirst);
      if (sound.typed != nullptr) window.Type(sound.name, QString::fromUtf8(sound.typed));
    }
    for (int i = 0; i < 5; ++i) {
      QTest::keyClick(&window.Find<QComboBox>("cmbOptionsFinds"), Qt::Key_Down);
    }
    for (const Swatch& swatch : kSwatches) {
      window.Boxes().colourAnswers.push_back(swatch.picked);
      window.Click(swatch.name);
    }

    window.ShowTab(Tab::kConnection);
    window.Type("txtConnectNick", "Wanda");
    window.Type("txtAlternateNick", "Wanda`");
    window.Boxes().inputAnswers = {"Irc.One.Example:6667", "two.example:7000", "#First", "second "};
    for (const char* button :
         {"cmdConnectAdd", "cmdConnectAdd", "lblChannelsAdd", "lblChannelsAdd"}) {
      window.Click(button);
    }
    for (int i = 0; i < 2; ++i) {
      QTest::keyClick(&window.Find<QComboBox>("cmbConnectServer"), Qt::Key_Down);
    }
    EXPECT_EQ(FieldText(window, "txtConnectPort"), "7000");
    window.Type("txtConnectPort", "7001");

    OpenSearch(window);
    for (const char* search : {"mail", "Second"}) {
      window.Type("cmbSearch", search);
      window.Click("cmdSearch");
    }
    auto& results = window.Find<QWidget>("frmResults");
    auto& table = window.Find<QTableView>("lstResults");
    EXPECT_EQ(results.size(), QSize(513, 416));
    results.resize(700, 500);
    table.horizontalHeader()->resizeSection(0, 150);
    LetTicksPass(1);
    const int rest = table.columnWidth(1);
    window.Click("cmdReturn");
    return rest;
  }

  static void ExpectEverything(WindowDriver& window) {
    for (const Box& box : kBoxes) {
      EXPECT_EQ(window.Find<QCheckBox>(box.name).isChecked(), !box.atFirst) << box.name;
    }
    EXPECT_FALSE(window.Find<QCheckBox>("chkOptionsFind_0").isChecked());
    for (const Sound& sound : kSounds) {
      const char* text = sound.typed == nullptr ? sound.atFirst : sound.typed;
      EXPECT_EQ(FieldText(window, sound.name), QString::fromUtf8(text).trimmed().toStdString());
    }
    window.ShowTab(Tab::kOptions);
    for (const Swatch& swatch : kSwatches) {
      EXPECT_EQ(Middle(window.Find<QWidget>(swatch.name)), swatch.picked) << swatch.name;
    }
    EXPECT_FALSE(window.Find<QCheckBox>("chkOptionsMisc_3").isEnabled());
    EXPECT_TRUE(window.Find<QComboBox>("cmbOptionsFinds").isEnabled());
    EXPECT_EQ(window.Find<QComboBox>("cmbOptionsFinds").currentText(), "7");
    EXPECT_TRUE(IsOnTop(window));

    EXPECT_EQ(FieldText(window, "txtConnectNick"), "Wanda");
    EXPECT_EQ(FieldText(window, "txtAlternateNick"), "Wanda`");
    auto& servers = window.Find<QComboBox>("cmbConnectServer");
    EXPECT_EQ(ItemsOf(*servers.model()),
              (std::vector<std::string>{"irc.one.example", "two.example"}));
    EXPECT_EQ(servers.currentText(), "two.example");
    EXPECT_EQ(FieldText(window, "txtConnectPort"), "7001");
    EXPECT_EQ(ItemsOf(*window.Find<QListView>("lstChannels").model()),
              (std::vector<std::string>{"#first", "#second"}));
  }

  // The list has its colours, and the room is seen beside it.
  static void ExpectListAndRoom(WindowDriver& window) {
    auto& room = window.Find<QWidget>("txtChannel");
    window.ShowTab(Tab::kList);
    EXPECT_EQ(room.parentWidget(), &window.Find<QSplitter>("splitList"));
    EXPECT_TRUE(room.isVisible());
    EXPECT_EQ(Middle(*window.Find<QTableView>("lstServerList").viewport()), kSwatches[1].picked);
    EXPECT_EQ(window.Find<QTableView>("lstServerList").palette().text().color(), QColor(255, 0, 0));
    window.ShowTab(Tab::kRoom);
    EXPECT_EQ(room.parentWidget(), &window.Find<QWidget>("tabRoom"));
    EXPECT_TRUE(room.isVisible());
    EXPECT_EQ(Middle(room), kSwatches[3].picked);
  }
};

TEST_F(RestartTest, EverythingThatWasSetUpIsThereAgain) {
  const auto folder = EmptyFolder();
  folder->Write("mails.txt", kMails);
  const std::string today = QDate::currentDate().toString(Qt::ISODate).toStdString();
  std::string settings = kSettings;
  {
    WindowDriver window(folder);
    const int rest = SetUpEverything(window);
    settings.replace(settings.find("<rest>"), 6, std::to_string(rest * 15));
    ExpectListAndRoom(window);
    window.App().Window().close();
  }
  EXPECT_EQ(folder->Content("brindle.ini"), settings);
  EXPECT_EQ(folder->Content("irc_servers.txt"),
            std::string(kListHeader) + "irc.one.example:6667\r\ntwo.example:7001\r\n");
  EXPECT_EQ(folder->Content("channels.txt"), std::string(kListHeader) + "#first\r\n#second\r\n");
  EXPECT_EQ(folder->Content("finds.txt"), "[finds]\r\ncount=1\r\nitem0=mail\r\ndate0=" + today +
                                              "\r\nitem1=Second\r\ndate1=" + today + "\r\n");

  const auto stored = folder->All();
  {
    WindowDriver window(folder);
    ExpectEverything(window);
    OpenSearch(window);
    EXPECT_EQ(window.Find<QWidget>("frmResults").size(), QSize(700, 500));
    EXPECT_EQ(window.Find<QTableView>("lstResults").columnWidth(0), 150);
    auto& searches = window.Find<QComboBox>("cmbSearch");
    EXPECT_EQ(ItemsOf(*searches.model()), (std::vector<std::string>{"mail", "Second"}));
    EXPECT_EQ(searches.currentText(), "Second");
    ExpectListAndRoom(window);
    // The search window is open still: it is saved with the rest.
    window.App().Window().close();
  }
  auto storedAgain = folder->All();
  // Blanks around a path are gone once it has been read.
  std::string& again = storedAgain["brindle.ini"];
  const size_t trimmed = again.find("sound2= /sounds/blanks.wav\r\n");
  ASSERT_NE(trimmed, std::string::npos);
  again.replace(trimmed, 28, "sound2=   /sounds/blanks.wav \r\n");
  EXPECT_EQ(storedAgain, stored);
}

TEST_F(RestartTest, AFirstStartSaysWhatIsMissingAndGoesOn) {
  if (QGuiApplication::primaryScreen()->size().width() != 800) GTEST_SKIP() << "other screen";
  const auto folder = EmptyFolder();
  const std::string path = folder->Path().toStdString();
  WindowDriver window(folder);
  EXPECT_EQ(window.Boxes().notices,
            (Shown{{Icon::kCritical, kSmallScreen},
                   {Icon::kExclamation, "Error : File not found.\r" + path + "/channels.txt"},
                   {Icon::kExclamation, "Error : File not found.\r" + path + "/irc_servers.txt"}}));
  EXPECT_TRUE(window.App().Window().isVisible());
  EXPECT_EQ(window.App().Window().windowTitle(), "Brindle v0.5.85");
  window.App().Window().close();
  EXPECT_EQ(folder->Content("channels.txt"), kListHeader);
  EXPECT_EQ(folder->Content("irc_servers.txt"), kListHeader);
}

TEST_F(RestartTest, ASecondProgramInTheSameFolderTouchesNothing) {
  const auto folder = std::make_shared<DataFolder>(
      StartState{.nick = "Wanda", .server = "h:1", .channels = {}, .screenName = {}});
  {
    WindowDriver first(folder);
    const auto before = folder->All();
    {
      FakeDialogs dialogs;
      Program second(folder->Path().toStdString(), dialogs);
      EXPECT_FALSE(second.Open());
      EXPECT_FALSE(second.Window().isVisible());
      EXPECT_EQ(dialogs.notices, (Shown{{Icon::kExclamation, "Brindle is already running."}}));
    }
    EXPECT_EQ(folder->All(), before);
    EXPECT_TRUE(first.App().Window().isVisible());
  }
  FakeDialogs dialogs;
  EXPECT_TRUE(Program(folder->Path().toStdString(), dialogs).Open());
}

TEST_F(RestartTest, AWindowThatIsClosedWhileItLoadsSavesNothing) {
  const DataFolder folder({.nick = "Wanda", .server = "h:1", .channels = {"#a"}, .screenName = {}});
  const auto before = folder.All();
  FakeDialogs dialogs;
  {
    Program program(folder.Path().toStdString(), dialogs);
    QTimer::singleShot(0, &program.Window(), [&] { program.Window().close(); });
    EXPECT_FALSE(program.Open());
  }
  EXPECT_EQ(folder.All(), before);
}

TEST_F(RestartTest, SearchesAreForgottenAtTheEndOnRequest) {
  const auto folder = std::make_shared<DataFolder>();
  folder->Write("mails.txt", kMails);
  WindowDriver window(folder);
  OpenSearch(window);
  window.Type("cmbSearch", "mail");
  window.Click("cmdSearch");
  window.Click("cmdReturn");
  ASSERT_TRUE(folder->All().contains("finds.txt"));
  Tick(window, "chkOptionsFind_0");
  ASSERT_TRUE(folder->All().contains("finds.txt"));
  window.App().Window().close();
  EXPECT_FALSE(folder->All().contains("finds.txt"));
}

class OptionsTabTest : public testing::Test {
 protected:
  OptionsTabTest() {
    window.ShowTab(Tab::kOptions);
    window.Boxes().notices.clear();
  }

  bool IsEnabled(const char* name) { return window.Find<QWidget>(name).isEnabled(); }
  std::string Settings() { return window.Folder().Content("brindle.ini"); }

  WindowDriver window{std::make_shared<DataFolder>()};
};

TEST_F(OptionsTabTest, BoxesActAtOnce) {
  Tick(window, "chkOptionsMisc_3");
  for (const bool scan : {false, true}) {
    Tick(window, "chkOptionsMisc_2");
    EXPECT_EQ(IsEnabled("chkOptionsMisc_3"), scan);
    EXPECT_TRUE(window.Find<QCheckBox>("chkOptionsMisc_3").isChecked());
  }
  EXPECT_FALSE(IsEnabled("cmbOptionsFinds"));
  for (const bool on : {true, false}) {
    Tick(window, "chkOptionsFind_1");
    EXPECT_EQ(IsEnabled("cmbOptionsFinds"), on);
    Tick(window, "chkOptionsMisc_4");
    EXPECT_EQ(IsOnTop(window), on);
    EXPECT_TRUE(window.App().Window().isVisible());
  }
}

TEST_F(OptionsTabTest, ClearFindsNowAsksFirst) {
  window.Folder().Write("finds.txt", "[finds]\r\ncount=-1\r\n");
  window.Boxes().questionAnswers = {false, true};
  window.Click("cmdOptionsFinds");
  EXPECT_TRUE(window.Folder().All().contains("finds.txt"));
  window.Click("cmdOptionsFinds");
  EXPECT_FALSE(window.Folder().All().contains("finds.txt"));
  const FakeDialogs::Shown question = {Icon::kExclamation,
                                       "Are you sure you wish to delete your finds list?"};
  EXPECT_EQ(window.Boxes().questions, (Shown{question, question}));
  EXPECT_TRUE(window.Boxes().notices.empty());
}

TEST_F(OptionsTabTest, OnlyAWaveFileThatExistsIsTaken) {
  window.Folder().Write("Ding.WAV", "no wave");
  const std::string path = window.Folder().File("Ding.WAV").toStdString();
  window.Boxes().fileAnswers = {std::nullopt, path + ".gone", path};
  for (const std::string& shown : {std::string(), std::string(), path}) {
    window.Click("cmdSoundOpen_1");
    EXPECT_EQ(FieldText(window, "txtOptionsSound_1"), shown);
  }
  EXPECT_EQ(window.Boxes().filters, std::vector<std::string>(3, "Wav Files | *.wav"));
  EXPECT_EQ(window.App().Settings().sounds[1].path, path);
  // Neither a file that is no wave nor one that is missing is worth a word.
  window.Click("cmdSoundPlay_1");
  window.Click("cmdSoundPlay_6");
  EXPECT_TRUE(window.Boxes().notices.empty());
}

TEST_F(OptionsTabTest, AColourIsStoredWhenItIsPicked) {
  const std::string before = Settings();
  auto& swatch = window.Find<QWidget>("picListBackcolor");
  window.Click("picListBackcolor");
  EXPECT_EQ(Settings(), before);
  EXPECT_EQ(Middle(swatch), kWhite);
  window.Boxes().colourAnswers.push_back(Colour{1, 2, 3});
  window.Click("picListBackcolor");
  EXPECT_EQ(Settings(), before + "[list]\r\nbackcolor=197121\r\n");
  EXPECT_EQ(Middle(swatch), (Colour{1, 2, 3}));
}

TEST_F(OptionsTabTest, NothingIsCutAtTheSideHoweverNarrowTheWindow) {
  const QScrollBar& sideways = *window.Find<QScrollArea>("scrollOptions").horizontalScrollBar();
  for (const int width : {0, 800, 980, 1280, 0}) {
    window.App().Window().resize(width, 600);
    LetTicksPass(1);
    EXPECT_EQ(sideways.maximum(), 0) << width;
  }
}

// The same host may stand in the list with two ports.
TEST_F(OptionsTabTest, EnterKeepsTheServerThatIsSelected) {
  window.ShowTab(Tab::kConnection);
  window.Boxes().inputAnswers = {"h.example:1", "h.example:2"};
  window.Click("cmdConnectAdd");
  window.Click("cmdConnectAdd");
  auto& servers = window.Find<QComboBox>("cmbConnectServer");
  QTest::keyClick(&servers, Qt::Key_Down);
  QTest::keyClick(&servers, Qt::Key_Down);
  QTest::keyClick(&servers, Qt::Key_Return);
  EXPECT_EQ(FieldText(window, "txtConnectPort"), "2");
  EXPECT_EQ(window.Boxes().notices,
            (Shown{{Icon::kInformation, "Please enter your desired Nick."}}));
}

}  // namespace
}  // namespace brindle::test
