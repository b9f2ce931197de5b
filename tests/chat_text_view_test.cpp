#include "ui/chat_text_view.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest/QTest>

#include "support/wait.h"

namespace brindle {
namespace {

constexpr Colour kBlue{0, 0, 255};
constexpr int kPatience = 5000;

class ChatTextViewTest : public testing::Test {
 protected:
  ChatTextViewTest() {
    view_.resize(400, 200);
    view_.show();
    view_.activateWindow();
    view_.setFocus();
    Settle();
  }

  void Add(const std::string& line, Colour colour = kBlack) {
    view_.Append({{colour, "\r\n" + line}});
  }
  void AddLines(int count) {
    for (int i = 0; i < count; ++i) Add("line " + std::to_string(next_++));
    Settle();
  }
  // One event leads to the next: appended text to a scroll bar, that to another width and paint.
  void Settle() {
    for (int i = 0; i < 6; ++i) QCoreApplication::processEvents();
  }

  QScrollBar& Bar() { return *view_.verticalScrollBar(); }
  bool AtEnd() { return view_.IsFollowing() && Bar().value() == Bar().maximum(); }
  QPoint Middle(LogPosition position) { return view_.RectOf(position).center(); }
  QPoint LeftOf(LogPosition position) {
    const QRect rect = view_.RectOf(position);
    return {rect.left(), rect.center().y()};
  }
  // The first text in sight.
  LogPosition Top() { return view_.PositionAt({0, 0}); }
  QRect LastRect() {
    const LogPosition end = view_.Log().End();
    return view_.RectOf({end.line, end.byte - 1});
  }
  // What is on screen must be what painting everything anew gives.
  void ExpectScreenIsCurrent() {
    Settle();
    const QImage shown = Screen();
    view_.viewport()->update();
    Settle();
    const QImage painted = Screen();
    EXPECT_FALSE(painted.isNull());
    EXPECT_TRUE(shown == painted);
  }
  // The window's own pixels, not painted anew.
  QImage Screen() { return view_.screen()->grabWindow(view_.winId()).toImage(); }
  void Key(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&view_, static_cast<Qt::Key>(key), modifiers);
  }

  ChatTextView view_;
  int next_ = 1;
};

TEST_F(ChatTextViewTest, FollowsTheEndOnlyFromTheEnd) {
  AddLines(100);
  EXPECT_TRUE(AtEnd());
  EXPECT_TRUE(view_.viewport()->rect().contains(LastRect()));
  EXPECT_EQ(LastRect().bottom(), view_.viewport()->rect().bottom());

  Key(Qt::Key_PageUp);
  EXPECT_FALSE(view_.IsFollowing());
  const LogPosition top = Top();
  const int value = Bar().value();
  AddLines(500);
  EXPECT_EQ(Top(), top);
  EXPECT_EQ(Bar().value(), value);

  Key(Qt::Key_End, Qt::ControlModifier);
  EXPECT_TRUE(AtEnd());
  AddLines(3);
  EXPECT_TRUE(AtEnd());

  Bar().setValue(Bar().maximum() / 2);
  EXPECT_FALSE(view_.IsFollowing());
  EXPECT_NEAR(static_cast<double>(Top().line), 300, 10);
  Bar().setValue(Bar().maximum());
  EXPECT_TRUE(AtEnd());
  Key(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(Top(), (LogPosition{1, 0}));
  EXPECT_EQ(Bar().value(), 0);
}

TEST_F(ChatTextViewTest, ABarAppearsOnlyWhenNeededAndWalksByRows) {
  AddLines(2);
  EXPECT_FALSE(Bar().isVisible());
  AddLines(50);
  EXPECT_TRUE(Bar().isVisible());
  EXPECT_TRUE(AtEnd());
  const LogPosition top = Top();
  Bar().triggerAction(QAbstractSlider::SliderSingleStepSub);
  EXPECT_EQ(Top().line, top.line - 1);
  Bar().triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_TRUE(AtEnd());
}

TEST_F(ChatTextViewTest, WrapsAndKeepsTheTextAtTheTopWhenResized) {
  for (int i = 0; i < 60; ++i) {
    Add("number " + std::to_string(i) + std::string(30, ' ') + "words to wrap at the edge " +
        std::string(120, 'x'));
  }
  Settle();
  const int right = view_.viewport()->width();
  const size_t last = view_.Log().LineCount() - 1;
  int rows = 0;
  for (size_t byte = 0; byte < view_.Log().Line(last).size(); ++byte) {
    const QRect rect = view_.RectOf({last, byte});
    // Blanks at the end of a row hang over the edge.
    if (view_.Log().Line(last)[byte] != ' ') {
      EXPECT_LE(rect.right(), right);
    }
    rows = std::max(rows, (rect.top() - view_.RectOf({last, 0}).top()) / rect.height() + 1);
  }
  EXPECT_GE(rows, 3);

  view_.resize(250, 200);
  Settle();
  EXPECT_TRUE(AtEnd());
  EXPECT_EQ(LastRect().bottom(), view_.viewport()->rect().bottom());

  Bar().setValue(Bar().maximum() / 2);
  const LogPosition top = Top();
  for (int width : {600, 130, 330, 250}) {
    view_.resize(width, 200);
    Settle();
    EXPECT_EQ(view_.RectOf(top).top(), 0) << width;
    EXPECT_FALSE(view_.IsFollowing());
  }
  EXPECT_EQ(Top(), top);
}

TEST_F(ChatTextViewTest, WhatIsShiftedOnScreenEqualsWhatIsPaintedAnew) {
  for (int i = 0; i < 30; ++i)
    Add("a line that is long enough to need two rows at least: " + std::to_string(i),
        i % 2 == 0 ? kBlack : kBlue);
  ExpectScreenIsCurrent();
  view_.Append({{kBlue, " and more of it, enough for another row or so"}});
  ExpectScreenIsCurrent();
  AddLines(2);
  ExpectScreenIsCurrent();
  for (const int key : {Qt::Key_Up, Qt::Key_PageUp, Qt::Key_Down, Qt::Key_Up}) {
    Key(key);
    ExpectScreenIsCurrent();
  }
  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, {60, 20});
  for (const QPoint point : {QPoint(90, 80), QPoint(20, 150), QPoint(50, 60), QPoint(10, 2)}) {
    QTest::mouseMove(view_.viewport(), point);
    ExpectScreenIsCurrent();
  }
  QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, {10, 2});
}

