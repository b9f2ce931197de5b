#pragma once
// Drives the program's window as a user does: fields are typed into, buttons and rows are clicked,
// menu items chosen, all found by object name. What the user reads comes back as plain text.

#include <QAbstractButton>
#include <QString>
#include <QTableView>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "support/data_folder.h"
#include "support/fake_dialogs.h"

namespace brindle::test {

class WindowDriver {
 public:
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
  // Presses a key in a field.
  void Press(const char* field, Qt::Key key);
  // Clicks a button with the mouse; returns when the click has had its whole effect.
  void Click(const char* button);
  // Chooses the menu item called `item`.
  void Choose(const char* item);

  // Fills in the connection panel and clicks Connect; waits for nothing.
  void Connect(const QString& nick, const QString& alternate, quint16 port,
               const QString& server = "127.0.0.1");
  // The same, and waits for the end of the message of the day.
  bool Register(const QString& nick, quint16 port, const QString& server = "127.0.0.1");
  // Clicks a row of the channels list and the Join button, and waits until the names have come.
  bool Join(int row);
  // Clicks Disconnect; waits for nothing.
  void Leave();

  // Loads a list file through the menu.
  void LoadList(const QString& path);
  // Clicks the check box of a row of the mail list, or of the results.
  void ClickCheckBox(int row, const char* table = "lstServerList");
  // The numbers of the checked rows, joined with blanks.
  std::string Checked();
  // The second header of the mail list.
  std::string TitleHeader();

  std::string Status() { return Plain("txtStatus").toStdString(); }
  std::string Room() { return Plain("txtChannel").toStdString(); }
  // Wait until the view shows `part`.
  bool ShowsInStatus(const QString& part) { return Shows("txtStatus", part); }
  bool ShowsInRoom(const QString& part) { return Shows("txtChannel", part); }
  // The text of a label, a button (without the mark of its letter), a field or a box.
  std::string Text(const char* name);
  // Waits until that contains `part`.
  bool Tells(const char* name, const std::string& part);
  // The rows of a list or a box, joined with blanks.
  std::string Items(const char* name);

 private:
  QString Plain(const char* view) { return Find<ChatTextView>(view).PlainText(); }
  bool Shows(const char* view, const QString& part);

  std::shared_ptr<const DataFolder> folder_;
  FakeDialogs dialogs_;
  Program program_;
};

// Lets the event loop turn `count` times at intervals of 10 ms or more. After a stall of the
// machine only one turn is counted, so whoever else waits in this program has had its time too.
void LetTicksPass(int count);

}  // namespace brindle::test
