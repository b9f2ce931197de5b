#pragma once
// The tour: plays the main job by itself in the real window, as a user would with mouse and keys,
// and saves a picture of each step.

#include <QDir>
#include <QString>
#include <QStringList>
#include <functional>

#include "stage.h"
#include "support/window_driver.h"

namespace brindle::demo {

class Tour {
 public:
  // `folder` takes the pictures; it must exist.
  Tour(const Stage& stage, const QDir& folder);

  // True when every step showed what it should. Failure() says what did not.
  bool Play();
  const QString& Failure() const { return failure_; }

  // The lines that the bot must have received by now, in order.
  const QStringList& ExpectedLines() const { return expected_; }

 private:
  bool Connect();
  bool EnterRoom();
  bool FindServer();
  bool LoadList();
  bool CheckRows();
  bool SelectBetween();
  bool SearchList();
  // Requests what is checked, which makes these ranges and numbers, and waits for the answers.
  bool RequestSelected(const QStringList& expected, const char* picture);
  bool SayThanks();
  bool Photograph();

  // Records the first failure; always false.
  bool Fail(const QString& what);
  bool WaitFor(const char* what, const std::function<bool()>& condition);
  bool RoomShows(const char* what, const QString& text);
  void Picture(const char* name);

  const Stage& stage_;
  QDir folder_;
  test::WindowDriver window_;
  QStringList expected_;
  int answers_ = 0;  // of the bot to requests, so far
  int pictures_ = 0;
  QString failure_;
};

}  // namespace brindle::demo
