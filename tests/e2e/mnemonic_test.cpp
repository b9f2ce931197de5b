// Every screen at its least size: no button is cut, and every button, tab and menu entry has a
// letter that works with Alt, none twice on a screen.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QTabBar>
#include <QToolButton>
#include <map>

#include "support/window_driver.h"
#include "ui/frm_updater.h"

namespace brindle::test {
namespace {

// Gathers the captions of one screen and complains about those whose letter is missing or taken.
class Letters {
 public:
  explicit Letters(std::string screen) : screen_(std::move(screen)) {}

  void Add(const QString& caption, bool needsOne = true) {
    const QKeySequence keys = QKeySequence::mnemonic(caption);
    if (keys.isEmpty()) {
      EXPECT_FALSE(needsOne) << screen_ << ": no letter in " << caption.toStdString();
      return;
    }
    const auto [taken, isNew] = by_.emplace(keys.toString(), caption);
    EXPECT_TRUE(isNew) << screen_ << ": " << caption.toStdString() << " has the letter of "
                       << taken->second.toStdString();
  }

  // At the least size of its window.
  void ExpectWhole(const QAbstractButton& button) {
    const QSize text = button.fontMetrics().size(Qt::TextShowMnemonic, button.text());
    const int needed = text.width() + (button.icon().isNull() ? 0 : button.iconSize().width());
    EXPECT_GE(button.width(), needed) << screen_ << ": cut: " << button.text().toStdString();
    const QPoint end = button.mapTo(button.window(), button.rect().bottomRight());
    EXPECT_TRUE(button.window()->rect().contains(end))
        << screen_ << ": outside: " << button.text().toStdString();
  }

  void AddScreen(const QWidget& window) {
    for (const auto* bar : window.findChildren<QTabBar*>()) {
      for (int i = 0; bar->isVisible() && i < bar->count(); ++i) Add(bar->tabText(i));
    }
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
      // Seven sounds have the same buttons: they are next to their boxes, which have letters.
      const bool isOfASound = button->objectName().startsWith("cmdSound");
      const bool hasCaption =
          !button->text().isEmpty() && qobject_cast<const QToolButton*>(button) == nullptr;
      // Stop and Cancel come and go, and then must not take another one's letter.
      const bool mayShow = button->isVisibleTo(button->parentWidget()) ||
                           button->objectName() == "cmdRequestStop" ||
                           button->objectName() == "cmdConnectCancel";
      if (hasCaption && mayShow && button->parentWidget()->isVisible())
        Add(button->text(), !isOfASound);
      if (hasCaption && button->isVisible()) ExpectWhole(*button);
    }
    for (const auto* label : window.findChildren<QLabel*>()) {
      if (label->isVisible() && label->buddy() != nullptr) Add(label->text(), false);
    }
  }

 private:
  const std::string screen_;
  std::map<QString, QString> by_;
};

void AddWindow(QWidget& window) {
  window.resize(window.minimumSizeHint());
  LetTicksPass(1);
  Letters(window.objectName().toStdString()).AddScreen(window);
}

TEST(Screens, HaveALetterForEachButtonAndCutNone) {
  WindowDriver window;
  QWidget& main = window.App().Window();
  main.resize(main.minimumSizeHint());
  const auto* tabs = main.findChild<QTabBar*>();
  for (int tab = 0; tab < tabs->count(); ++tab) {
    window.ShowTab(static_cast<Tab>(tab));
    LetTicksPass(1);  // the options are made when they are first shown
    auto* pages = main.findChild<QListWidget*>("lstOptionPages");
    const bool hasPages = pages != nullptr && pages->isVisible();
    EXPECT_EQ(hasPages, tab == static_cast<int>(Tab::kOptions));
    for (int page = 0; page < (hasPages ? pages->count() : 1); ++page) {
      if (hasPages) pages->setCurrentRow(page);
      Letters(tabs->tabText(tab).toStdString() + " " + std::to_string(page)).AddScreen(main);
    }
  }
  window.Folder().Write("mails.txt", "!MailBot send x y\n1 a\n");
  window.LoadList(window.Folder().File("mails.txt"));
  window.ShowTab(Tab::kList);
  window.Click("cmdManualRequest");
  AddWindow(window.Find<QWidget>("frmManualRequest"));
  window.Click("cmdFind");
  AddWindow(window.Find<QWidget>("frmResults"));
  FrmUpdater updater(nullptr);
  updater.show();
  AddWindow(updater);
  for (const auto* menu : main.findChildren<QMenu*>()) {
    Letters letters(menu->objectName().toStdString());
    for (const QAction* entry : menu->actions()) {
      if (!entry->isSeparator()) letters.Add(entry->text());
    }
  }
}

}  // namespace
}  // namespace brindle::test
