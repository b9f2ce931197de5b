// Starts the program with nothing stored, up to the shown window.

#include <QApplication>
#include <QTemporaryDir>

#include "app/program.h"
#include "first_paint.h"
#include "ui/look.h"

namespace {

// Boxes that the user would close.
class SilentDialogs : public brindle::Dialogs {
 public:
  void Notice(brindle::Icon, const std::string&) override {}
  bool Question(brindle::Icon, const std::string&) override { return false; }
  std::optional<std::string> Input(const std::string&) override { return std::nullopt; }
  std::optional<std::string> OpenFile(const std::string&) override { return std::nullopt; }
  std::optional<brindle::Colour> PickColour(brindle::Colour) override { return std::nullopt; }
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  brindle::ApplyLook(application, brindle::ThemeChoice::kSystem);
  const QTemporaryDir folder;
  SilentDialogs dialogs;
  brindle::Program program(folder.path().toStdString(), dialogs);
  const brindle::EndAtFirstPaint end(program.Window());
  return program.Open() ? QApplication::exec() : 1;
}
