#include "settings/start_up.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/fake_dialogs.h"
#include "support/fake_port_box.h"
#include "support/memory_files.h"

namespace brindle {
namespace {

using Steps = std::vector<std::string>;

// Writes down every effect in order.
class Recorder : public StartUpView, public SystemMenu, public AolLink, public EventPump {
 public:
  bool IsAnotherInstanceRunning() override { return anotherRuns; }
  int ScreenWidthInTwips() override { return screenWidth * 15; }
  void UnloadWindow() override { steps.push_back("unload"); }
  void ResetOutputQueue() override { steps.push_back("reset queue"); }
  void CloseChatSocket() override { steps.push_back("close socket"); }
  void SetScreenName(const std::string& name) override { steps.push_back("name " + name); }
  void SetNicks(const std::string& nick, const std::string& alternate) override {
    steps.push_back("nicks " + nick + "/" + alternate);
  }
  void SelectServer(std::optional<size_t> row) override {
    steps.push_back("server " + (row ? std::to_string(*row) : "-1"));
  }
  void ShowOptions(OptionsPart part) override {
    steps.push_back("options " + std::to_string(static_cast<int>(part)));
    if (part == OptionsPart::kMisc && options != nullptr) {
      steps.push_back(options->stayOnTop ? "on top" : "not on top");
    }
  }
  void ShowHelpPage() override { steps.push_back("help"); }
  void SetWindowCaption(const std::string& text) override { steps.push_back("caption " + text); }
  void StartReceiveTimer() override { steps.push_back("timer"); }
  ClosingFields FieldsAtClosing() override { return fields; }
  bool IsDisconnectOffered() override { return connected; }
  void ClickConnectButton() override { steps.push_back("disconnect"); }
  void RemoveSizeCommand() override { steps.push_back("remove size"); }
  std::string GetAolScreenName() override { return aolName; }
  void LetEventsRun(int) override {
    if (duringLoad) duringLoad();
  }

  const Options* options = nullptr;
  bool anotherRuns = false;
  bool connected = false;
  int screenWidth = 1280;
  std::string aolName;
  ClosingFields fields;
  std::function<void()> duringLoad;
  Steps steps;
};

class StartUpTest : public testing::Test {
 protected:
  StartUpTest() { recorder.options = &options; }

