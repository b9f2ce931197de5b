#include "ui/chat_text_view.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest/QTest>
#include <ctime>

#include "base/utf8.h"
#include "support/wait.h"

namespace brindle {
namespace {

constexpr int kPatience = 5000;

struct ChatTextViewTest : testing::Test {
  ChatTextViewTest() {
    view_.resize(400, 200);
    view_.show();
    view_.activateWindow();
    view_.setFocus();
  }
  // No later window gets the mouse while a button seems to be down in this one.
  ~ChatTextViewTest() override { QTest::mouseRelease(view_.viewport(), Qt::LeftButton); }

  void Add(const std::string& line) { view_.Append({{kBlack, "\r\n" + line}}); }
  void AddLines(int count) {
    for (int i = 0; i < count; ++i) Add("line " + std::to_string(next_++) + " long enough for two");
    Settle();
  }
  // One event leads to the next: appended text to a scroll bar, that to another width and paint.
  void Settle() {
    for (int i = 0; i < 6; ++i) QCoreApplication::processEvents();
  }
  // Keys, or what the left button does at a line and a byte: "press 1 7".
  void Do(const QString& act) {
    const QStringList words = act.split(' ');
    if (words.size() < 3) return QTest::keySequence(&view_, QKeySequence(act));
    QWidget* on = view_.viewport();
    const QPoint at = LeftOf({words[1].toUInt(), words[2].toUInt()});
    if (words[0] == "move") QTest::mouseMove(on, at);
    if (words[0] == "press") QTest::mousePress(on, Qt::LeftButton, {}, at);
    if (words[0] == "double") QTest::mouseDClick(on, Qt::LeftButton, {}, at);
    if (words[0] == "click") QTest::mouseClick(on, Qt::LeftButton, {}, at);
    if (words[0] == "extend") QTest::mouseClick(on, Qt::LeftButton, Qt::ShiftModifier, at);
  }

  QScrollBar& Bar() { return *view_.verticalScrollBar(); }
  LogPosition Top() { return view_.PositionAt({0, 0}); }
  QPoint LeftOf(LogPosition position) {
    const QRect rect = view_.RectOf(position);
    return {rect.left(), rect.center().y()};
  }
  bool IsInSight(LogPosition position) {
    return view_.viewport()->rect().contains(view_.RectOf(position));
  }
  // At the end, with the last row at the bottom edge.
  bool AtEnd() {
    const LogPosition end = view_.Log().End();
    return view_.IsFollowing() && Bar().value() == Bar().maximum() &&
           view_.RectOf({end.line, end.byte - 1}).bottom() == view_.viewport()->rect().bottom();
  }
  // What is on screen must be what painting everything anew gives.
  bool ScreenIsCurrent() {
    const auto grab = [this] {
      Settle();
      return view_.screen()->grabWindow(view_.winId()).toImage();
    };
    const QImage shown = grab();
    view_.viewport()->update();
    return !shown.isNull() && shown == grab();
  }

