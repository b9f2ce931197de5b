// What scrolling the mail list costs, page by page over its whole length, and filtering it.
// Usage: list_view_bench [ROWS]; run with QT_QPA_PLATFORM=offscreen.

#include <QApplication>
#include <QScrollBar>
#include <algorithm>
#include <cstdlib>

#include "mail/mail_list.h"
#include "measure.h"
#include "ui/mail_table.h"

namespace {

constexpr int kMostPages = 3000;  // of a longer list, so many evenly spread

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const size_t rows = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1'000'000;
  brindle::MailList list;
  for (size_t i = 1; i <= rows; ++i) {
    const std::string number = std::to_string(i);
    list.Append(number, "A mail of middling length, one of many in the list, number " + number);
  }
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
  // Everything that one more typed character costs, up to the drawn rows.
  std::vector<double> filters;
  for (const char* text : {"m", "middling", "number 77", "77", "none such", ""}) {
    const double before = brindle::ProcessorMilliseconds();
    table.Filter(text);
    QApplication::processEvents();
    filters.push_back(brindle::ProcessorMilliseconds() - before);
  }
  const double slowest = *std::max_element(filters.begin(), filters.end());
  brindle::Print({name + "filter, median", brindle::Median(filters), "ms CPU", {}, {}});
  brindle::Print({name + "filter, slowest (at most 100)", slowest, "ms CPU", {}, {}});
  return 0;
}
