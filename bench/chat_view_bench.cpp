// chat_view_bench [ROWS]: fills a chat view with lines of 75 characters in two colours and prints
// what appending, memory, scrolling and resizing cost, beside a QPlainTextEdit with fewer lines as
// baseline. Run with QT_QPA_PLATFORM=offscreen. Judges nothing.

#include <QApplication>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "irc/chat_log_find.h"
#include "measure.h"
#include "ui/chat_text_view.h"
#include "ui/qt_text.h"
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace brindle {
namespace {

constexpr size_t kLineLength = 75;
constexpr size_t kBaselineRows = 20'000;
constexpr size_t kMeasured = 400;  // steps of each kind of scrolling
constexpr QSize kSize{800, 600};
constexpr Colour kBlue{0, 0, 255};

double HeapBytes() {
#ifdef __GLIBC__
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
#else
  return ResidentBytes();
#endif
}

double Percentile(std::vector<double> values, double part) {
  std::sort(values.begin(), values.end());
  return values[static_cast<size_t>(part * static_cast<double>(values.size() - 1))];
}

std::vector<ColouredRun> Line(size_t number) {
  std::string nick = "\r\n<nick" + std::to_string(number % 1000) + "> ";
  std::string said = std::to_string(number) + " the quick brown fox jumps over the lazy dog ";
  said.resize(kLineLength + 2 - nick.size(), '.');
  return {{kBlue, std::move(nick)}, {kBlack, std::move(said)}};
}

// The usual way with the toolkit's own widget.
class PlainView : public QPlainTextEdit {
 public:
  PlainView() {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  }

  void Append(const std::vector<ColouredRun>& runs) {
    QScrollBar* bar = verticalScrollBar();
    const bool following = bar->value() == bar->maximum();
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.beginEditBlock();
    for (const ColouredRun& run : runs) {
      QTextCharFormat format;
      format.setForeground(ToQColor(run.colour));
      end.insertText(ToQString(run.text).replace("\r\n", "\n"), format);
    }
    end.endEditBlock();
    if (following) bar->setValue(bar->maximum());
  }
};

// CPU time of an action with everything it leaves to the event loop, painting included.
double CostOf(const std::function<void()>& action) {
  const double start = ProcessorMilliseconds();
  action();
  QApplication::processEvents();
  return ProcessorMilliseconds() - start;
}

std::string currentView;  // the heading of the figures that follow

void Report(const char* what, const std::vector<double>& values, const char* unit) {
  std::printf("  %-34s p50 %9.3f   p99 %9.3f   max %9.3f %s\n", what, Percentile(values, 0.5),
              Percentile(values, 0.99), Percentile(values, 1), unit);
  Print({currentView + ": " + what + ", p99", Percentile(values, 0.99), unit, {}, {}});
}

template <typename View>
void Fill(View& view, size_t rows) {
  const double before = HeapBytes();
  std::vector<double> microseconds;
  microseconds.reserve(rows);
  const double reserved = HeapBytes() - before;
  const double cpuBefore = ProcessorMilliseconds();
  for (size_t i = 0; i < rows; ++i) {
    const std::vector<ColouredRun> line = Line(i);
    const auto start = std::chrono::steady_clock::now();
    view.Append(line);
    const auto end = std::chrono::steady_clock::now();
    microseconds.push_back(std::chrono::duration<double, std::micro>(end - start).count());
    if (i % 64 == 0) QApplication::processEvents();
  }
  QApplication::processEvents();
  const double cpu = (ProcessorMilliseconds() - cpuBefore) * 1e3 / static_cast<double>(rows);
  Report("append", microseconds, "us");
  Print({currentView + ": a line, shown every 64 lines", cpu, "us CPU", {}, {}});
  const double bytes = HeapBytes() - before - reserved;
  const double text = static_cast<double>(rows * kLineLength);
  std::printf("  %-34s %13.2f times the text (%.1f MB)\n", "memory", bytes / text, bytes / 1e6);
  // Of a short log, the memory is that of a window.
  const bool hasGoal = std::is_same_v<View, ChatTextView> && rows >= 1'000'000;
  Print({currentView + ": memory, beside its text", bytes / 1e6, "MB", text / 1e6,
         hasGoal ? std::optional(3.0) : std::nullopt});
}

template <typename View>
void Move(View& view) {
  QScrollBar* bar = view.verticalScrollBar();
  std::vector<double> pages;
  for (size_t i = 0; i < kMeasured; ++i) {
    const auto action =
        i < kMeasured / 2 ? QAbstractSlider::SliderPageStepSub : QAbstractSlider::SliderPageStepAdd;
    pages.push_back(CostOf([&] { bar->triggerAction(action); }));
  }
  Report("page up and down", pages, "ms CPU");

  std::vector<double> jumps;
  for (size_t i = 0; i < kMeasured; ++i) {
    const double part = static_cast<double>((i * 7919) % 1000) / 1000;
    const int value = static_cast<int>(part * bar->maximum());
    jumps.push_back(CostOf([&] { bar->setValue(value); }));
  }
  Report("jump with the scroll bar", jumps, "ms CPU");

  std::vector<double> resizes;
  for (int i = 0; i < 40; ++i) {
    if (i == 20) bar->setValue(bar->maximum());
    resizes.push_back(CostOf([&] { view.resize(kSize.width() - 13 * (i % 20), kSize.height()); }));
  }
  Report("resize", resizes, "ms CPU");
}

std::vector<double> AppendsInSight(ChatTextView& view) {
  std::vector<double> costs;
  for (size_t i = 0; i < kMeasured; ++i) {
    const std::vector<ColouredRun> line = Line(i);
    costs.push_back(CostOf([&] { view.Append(line); }));
  }
  return costs;
}

void MeasureFind(const ChatLog& log) {
  const double start = ProcessorMilliseconds();
  const bool found = FindInLog(log, "no such text", {}, FindDirection::kForward).has_value();
  std::printf("  %-34s %13.3f ms CPU%s\n", "find in vain", ProcessorMilliseconds() - start,
              found ? " (found!)" : "");
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
  using namespace brindle;
  const QApplication application(argc, argv);
  const size_t rows = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1'000'000;
  if (rows == 0) {
    std::fprintf(stderr, "Usage: chat_view_bench [ROWS]\n");
    return 2;
  }
  currentView = "QPlainTextEdit, " + std::to_string(kBaselineRows) + " lines";
  std::printf("%s\n", currentView.c_str());
  {
    PlainView plain;
    plain.resize(kSize);
    plain.show();
    QApplication::processEvents();
    Fill(plain, kBaselineRows);
    Move(plain);
  }
  currentView = "chat view, " + std::to_string(rows) + " lines";
  std::printf("%s\n", currentView.c_str());
  ChatTextView view;
  view.resize(kSize);
  view.show();
  QApplication::processEvents();
  Fill(view, rows);
  Move(view);
  Report("append one line in sight, painted", AppendsInSight(view), "ms CPU");
  MeasureFind(view.Log());
  return 0;
}
