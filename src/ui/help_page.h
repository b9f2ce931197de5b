#pragma once
// webHelp, the help page: comes with the program and needs no network. A link inside the page moves
// within it; the one link to the web site opens the user's browser; no other link does anything.

#include <QTextBrowser>
#include <functional>

namespace brindle {

class HelpPage : public QTextBrowser {
  Q_OBJECT

 public:
  using Opener = std::function<void(const QUrl& address)>;

  explicit HelpPage(QWidget* parent = nullptr);

  // Where the link to the web site leads: an http or https address; any other leads nowhere.
  void SetWebAddress(const std::string& address);

  // What opens an address; the system's browser unless told otherwise.
  void SetOpener(Opener opener) { open_ = std::move(opener); }

  // Loads nothing from anywhere.
  QVariant loadResource(int, const QUrl&) override { return {}; }

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Load();
  void Follow(const QUrl& link);

  QUrl webAddress_;
  Opener open_;
};

}  // namespace brindle
