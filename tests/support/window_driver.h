#pragma once
// Drives the program's window as a user does: fields are typed into, buttons and rows are clicked,
// menu items chosen, all found by object name. What the user reads comes back as plain text with
// its colours marked, so that whole transcripts can be compared.

#include <QAbstractButton>
#include <QString>
#include <QTableView>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "support/data_folder.h"
#include "support/fake_dialogs.h"

namespace brindle::test {

// The whole text of a view, one line per line of text; each run of one colour begins with the
// colour in braces: "{#ff0000}red{#000000}black".
std::string Transcript(const ChatTextView& view);

class WindowDriver {
 public:
  static constexpr int kTimeoutMs = 10000;

  // Shows the window with the rooms on its channels list. Chat lines carry no time and are
  // not scanned for servers.
  explicit WindowDriver(const std::vector<std::string>& rooms = {});
  // Shows the window with what is stored in the folder, and leaves it at that.
  explicit WindowDriver(std::shared_ptr<const DataFolder> folder);
  WindowDriver(const WindowDriver&) = delete;
  WindowDriver& operator=(const WindowDriver&) = delete;

  FakeDialogs& Boxes() { return dialogs_; }
  const DataFolder& Folder() const { return *folder_; }
  Program& App() { return program_; }

  // The object called `name`. Ends the test program when there is none: a test cannot go on.
  template <typename Object>
  Object& Find(const char* name) {
    auto* found = program_.Window().findChild<Object*>(name);
    if (found == nullptr) qFatal("the window has no %s", name);
    return *found;
  }

  void ShowTab(Tab tab);
  // Replaces the text of a field, or of the editable part of a box, key by key.
  void Type(const char* field, const QString& text);
  // Clicks a button with the mouse; returns when the click has had its whole effect.
  void Click(const char* button);
  // Chooses the menu item called `item`.
  void Choose(const char* item);

  // Fills in the connection panel and clicks Connect; waits for nothing.
  void Connect(const QString& nick, const QString& alternate, quint16 port);
  // The same, and waits for the end of the message of the day.
  bool Register(const QString& nick, quint16 port);
  // Clicks a row of the channels list and the Join button; waits for nothing.
  void AskToJoin(int row);
  // The same, and waits until the names have come.
  bool Join(int row);

  // Loads a list file through the menu.
  void LoadList(const QString& path);
  // Clicks the check box of a row of the mail list, or of the results.
  void ClickCheckBox(int row, const char* table = "lstServerList");
  // The numbers of the checked rows, joined with blanks.
  std::string Checked();
  // The second header of the mail list.
  std::string TitleHeader();

  std::string Status() { return Transcript(Find<ChatTextView>("txtStatus")); }
  std::string Room() { return Transcript(Find<ChatTextView>("txtChannel")); }
  // Waits until the view shows `part`; the text is looked at without its colours.
  bool ShowsInStatus(const QString& part) { return Shows("txtStatus", part); }
  bool ShowsInRoom(const QString& part) { return Shows("txtChannel", part); }
  // Waits until the who's-here list reads `nicks`, joined with blanks.
  bool WhosHere(const std::string& nicks);
  std::string Nicks();
  // Who's here now, after the label above: "Who's here (2) @Anna Wanda".
  std::string Who();
  // The same in the order of the alphabet: a server may name the nicks in any order.
  std::string SortedWho();
  // Caption and state of the Connect button: "Connect", or "Connect (disabled)".
  std::string ConnectButton();
  std::string Text(const char* label);

 private:
  bool Shows(const char* view, const QString& part);

  std::shared_ptr<const DataFolder> folder_;
  FakeDialogs dialogs_;
  Program program_;
};

// Runs `action` once, as soon as `condition` holds, from the event loop: for what happens while a
// call under test lets events run.
class Once {
 public:
  Once(std::function<bool()> condition, std::function<void()> action);
  bool HasRun() const { return hasRun_; }

 private:
  QTimer timer_;
  bool hasRun_ = false;
};

// Lets the event loop turn `count` times at intervals of 10 ms or more. After a stall of the
// machine only one turn is counted, so whoever else waits in this program has had its time too.
void LetTicksPass(int count);

}  // namespace brindle::test