TEST_F(ChatTextViewTest, ShowsTextInItsColourOnTheBackColour) {
  view_.SetBackColour(Colour{0, 0, 0});
  view_.Append({{{255, 0, 0}, "\r\nWWWWWW"}, {{0, 255, 0}, "MMMMMM"}});
  Settle();
  const QImage image = view_.viewport()->grab().toImage();
  const auto strongest = [&](LogPosition position) {
    const QRect rect = view_.RectOf(position);
    int red = 0;
    int green = 0;
    for (int x = rect.left(); x <= rect.right(); ++x) {
      for (int y = rect.top(); y <= rect.bottom(); ++y) {
        red = std::max(red, image.pixelColor(x, y).red());
        green = std::max(green, image.pixelColor(x, y).green());
      }
    }
    return std::pair(red > 150, green > 150);
  };
  EXPECT_EQ(strongest({1, 2}), std::pair(true, false));
  EXPECT_EQ(strongest({1, 8}), std::pair(false, true));
  EXPECT_EQ(image.pixelColor(image.width() - 2, image.height() - 2), QColor(0, 0, 0));
}

TEST_F(ChatTextViewTest, SelectsWithTheMouseAndCopies) {
  Add("first line here");
  Add("");
  Add("caf\u00E9 \U0001F600 third");
  Settle();
  const QSignalSpy selecting(&view_, &ChatTextView::Selecting);
  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, LeftOf({1, 6}));
  EXPECT_EQ(selecting.count(), 1);
  QTest::mouseMove(view_.viewport(), LeftOf({3, 5}));
  QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, LeftOf({3, 5}));
  ASSERT_EQ(selecting.count(), 2);
  EXPECT_TRUE(selecting[0][0].toBool());
  EXPECT_FALSE(selecting[1][0].toBool());
  const QString selected = QString::fromUtf8("line here\n\ncaf\u00E9");
  EXPECT_EQ(view_.SelectedText(), selected);

  // What arrives later leaves the selection alone, at the end of the text too.
  AddLines(100);
  EXPECT_EQ(view_.SelectedText(), selected);
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), selected);

  Key(Qt::Key_A, Qt::ControlModifier);
  const QString all = view_.PlainText();
  AddLines(1);
  EXPECT_EQ("\n" + view_.SelectedText(), all);
}

