// What scrolling the mail list costs, page by page over its whole length, and filtering it.
// Usage: list_view_bench [ROWS]; run with QT_QPA_PLATFORM=offscreen.

#include <QApplication>
#include <QScrollBar>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <utility>

#include "generate_list.h"
#include "mail/list_reader.h"
#include "measure.h"
#include "ui/mail_list_model.h"
#include "ui/mail_table.h"

namespace {

constexpr int kMostPages = 3000;  // of a longer list, so many evenly spread

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const size_t rows = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1'000'000;
  const auto path = std::filesystem::temp_directory_path() /
                    ("brindle_bench_" + std::to_string(std::random_device()()) + ".txt");
  brindle::MailList list;
  if (!brindle::GenerateList(path.string(), rows)) return EXIT_FAILURE;
  brindle::ReadListFile(path.string(), list, {});
  std::filesystem::remove(path);
  brindle::MailTable table;
  table.Attach(list);
  table.resize(780, 560);
  table.show();
  QApplication::processEvents();
  QScrollBar& bar = *table.verticalScrollBar();
  const int step = std::max({bar.pageStep(), bar.maximum() / kMostPages, 1});
  std::vector<double> pages;
  for (int top = 0; top <= bar.maximum(); top += step) {
    const double before = brindle::ProcessorMilliseconds();
    bar.setValue(top);
    QApplication::processEvents();
    pages.push_back(brindle::ProcessorMilliseconds() - before);
  }
  std::sort(pages.begin(), pages.end());
  const std::string name = "list view, " + std::to_string(rows) + " rows: ";
  brindle::Print({name + "a page, median", brindle::Median(pages), "ms CPU", {}, {}});
  brindle::Print({name + "a page, slowest (at most 8)", pages.back(), "ms CPU", {}, {}});
  // Everything that one more typed character costs: the longest that the window does not answer,
  // drawing the first rows included, and until all rows are there.
  std::vector<double> waits;
  std::vector<double> wholes;
  for (const QString typed : {"the best of", "Summer holiday", "zeppelin", "night 7", "1234", "end",
                              "quixotic", "letter", "archive", "o"}) {
    table.Filter("");
    QApplication::processEvents();
    for (int length = 1; length <= typed.size(); ++length) {
      const double before = brindle::ProcessorMilliseconds();
      double turn = before;
      double longest = 0;
      table.Filter(typed.left(length));
      do {
        QApplication::processEvents();
        const double now = brindle::ProcessorMilliseconds();
        longest = std::max(longest, now - std::exchange(turn, now));
      } while (table.Model().IsFiltering());
      waits.push_back(longest);
      wholes.push_back(turn - before);
    }
  }
  std::sort(waits.begin(), waits.end());
  std::sort(wholes.begin(), wholes.end());
  constexpr double kFrame = 16;
  const auto p99 = [](const std::vector<double>& sorted) {
    return sorted[sorted.size() * 99 / 100];
  };
  brindle::Print(
      {name + "a typed letter, all rows, median", brindle::Median(wholes), "ms CPU", {}, {}});
  brindle::Print({name + "a typed letter, all rows, p99", p99(wholes), "ms CPU", {}, {}});
  brindle::Print({name + "a typed letter, p99 of a frame", p99(waits), "ms CPU", kFrame, 1});
  return 0;
}