  MemoryFiles files;
  FakeDialogs dialogs;
  Recorder recorder;
  Options options;
  ObservedList<std::string> channels;
  FakePortBox box;
  IrcServers servers{box, dialogs};
  StartUp startUp{
      recorder, {options, channels, servers}, files, PathsIn("/d"), dialogs, recorder, recorder,
      recorder};
};

TEST_F(StartUpTest, PutsEverythingBackInOrder) {
  files.files["/d/brindle.ini"] =
      "[nicks]\npreferred=joe\nalternate=joe2\n[server]\nlast used=1\n"
      "[misc options]\nMake window stay on top=1\n[screen name]\nlast used= My Name\n";
  files.files["/d/channels.txt"] = "#a\n#b\n";
  files.files["/d/irc_servers.txt"] = "h:1\ni:2\n";
  EXPECT_TRUE(startUp.Form_Load());
  EXPECT_EQ(recorder.steps, (Steps{"reset queue", "remove size", "close socket", "name myname",
                                   "nicks joe/joe2", "server 1", "options 0", "on top", "options 1",
                                   "options 2", "options 3", "options 4", "options 5", "options 6",
                                   "help", "caption Brindle v0.5.85", "timer"}));
  EXPECT_EQ(channels.Items(), (std::vector<std::string>{"#a", "#b"}));
  EXPECT_EQ(servers.Entries().Size(), 2U);
  EXPECT_TRUE(dialogs.notices.empty());
  EXPECT_TRUE(files.changes.empty());
}

TEST_F(StartUpTest, TheAolClientNamesTheUserFirst) {
  files.files["/d/brindle.ini"] = "[screen name]\nlast used=stored\n";
  recorder.aolName = " Jane D";
  startUp.Form_Load();
  EXPECT_EQ(recorder.steps[3], "name janed");
}

TEST_F(StartUpTest, OnlyARowThatExistsIsSelected) {
  files.files["/d/irc_servers.txt"] = "h:1\ni:2\n";
  const std::pair<const char*, const char*> cases[] = {
      {"1", "server 1"}, {"2", ""},         {"-1", "server -1"},
      {"-2", ""},        {"x", "server 0"}, {"99999999999999999999", ""}};
  for (const auto& [stored, step] : cases) {
    files.files["/d/brindle.ini"] = "[server]\nlast used=" + std::string(stored) + "\n";
    Recorder view;
    IrcServers entries(box, dialogs);
    StartUp(view, {options, channels, entries}, files, PathsIn("/d"), dialogs, view, view, view)
        .Form_Load();
    std::string selected;
    for (const std::string& taken : view.steps) {
      if (taken.starts_with("server ")) selected = taken;
    }
    EXPECT_EQ(selected, step) << stored;
  }
}

TEST_F(StartUpTest, MissingListsAndASmallScreenAreTold) {
  for (const int width : {640, 799, 801, 1280}) {
    recorder.screenWidth = width;
    startUp.Form_Load();
    EXPECT_EQ(dialogs.notices.size(), 2U) << width;
    dialogs.notices.clear();
  }
  recorder.screenWidth = 800;
  startUp.Form_Load();
  EXPECT_EQ(dialogs.notices,
            (std::vector<FakeDialogs::Shown>{
                {Icon::kCritical,
                 "You are running in 800x600 resolution. This program runs best in 1024x768, but "
                 "if you must run it in 800x600 be sure to maximize it."},
                {Icon::kExclamation, "Error : File not found.\r/d/channels.txt"},
                {Icon::kExclamation, "Error : File not found.\r/d/irc_servers.txt"}}));
}

TEST_F(StartUpTest, ASecondInstanceTouchesNothing) {
  recorder.anotherRuns = true;
  EXPECT_FALSE(startUp.Form_Load());
  startUp.Form_Unload();
  EXPECT_EQ(recorder.steps, Steps{"unload"});
  EXPECT_EQ(dialogs.notices,
            (std::vector<FakeDialogs::Shown>{{Icon::kExclamation, "Brindle is already running."}}));
  EXPECT_TRUE(files.changes.empty());
}

TEST_F(StartUpTest, ClosingSavesOnceAndThenEndsTheSession) {
  files.files["/d/brindle.ini"] = "; mine\r\n[list]\r\nforecolor=5\r\n[screen name]\r\n";
  files.files["/d/finds.txt"] = "[finds]\r\n";
  startUp.Form_Load();
  channels.Add("#new");
  servers.Add({"h", 6668});
  options.clearFindsOnExit = true;
  options.listForecolor = kWhite;
  recorder.fields = {"joe", "joe2", 0};
  recorder.connected = true;
  recorder.steps.clear();
  startUp.Form_Unload();
  startUp.Form_Unload();
  EXPECT_EQ(recorder.steps, Steps{"disconnect"});
  EXPECT_EQ(files.changes, (Steps{"replace /d/irc_servers.txt", "replace /d/channels.txt",
                                  "replace /d/brindle.ini", "remove /d/finds.txt"}));
  const std::string& ini = files.files["/d/brindle.ini"];
  EXPECT_TRUE(
      ini.starts_with("; mine\r\n[list]\r\nforecolor=5\r\n[screen name]\r\n[nicks]\r\n"
                      "preferred=joe\r\nalternate=joe2\r\n[server]\r\nlast used=0\r\n"
                      "[misc options]\r\n"))
      << ini;
  EXPECT_TRUE(files.files["/d/irc_servers.txt"].ends_with(" \r\nh:6668\r\n"));
  EXPECT_TRUE(files.files["/d/channels.txt"].ends_with(" \r\n#new\r\n"));
}

TEST_F(StartUpTest, WhatCouldNotBeReadIsNotWrittenOver) {
  files.files = {
      {"/d/brindle.ini", "[x]\n"}, {"/d/channels.txt", "#a\n"}, {"/d/irc_servers.txt", "h:1\n"}};
  files.unreadable = {"/d/brindle.ini", "/d/channels.txt", "/d/irc_servers.txt"};
  startUp.Form_Load();
  files.unreadable.clear();
  startUp.Form_Unload();
  EXPECT_TRUE(files.changes.empty());
}

TEST_F(StartUpTest, ClosingInTheMiddleOfLoadingSavesNothing) {
  files.files = {{"/d/channels.txt", "#a\n#b\n"}, {"/d/irc_servers.txt", "h:1\n"}};
  recorder.duringLoad = [this] { startUp.Form_Unload(); };
  startUp.Form_Load();
  EXPECT_TRUE(files.changes.empty());
  EXPECT_NE(recorder.steps.back(), "timer");
}

}  // namespace
}  // namespace brindle