TEST_F(ChatTextViewTest, SelectsWordsAndLinesByClicks) {
  Add("<nick> hello, w\u00F6rld again");
  Add("second");
  Settle();
  const QPoint word = Middle({1, 16});
  // However busy the machine, the third click belongs to the first two.
  const int interval = QApplication::doubleClickInterval();
  QApplication::setDoubleClickInterval(60'000);
  QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, word);
  EXPECT_EQ(view_.SelectedText(), QString::fromUtf8("w\u00F6rld"));
  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, word);
  EXPECT_EQ(view_.SelectedText(), QString::fromUtf8("<nick> hello, w\u00F6rld again"));
  QApplication::setDoubleClickInterval(interval);
  QTest::mouseMove(view_.viewport(), Middle({2, 1}));
  QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, Middle({2, 1}));
  EXPECT_EQ(view_.Selection(), (LogRange{{1, 0}, {2, 6}}));

  QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, LeftOf({1, 7}));
  EXPECT_TRUE(view_.Selection().IsEmpty());
  QTest::mouseClick(view_.viewport(), Qt::LeftButton, Qt::ShiftModifier, LeftOf({1, 12}));
  EXPECT_EQ(view_.SelectedText(), "hello");
  Key(Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(view_.SelectedText(), "hell");
  Key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(view_.Selection().end.line, 2U);
  Key(Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(view_.SelectedText(), "<nick> ");
}

TEST_F(ChatTextViewTest, ADragBeyondTheEdgeScrollsAndEndsWithTheFocus) {
  AddLines(200);
  const QSignalSpy selecting(&view_, &ChatTextView::Selecting);
  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, {30, 100});
  QTest::mouseMove(view_.viewport(), {30, -5});
  const LogPosition top = Top();
  EXPECT_TRUE(test::WaitUntil([&] { return Top().line + 5 < top.line; }, kPatience));
  EXPECT_EQ(view_.Selection().begin.line, Top().line);
  view_.clearFocus();
  ASSERT_EQ(selecting.count(), 2);
  EXPECT_FALSE(selecting[1][0].toBool());
  const LogPosition stopped = Top();
  QTest::mouseMove(view_.viewport(), {30, -50});
  EXPECT_EQ(Top(), stopped);

  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, {30, 100});
  view_.hide();
  ASSERT_EQ(selecting.count(), 4);
  EXPECT_FALSE(selecting[3][0].toBool());
}

TEST_F(ChatTextViewTest, FindsWithTheBar) {
  Add("Needle one");
  AddLines(300);
  Add("a nEEdle, a needle");
  AddLines(300);
  Key(Qt::Key_F, Qt::ControlModifier);
  auto* edit = view_.findChild<QLineEdit*>("chatFindText");
  ASSERT_TRUE(edit->isVisible());
  QTest::keyClicks(edit, "needle");
  EXPECT_EQ(view_.Selection(), (LogRange{{1, 0}, {1, 6}}));  // wrapped around
  EXPECT_TRUE(view_.viewport()->rect().contains(view_.RectOf({1, 0})));
  QTest::keyClick(edit, Qt::Key_Return);
  EXPECT_EQ(view_.Selection(), (LogRange{{302, 2}, {302, 8}}));
  EXPECT_TRUE(view_.viewport()->rect().contains(view_.RectOf({302, 2})));
  QTest::keyClick(edit, Qt::Key_F3);
  EXPECT_EQ(view_.Selection(), (LogRange{{302, 12}, {302, 18}}));
  QTest::keyClick(edit, Qt::Key_F3, Qt::ShiftModifier);
  QTest::keyClick(edit, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(view_.Selection(), (LogRange{{1, 0}, {1, 6}}));
  const LogPosition top = Top();
  QTest::keyClicks(edit, "less");
  EXPECT_EQ(Top(), top);
  QTest::keyClick(edit, Qt::Key_Escape);
  EXPECT_FALSE(edit->isVisible());
  EXPECT_TRUE(view_.hasFocus());
}

TEST_F(ChatTextViewTest, TheContextMenuCopies) {
  Add("some words");
  Settle();
  QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, Middle({1, 6}));
  QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, view_.mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(view_.viewport(), &event);
  auto* menu = view_.findChild<QMenu*>();
  ASSERT_NE(menu, nullptr);
  menu->findChild<QAction*>("mnuChatCopy")->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), "words");
  menu->close();
}

