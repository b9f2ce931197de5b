#pragma once
// The boxes that interrupt the user, as windows of the toolkit.

#include <QString>

#include "base/dialogs.h"

namespace brindle {

class QtDialogs : public Dialogs {
 public:
  // Where the file box opens first; later it opens where the user last was.
  void SetFolder(const QString& folder) { folder_ = folder; }

  void Notice(Icon icon, const std::string& text) override;
  bool Question(Icon icon, const std::string& text) override;
  std::optional<std::string> Input(const std::string& prompt) override;
  std::optional<std::string> OpenFile(const std::string& filter) override;
  std::optional<Colour> PickColour(Colour current) override;

 private:
  QString folder_;
};

// "A|*.x;*.y|B|*.z" as the toolkit wants it: "A (*.x *.y);;B (*.z)".
QString ToQtFilter(const std::string& filter);

}  // namespace brindle
