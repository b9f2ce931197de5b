#pragma once
// The tour: plays the main job by itself in the real window, as a user would with mouse and keys,
// and saves a picture of each step.

#include <QDir>
#include <QString>
#include <QStringList>
#include <deque>
#include <optional>
#include <string>

#include "base/dialogs.h"
#include "program.h"
#include "stage.h"

namespace brindle::demo {

// Answers the file box as the user would, and keeps what the other boxes say.
class TourDialogs : public Dialogs {
 public:
  void Notice(Icon, const std::string& text) override { notices.push_back(text); }
  bool Question(Icon, const std::string&) override { return true; }
  std::optional<std::string> Input(const std::string&) override { return std::nullopt; }
  std::optional<std::string> OpenFile(const std::string&) override { return file; }
  std::optional<Colour> PickColour(Colour) override { return std::nullopt; }

  std::string file;
  std::deque<std::string> notices;
};

class Tour {
 public:
  // `folder` takes the pictures; it must exist.
  Tour(const Stage& stage, const QDir& folder);

  // True when every step showed what it should. Failure() says what did not.
  bool Play();
  const QString& Failure() const { return failure_; }

  // The requests that the bot must have received by now, in order.
  QStringList ExpectedRequests() const;

 private:
  bool Connect();
  bool EnterRoom();
  bool LoadList();
  bool CheckRows();
  bool SelectBetween();
  bool RequestSelected();

  // Records the first failure; always false.
  bool Fail(const QString& what);
  bool WaitFor(const char* what, const std::function<bool()>& condition);
  void Picture(const char* name);
  void Click(const char* button);
  void ClickTab(Tab tab);
  void ClickCheckBox(int row);
  template <typename Widget>
  Widget* Find(const char* name) {
    return program_.Window().findChild<Widget*>(name);
  }

  const Stage& stage_;
  QDir pictureFolder_;
  test::DataFolder dataFolder_;
  TourDialogs dialogs_;
  Program program_;
  int pictures_ = 0;
  QString failure_;
};

}  // namespace brindle::demo