  ChatTextView view_;
  int next_ = 1;
};

TEST_F(ChatTextViewTest, FollowsTheEndOnlyFromTheEnd) {
  AddLines(100);
  EXPECT_TRUE(Bar().isVisible() && AtEnd() && ScreenIsCurrent());
  const LogPosition top = Top();
  Bar().triggerAction(QAbstractSlider::SliderSingleStepSub);
  EXPECT_TRUE(Top() < top && Top().line + 1 >= top.line);
  for (const char* keys : {"PgUp", "Up", "PgDown", "Ctrl+Home", "Ctrl+End", "Up", "Down"}) {
    for (const bool hidden : {false, true}) {
      Do(keys);
      EXPECT_TRUE(ScreenIsCurrent());
      const bool atEnd = AtEnd();
      const LogPosition before = Top();
      view_.setHidden(hidden);
      AddLines(300);
      view_.show();
      EXPECT_TRUE(ScreenIsCurrent());
      EXPECT_EQ(atEnd, QString(keys).contains("End")) << keys;
      EXPECT_EQ(AtEnd(), atEnd) << keys;
      EXPECT_EQ(Top() == before, !atEnd) << keys;
      EXPECT_EQ(view_.findChild<QPushButton*>("cmdNewLines")->isVisible(), !atEnd) << keys;
    }
  }
  Do("Ctrl+Home");
  EXPECT_EQ(Top(), (LogPosition{1, 0}));
  Bar().setValue(Bar().maximum() / 2);
  EXPECT_NEAR(static_cast<double>(Top().line), next_ / 2, 10);
  for (const int width : {600, 130, 330, 400}) {
    const LogPosition first = Top();
    view_.resize(width, 200);
    Settle();
    EXPECT_EQ(view_.RectOf(first).top(), 0) << width;
  }
}

TEST_F(ChatTextViewTest, WrapsALongLineAndFindsItsWayInIt) {
  std::string line;
  while (line.size() < 9000) line += "w\u00F6rds \U0001F600, with no blank:" + std::string(80, 'x');
  Add(line);
  Do("Ctrl+Home");
  for (size_t byte = 0; byte < line.size(); byte += byte % 2048 < 100 ? 1 : 29) {
    const LogPosition position{1, CharacterBegin(line, byte)};
    view_.ShowPosition(position);
    // Blanks at the end of a row hang over the edge.
    EXPECT_TRUE(IsInSight(position) || line[position.byte] == ' ') << byte;
    EXPECT_EQ(view_.PositionAt(LeftOf(position)), position) << byte;
  }
  Bar().setValue(Bar().maximum() * 2 / 3);
  EXPECT_NEAR(static_cast<double>(Top().byte), 2.0 * static_cast<double>(line.size()) / 3, 400);
  for (const char* blanks : {"a\nb\rc\u2028d\u2029e", "a b c d e"}) Add(blanks);
  EXPECT_EQ(LeftOf({2, 12}).x(), LeftOf({3, 8}).x());
}

TEST_F(ChatTextViewTest, ShowsTextInItsColourOnTheBackColour) {
  view_.SetBackColour(Colour{0, 0, 0});
  view_.Append({{{255, 0, 0}, "\r\nWWWWWW"}, {{0, 255, 0}, "MMMMMM"}});
  Settle();
  const QImage image = view_.viewport()->grab().toImage();
  const auto mean = [&](QRect rect) {
    return image.copy(rect).scaled(1, 1, {}, Qt::SmoothTransformation).pixelColor(0, 0);
  };
  const QColor red = mean(view_.RectOf({1, 2}));
  const QColor green = mean(view_.RectOf({1, 8}));
  EXPECT_TRUE(red.red() > 20 && red.green() < 10 && green.green() > 20 && green.red() < 10);
  EXPECT_EQ(mean({image.width() - 9, image.height() - 9, 9, 9}), QColor(0, 0, 0));
}

TEST_F(ChatTextViewTest, SelectsAndCopies) {
  for (const char* line : {"<nick> hello, w\u00F6rld again", "", "caf\u00E9 \U0001F600 third"})
    Add(line);
  Settle();
  const QSignalSpy selecting(&view_, &ChatTextView::Selecting);
  // However busy the machine, a third click belongs to the first two.
  const int interval = QApplication::doubleClickInterval();
  QApplication::setDoubleClickInterval(60'000);
  const std::pair<const char*, const char*> table[] = {
      {"click 1 7", ""},
      {"extend 1 12", "hello"},
      {"Shift+Left", "hell"},
      {"Shift+End", "hello, w\u00F6rld again"},
      {"Shift+Right", "hello, w\u00F6rld again\n"},
      {"Shift+Down", "hello, w\u00F6rld again\n\n"},
      {"Ctrl+Shift+Home", "<nick> "},
      {"double 1 17", "w\u00F6rld"},
      {"press 1 17", "<nick> hello, w\u00F6rld again"},
      {"move 3 2", "<nick> hello, w\u00F6rld again\n\ncaf\u00E9 \U0001F600 third"},
      {"click 3 0", ""},
      {"press 1 21", ""},
      {"move 3 10", "again\n\ncaf\u00E9 \U0001F600"},
      {"extend 3 5", "again\n\ncaf\u00E9"},
      {"Ctrl+A", "<nick> hello, w\u00F6rld again\n\ncaf\u00E9 \U0001F600 third"},
      {"Shift+Right", "<nick> hello, w\u00F6rld again\n\ncaf\u00E9 \U0001F600 third"},
      {"Shift+Left", "<nick> hello, w\u00F6rld again\n\ncaf\u00E9 \U0001F600 thir"},
  };
  for (const auto& [act, selected] : table) {
    Do(act);
    EXPECT_EQ(view_.SelectedText(), QString::fromUtf8(selected)) << act;
    EXPECT_TRUE(ScreenIsCurrent()) << act;
  }
  QApplication::setDoubleClickInterval(interval);
  // What comes in the meantime waits, but not for ever.
  EXPECT_TRUE(selecting.count() > 1 && !selecting.back()[0].toBool());
  Do("Ctrl+C");
  EXPECT_EQ(QApplication::clipboard()->text(), view_.SelectedText());
  Do("Ctrl+A");
  const QString all = view_.PlainText();
  AddLines(1);  // what arrives leaves the selection alone
  QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, view_.mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(view_.viewport(), &event);
  view_.findChild<QAction*>("mnuChatCopy")->trigger();
  view_.findChild<QMenu*>()->close();
  EXPECT_EQ("\n" + QApplication::clipboard()->text(), all);
}

TEST_F(ChatTextViewTest, ADragBeyondTheEdgeScrollsAndEndsWithTheFocus) {
  AddLines(200);
  const QSignalSpy selecting(&view_, &ChatTextView::Selecting);
  const LogPosition top = Top();
  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, {30, 100});
  QTest::mouseMove(view_.viewport(), {30, -5});
  EXPECT_TRUE(test::WaitUntil([&] { return Top().line + 5 < top.line; }, kPatience));
  EXPECT_EQ(view_.Selection().begin.line, Top().line);
  view_.clearFocus();
  EXPECT_TRUE(selecting.count() == 2 && !selecting[1][0].toBool());
  const LogPosition stopped = Top();
  QTest::mouseMove(view_.viewport(), {30, -50});
  EXPECT_EQ(Top(), stopped);
}

TEST_F(ChatTextViewTest, DropsTheOldestLinesAndKeepsItsPlaceInTheOthers) {
  view_.KeepAtMost(320);
  QAccessibleTextInterface* text = QAccessible::queryAccessibleInterface(&view_)->textInterface();
  AddLines(300);
  Do("PgUp");
  const LogPosition top = Top();
  view_.Select({{200, 3}, {top.line, 9}});
  const QString selected = view_.SelectedText();
  for (const size_t gone : {0U, 21U, 231U, 294U}) {  // the last with all that was there
    while (view_.Log().Dropped() < gone) AddLines(1);
    ASSERT_EQ(view_.Log().Dropped(), gone);
    EXPECT_LE(view_.Log().LineCount(), 320U);
    const LogPosition now =
        top.line < gone ? LogPosition{} : LogPosition{top.line - gone, top.byte};
    EXPECT_EQ(Top(), now);
    EXPECT_TRUE(ScreenIsCurrent() && !view_.IsFollowing());
    EXPECT_TRUE(selected.endsWith(view_.SelectedText()));
    EXPECT_EQ(view_.Selection().end, (LogPosition{now.line, gone < 294 ? size_t{9} : 0}));
    EXPECT_EQ(text->text(0, text->characterCount()), view_.PlainText());
    EXPECT_EQ(view_.TextLength(),  // a line break counts as two there
              static_cast<size_t>(view_.PlainText().size()) + view_.Log().LineCount() - 1);
  }
  Do("Ctrl+End");
  for (const bool hidden : {false, true}) {
    view_.setHidden(hidden);
    AddLines(700);
    view_.show();
    EXPECT_TRUE(AtEnd() && ScreenIsCurrent());
    EXPECT_TRUE(view_.PlainText().endsWith(QString("line %1 long enough for two").arg(next_ - 1)));
  }
}

TEST_F(ChatTextViewTest, FindsWithTheBar) {
  Add("Needle one");
  AddLines(300);
  Add("a nEEdle, a needle");
  AddLines(300);
  Do("Ctrl+F");
  auto* edit = view_.findChild<QLineEdit*>("chatFindText");
  ASSERT_TRUE(edit->isVisible());
  QTest::keyClicks(edit, "needl");
  const std::pair<const char*, LogPosition> table[] = {{"e", {1, 0}},  // wrapped around
                                                       {"Return", {302, 2}},
                                                       {"F3", {302, 12}},
                                                       {"Shift+F3", {302, 2}},
                                                       {"Shift+Return", {1, 0}}};
  for (const auto& [keys, hit] : table) {
    QTest::keySequence(edit, QKeySequence(keys));
    EXPECT_EQ(view_.Selection(), (LogRange{hit, {hit.line, hit.byte + 6}})) << keys;
    EXPECT_TRUE(IsInSight(hit)) << keys;
  }
  // A hit in the lowest row is in sight already.
  Add("the last needle");
  AddLines(1);
  for (const char* keys : {"Ctrl+End", "Up"}) Do(keys);
  const LogPosition top = Top();
  QTest::keySequence(edit, QKeySequence("Shift+F3"));
  EXPECT_TRUE(view_.SelectedText() == "needle" && Top() == top);
  QTest::keyClick(edit, Qt::Key_Escape);
  EXPECT_TRUE(!edit->isVisible() && view_.hasFocus());
}

// Texts that make layouts slow: the bound is far above what they need and far below a freeze.
TEST_F(ChatTextViewTest, HugeAndOddLinesDoNotFreeze) {
  // Of this process, so that no other program on the machine counts.
  const std::clock_t start = std::clock();
  std::string marks = "a";
  std::vector<ColouredRun> runs = {{kBlack, "\r\n"}};
  for (int i = 0; i < 20000; ++i) {
    marks += "\u0301";
    runs.push_back({i % 2 == 0 ? kBlack : kWhite, "y"});
  }
  Add(std::string(100'000, 'x'));
  Add(marks);
  Add("\u202E" + std::string(5000, 'r') + "\u05D0" + std::string(99'000, ' ') + "\u2029\n\r");
  view_.Append(runs);
  for (int value = 0; value <= Bar().maximum(); value += 5) {
    Bar().setValue(value);
    Settle();
  }
  EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 5);
}

TEST_F(ChatTextViewTest, TellsAssistiveTechnologyItsText) {
  Add("<a> h\u00F6 \U0001F600!");
  view_.Append({{{0, 0, 255}, "\r\nblue words"}});
  AddLines(1000);
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&view_);
  EXPECT_TRUE(accessible->state().readOnly);
  QAccessibleTextInterface* text = accessible->textInterface();
  const QString all = view_.PlainText();
  for (const int start : {1, 12, 4500, 20000})
    EXPECT_EQ(text->text(start, start + 20), all.mid(start, 20));
  int start = 0;
  int end = 0;
  const int words = static_cast<int>(all.indexOf("words"));
  using Text = QAccessibleTextInterface;
  using A = QAccessible;
  const std::tuple<decltype(&Text::textAtOffset), int, A::TextBoundaryType, const char*> table[] = {
      {&Text::textBeforeOffset, words, A::LineBoundary, "<a> h\u00F6 \U0001F600!\n"},
      {&Text::textAtOffset, words, A::LineBoundary, "blue words\n"},
      {&Text::textAfterOffset, words, A::LineBoundary, "line 1 long enough for two\n"},
      {&Text::textBeforeOffset, words + 4, A::WordBoundary, " "},
      {&Text::textAtOffset, words + 4, A::WordBoundary, "words"},
      {&Text::textBeforeOffset, 0, A::LineBoundary, ""},
      {&Text::textAfterOffset, text->characterCount(), A::LineBoundary, ""},
  };
  for (const auto& [query, at, boundary, piece] : table) {
    EXPECT_EQ((text->*query)(at, boundary, &start, &end), piece) << at << boundary;
    EXPECT_EQ(all.mid(start, end - start), piece) << at << boundary;
  }
  EXPECT_EQ(text->attributes(words, &start, &end), "color:rgb(0,0,255);");
  EXPECT_EQ(end - start, 10);
  text->setSelection(0, words, words + 5);
  EXPECT_EQ(view_.SelectedText(), "words");
  text->scrollToSubstring(words, words + 5);
  EXPECT_EQ(text->offsetAtPoint(text->characterRect(words).topLeft()), words);
}

}  // namespace
}  // namespace brindle
