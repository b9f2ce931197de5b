// mail_bench [ROWS [REPETITIONS]]: times loading a list file and each Select command against
// `wc -l` on the same file, a whole process of a program that only looks for line ends. Prints
// medians; the ratio is what can be compared between machines.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "base/text.h"
#include "generate_list.h"
#include "mail/list_loader.h"
#include "mail/list_selection.h"
#include "mail/request_runs.h"
#include "support/fake_dialogs.h"

namespace brindle {
namespace {

struct Plan {
  size_t rows = 1'000'000;
  size_t repetitions = 15;
};

class NoView : public ListView {
 public:
  void SetTitleHeader(const std::string&) override {}
  void EnableListButtons(bool) override {}
  void ShowList(bool) override {}
  void SetListServer(const std::string&) override {}
};

class NoEvents : public EventPump {
 public:
  void LetEventsRun(int) override {}
};

using Action = std::function<void()>;

double MillisecondsOf(const Action& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
      .count();
}

double Median(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

class Bench {
 public:
  Bench(const Plan& plan, std::string path) : plan_(plan), path_(std::move(path)) {}

  // Prints one line. The baseline runs between the repetitions, so that both meet the same machine.
  void Measure(const char* name, const Action& prepare, const Action& action) {
    std::vector<double> times;
    std::vector<double> baseline;
    for (size_t i = 0; i < plan_.repetitions; ++i) {
      baseline.push_back(MillisecondsOf([this] { CountLines(); }));
      prepare();
      times.push_back(MillisecondsOf(action));
    }
    const double ours = Median(times);
    const double theirs = Median(baseline);
    std::printf("%-28s %10.3f %12.3f %8.3f\n", name, ours, theirs, ours / theirs);
  }

  void Run() {
    std::printf("%-28s %10s %12s %8s\n", "", "median ms", "wc -l ms", "ratio");
    Measure(
        "load", [this] { Fresh(); }, [this] { loader_.mnuLoadListFile_Click(); });
    const auto nothingChecked = [this] { list_.UncheckAll(); };
    Measure("select all", nothingChecked, [this] { selection_.mnuSelectAll_Click(target_); });
    Measure(
        "select none", [this] { list_.CheckAll(); },
        [this] { selection_.mnuSelectNone_Click(target_); });
    Measure(
        "between, first and last", [this] { CheckEvery(list_.Size() - 1); },
        [this] { selection_.mnuSelectBetween_Click(target_); });
    Measure(
        "between, every tenth", [this] { CheckEvery(10); },
        [this] { selection_.mnuSelectBetween_Click(target_); });
    for (const auto& [name, text] :
         {std::pair("by string, rare", "zeppelin"), std::pair("by string, common", "the"),
          std::pair("by string, one letter", "e"), std::pair("by string, none", "quixotic")}) {
      Measure(name, nothingChecked, [this, text = text] {
        dialogs_.inputAnswers.push_back(text);
        selection_.mnuSelectString_Click(target_);
      });
    }
    Measure(
        "fold one row into requests", [this] { CheckEvery(list_.Size() - 2); },
        [this] { FoldRequests(); });
    Measure(
        "fold every second row", [this] { CheckEvery(2); }, [this] { FoldRequests(); });
  }

 private:
  void Fresh() {
    list_.Clear();
    dialogs_.fileAnswers.push_back(path_);
  }

  void CountLines() const {
    if (std::system(("exec wc -l '" + path_ + "' > /dev/null").c_str()) != 0)
      std::exit(EXIT_FAILURE);
  }

  // An even number of rows, as Between wants them.
  void CheckEvery(size_t step) {
    list_.UncheckAll();
    step = std::max(step, size_t{1});
    for (size_t row = 0; row < list_.Size(); row += step) list_.SetChecked(row, true);
    if (list_.CheckedCount() % 2 != 0) list_.SetChecked(0, false);
  }

  void FoldRequests() {
    RequestRuns runs;
    size_t length = 0;
    for (auto row = list_.NextChecked(0); row; row = list_.NextChecked(*row + 1)) {
      if (const auto what = runs.Step(list_, *row, AfterRequest::kDeselect)) length += what->size();
    }
    if (length == 0) std::exit(EXIT_FAILURE);
  }

  Plan plan_;
  std::string path_;
  FakeDialogs dialogs_;
  NoEvents events_;
  NoView view_;
  MailList list_;
  ListLoader loader_{dialogs_, events_, view_, list_};
  ListSelection selection_{dialogs_};
  SelectTarget target_{ListKind::kMain, list_, view_};
};

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
  brindle::Plan plan;
  const auto argument = [&](int i, size_t otherwise) {
    if (argc <= i) return otherwise;
    return static_cast<size_t>(brindle::WholeNumber(argv[i], 10, 100'000'000).value_or(10));
  };
  plan.rows = argument(1, plan.rows);
  plan.repetitions = argument(2, plan.repetitions);

  const auto path = std::filesystem::temp_directory_path() /
                    ("brindle_bench_" + std::to_string(std::random_device()()) + ".txt");
  if (!brindle::GenerateList(path.string(), plan.rows)) return EXIT_FAILURE;
  std::printf("%zu rows, %.1f MB, %zu repetitions\n", plan.rows,
              static_cast<double>(std::filesystem::file_size(path)) / 1e6, plan.repetitions);
  brindle::Bench(plan, path.string()).Run();
  std::filesystem::remove(path);
  return EXIT_SUCCESS;
}