TEST_F(ChatTextViewTest, WhatArrivesWhileHiddenIsShownFromTheEnd) {
  view_.hide();
  AddLines(5000);
  EXPECT_EQ(view_.Log().LineCount(), 5001U);
  view_.resize(300, 150);
  view_.show();
  Settle();
  EXPECT_TRUE(AtEnd());
  EXPECT_EQ(LastRect().bottom(), view_.viewport()->rect().bottom());
  Key(Qt::Key_PageUp);
  const LogPosition top = Top();
  view_.hide();
  AddLines(50);
  view_.show();
  Settle();
  EXPECT_EQ(Top(), top);
}

// Texts that make layouts slow: the bound is far above what they need and far below a freeze.
TEST_F(ChatTextViewTest, HugeAndOddLinesDoNotFreeze) {
  std::string marks = "a";
  for (int i = 0; i < 20000; ++i) marks += "\u0301";
  const std::vector<std::string> lines = {std::string(100'000, 'x'),
                                          marks,
                                          "\u202E" + std::string(5000, 'r') + "\u05D0\u05D1",
                                          std::string(100'000, ' '),
                                          std::string(9000, '\t'),
                                          "\u0085\u2028\u2029\n\r"};
  QElapsedTimer elapsed;
  elapsed.start();
  for (const std::string& line : lines) Add(line);
  std::vector<ColouredRun> runs = {{kBlack, "\r\n"}};
  for (int i = 0; i < 20000; ++i) runs.push_back({i % 2 == 0 ? kBlack : kBlue, "y"});
  view_.Append(runs);
  Settle();
  for (int value = 0; value <= Bar().maximum(); value += 5) {
    Bar().setValue(value);
    Settle();
  }
  EXPECT_LT(elapsed.elapsed(), kPatience);

  // Every part of a long line can be reached, row by row, and its characters are all there.
  Key(Qt::Key_Home, Qt::ControlModifier);
  size_t reached = 0;
  for (int i = 0; i < 5000 && view_.PositionAt({390, 190}).line == 1; ++i) {
    const LogPosition bottom = view_.PositionAt({390, 190});
    EXPECT_GE(bottom.byte, reached);
    reached = bottom.byte;
    Key(Qt::Key_PageDown);
  }
  EXPECT_GT(reached, 95'000U);
  view_.Select({{1, 0}, {1, 100'000}});
  EXPECT_EQ(view_.SelectedText().size(), 100'000);
  Key(Qt::Key_End, Qt::ControlModifier);
  EXPECT_TRUE(AtEnd());
}

TEST_F(ChatTextViewTest, TellsAssistiveTechnologyItsText) {
  Add("<a> h\u00F6 \U0001F600!");
  view_.Append({{kBlue, "\r\nblue words"}});
  for (int i = 0; i < 1000; ++i) Add("line");
  Settle();
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&view_);
  ASSERT_NE(accessible, nullptr);
  EXPECT_TRUE(accessible->state().readOnly);
  QAccessibleTextInterface* text = accessible->textInterface();
  ASSERT_NE(text, nullptr);
  const QString all = view_.PlainText();
  EXPECT_EQ(text->characterCount(), all.size());
  EXPECT_EQ(text->text(0, text->characterCount()), all);
  for (int start : {0, 1, 5, 12, 700, 4500})
    EXPECT_EQ(text->text(start, start + 20), all.mid(start, 20));

  int start = 0;
  int end = 0;
  const int words = static_cast<int>(all.indexOf("words"));
  EXPECT_EQ(text->textAtOffset(words, QAccessible::LineBoundary, &start, &end), "blue words\n");
  EXPECT_EQ(all.mid(start, end - start), "blue words\n");
  EXPECT_EQ(text->textAtOffset(words + 2, QAccessible::WordBoundary, &start, &end), "words");
  EXPECT_EQ(text->textBeforeOffset(words, QAccessible::CharBoundary, &start, &end), " ");
  EXPECT_EQ(text->textAfterOffset(words, QAccessible::LineBoundary, &start, &end), "line\n");
  EXPECT_EQ(text->attributes(words, &start, &end), "color:rgb(0,0,255);");
  EXPECT_EQ(end - start, 10);

  text->setSelection(0, words, words + 5);
  EXPECT_EQ(view_.SelectedText(), "words");
  text->scrollToSubstring(words, words + 5);
  EXPECT_EQ(text->offsetAtPoint(text->characterRect(words).topLeft()), words);
}

}  // namespace
}  // namespace brindle
