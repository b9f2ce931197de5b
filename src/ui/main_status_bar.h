#pragma once
// The status bar of the main window: how the session stands, the room, a hint, and the two monitors
// of load.

#include <QStatusBar>
#include <QTimer>
#include <string>

#include "irc/session.h"
#include "ui/elided_label.h"
#include "ui/icons.h"

namespace brindle {

class MainStatusBar : public QStatusBar {
  Q_OBJECT

 public:
  explicit MainStatusBar(QWidget* parent = nullptr);

  void ShowSession(const Session& session);
  void SetStatus(const std::string& text);
  // Goes by itself after a while.
  void ShowHint(const std::string& text);
  // What the mouse or the keyboard is at, in place of the hint until it is empty again; a hint that
  // has just come stays first, so that it can be read.
  void ShowHelp(const std::string& text);
  void SetBufferMonitor(const std::string& text);
  void SetRtbMonitor(const std::string& text);

 private:
  void Refresh();
  QLabel* AddPanel(QLabel* label, const char* name, int stretch);

  IconLabel* dot_;
  QLabel* statusPanel_;
  QLabel* roomPanel_;
  ElidedLabel* hintPanel_;
  QLabel* lblBufferSizePeak_;
  QLabel* lblRTBSizePeak_;
  QTimer hintTimer_;
  QTimer freshTimer_;  // runs while the hint has just come
  QString hint_;
  QString help_;
};

// The colour of the dot that stands for a session's state.
LookRole StateRole(ConnectionState state);

}  // namespace brindle
