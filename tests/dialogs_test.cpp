// The real boxes, each answered by a timer while it is open.
#include "ui/dialogs_qt.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QTimer>
#include <QtTest/QTest>

namespace brindle {
namespace {

// Lets `answer` deal with the box that opens next.
template <typename Box, typename Answer>
void Next(Answer answer) {
  QTimer::singleShot(0, [answer] {
    auto* box = qobject_cast<Box*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    answer(*box);
  });
}

TEST(Dialogs, SayTextAsItIsAndGiveTheAnswer) {
  QtDialogs dialogs;
  const std::string text = "a\r\nb\rc <b>&amp;</b>";
  const auto click = [](QMessageBox::StandardButton button, QMessageBox::Icon icon) {
    Next<QMessageBox>([=](QMessageBox& box) {
      EXPECT_EQ(box.text(), "a\nb\nc <b>&amp;</b>");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
      EXPECT_EQ(box.icon(), icon);
      if (button == QMessageBox::NoButton) return QTest::keyClick(&box, Qt::Key_Escape);
      box.button(button)->click();
    });
  };
  click(QMessageBox::Ok, QMessageBox::Information);
  dialogs.Notice(Icon::kInformation, text);
  click(QMessageBox::NoButton, QMessageBox::Critical);
  dialogs.Notice(Icon::kCritical, text);
  for (const auto button : {QMessageBox::Yes, QMessageBox::No, QMessageBox::NoButton}) {
    click(button, QMessageBox::Warning);
    EXPECT_EQ(dialogs.Question(Icon::kExclamation, text), button == QMessageBox::Yes);
  }
  const auto type = [](const QString& typed, Qt::Key key) {
    Next<QInputDialog>([=](QInputDialog& box) {
      EXPECT_EQ(box.labelText(), "Which\nroom?");
      box.setTextValue(typed);
      QTest::keyClick(&box, key);
    });
  };
  type("#a\tb\u0001", Qt::Key_Return);
  EXPECT_EQ(dialogs.Input("Which\rroom?"), "#ab");
  type("#a", Qt::Key_Escape);
  EXPECT_EQ(dialogs.Input("Which\rroom?"), std::nullopt);
}

TEST(Dialogs, FiltersOfFilesAreWrittenAsTheToolkitWantsThem) {
  EXPECT_EQ(ToQtFilter("Wav Files | *.wav"), "Wav Files (*.wav)");
  EXPECT_EQ(ToQtFilter("Lists (*.txt)|*.txt;*.htm|All|*.*"), "Lists (*.txt *.htm);;All (*.*)");
}

}  // namespace
}  // namespace brindle
