// mail_bench [ROWS [REPETITIONS [KIND]]]: times loading a list file, searching it, and each Select
// command against programs and loops that only have to look at the same bytes, and weighs the list.
// KIND is "cyrillic" or "windows-1252" for a list beyond ASCII, which is only loaded and searched.
// Prints figures (see measure.h); the ratio is what can be compared between machines.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "base/text.h"
#include "generate_list.h"
#include "mail/list_loader.h"
#include "mail/list_selection.h"
#include "mail/request_runs.h"
#include "mail/results.h"
#include "mail/title_search.h"
#include "measure.h"
#include "support/fake_dialogs.h"

namespace brindle {
namespace {

constexpr size_t kJudgedRows = 1'000'000;  // the goals are meant for a list of this size
constexpr size_t kSmallRows = 100'000;     // and one for such a list

struct Plan {
  size_t rows = kJudgedRows;
  size_t repetitions = 15;
  const ListWords* words = &kAscii;
};

// What is looked for in each kind of list.
struct Searches {
  const char* rare;
  const char* common;
  const char* none;
};

Searches SearchesIn(const ListWords& words) {
  if (&words == &kCyrillic) return {"цеппелин", "это", "щёлочь"};
  if (&words == &kWindows1252) return {"zéphyr", "été", "naïveté"};
  return {"zeppelin", "the", "quixotic"};
}

class NoView : public ListView {
 public:
  void EnableListButtons(bool) override {}
  void ShowList(bool) override {}
  void SetListServer(const std::string&) override {}
  std::string ListServer() const override { return ""; }
  void ShowNote(const ListNote&) override {}
};

class NoEvents : public EventPump {
 public:
  void LetEventsRun(int) override {}
};

class NoClock : public Clock {
 public:
  TickCount Ticks() const override { return 0; }
  std::tm LocalTime() const override { return {}; }
};

class NoFiles : public Files {
 public:
  std::optional<std::string> Read(const std::string&) const override { return std::nullopt; }
  bool Replace(const std::string&, std::string_view) override { return true; }
  bool Remove(const std::string&) override { return true; }
  bool FileExists(const std::string&) const override { return false; }
};

class NoResultsView : public ResultsView {
 public:
  void SetSearchText(const std::string&) override {}
  void SetSearchCaption(const std::string&) override {}
  void EnableSearch(bool) override {}
  void EnableSending(bool) override {}
  void SetCounts(size_t, size_t, TickCount) override {}
  void FocusSearch() override {}
};

// Keeps the compiler from leaving out a loop whose outcome nobody needs.
volatile std::uint64_t sink = 0;

class Bench {
 public:
  Bench(const Plan& plan, std::string path) : plan_(plan), path_(std::move(path)) {}

  // The first thing to do: this process has used little memory so far.
  void Weigh() {
    const std::optional<double> bytes = InOwnProcess([this] {
      const double before = ResidentBytes();
      Load();
      Search(SearchesIn(*plan_.words).common);
      return ResidentBytes() - before;
    });
    const auto size = static_cast<double>(std::filesystem::file_size(path_));
    Print({Named("memory after load and search"), bytes.value_or(0) / 1e6, "MB", size / 1e6,
           plan_.rows == kSmallRows ? std::optional(1.4) : Goal(1.25)});
  }

  // Whole processes, as somebody meets them who starts the program: their memory is fresh.
  void TimeFirstLoad() {
    std::vector<double> times;
    std::vector<double> baselines;
    const Action baseline = WordCount();
    for (size_t i = 0; baseline && i < plan_.repetitions; ++i) {
      baselines.push_back(MillisecondsOf(baseline));
      times.push_back(MillisecondsOf([this] {
        InOwnProcess([this] {
          Load();
          return 0.0;
        });
      }));
    }
    if (baseline) {
      Print({Named("load in a fresh process"), Median(times), "ms", Median(baselines),
             Goal(plan_.words == &kAscii ? 3 : 6)});
    }
  }

  void Time() {
    const bool ascii = plan_.words == &kAscii;
    const auto [rare, common, none] = SearchesIn(*plan_.words);
    Measure(
        "load", ascii ? 2.5 : 6, WordCount(), [this] { Clear(); }, [this] { Load(); });
    for (const auto& [name, text, goal] :
         {Wanted("rare", rare, 0.2), Wanted("common", common, 0.25), Wanted("none", none, 0.2),
          Wanted("one letter", "e", std::nullopt)}) {
      Measure(
          std::string("search, ") + name, ascii || !goal ? goal : 0.5, Grep(text),
          [this] { results_.Found().Clear(); }, [this, text = text] { Search(text); });
    }
    if (!ascii) return;
    for (const auto& [name, text] : {std::pair("common", "the"), std::pair("digits", "123")}) {
      Measure(
          std::string("filter, ") + name, 0.4, Grep(text), [] {},
          [this, text = text] { sink = RowFilter(list_, text).Next().size(); });
    }
    TimeSelection();
  }

 private:
  using Wanted = std::tuple<const char*, const char*, std::optional<double>>;

  void TimeSelection() {
    constexpr double kPasses = 3;
    const Action pass = [this] { PassOverRows(); };
    const Action uncheck = [this] { list_.UncheckAll(); };
    for (const auto& [name, text] :
         {std::pair("by string, rare", "zeppelin"), std::pair("by string, common", "the"),
          std::pair("by string, none", "quixotic")}) {
      Measure(name, kPasses, pass, uncheck, [this, text = text] {
        dialogs_.inputAnswers.push_back(text);
        selection_.mnuSelectString_Click(list_);
      });
    }
    Measure("select all", kPasses, pass, uncheck, [this] { selection_.mnuSelectAll_Click(list_); });
    Measure(
        "select none", kPasses, pass, [this] { list_.CheckAll(); },
        [this] { selection_.mnuSelectNone_Click(list_); });
    for (const size_t step : {list_.Size() - 1, size_t{10}}) {
      Measure(
          step == 10 ? "between, every tenth" : "between, first and last", kPasses, pass,
          [this, step] { CheckEvery(step); }, [this] { selection_.mnuSelectBetween_Click(list_); });
    }
    Measure(
        "fold every second row into requests", std::nullopt, {}, [this] { CheckEvery(2); },
        [this] { FoldRequests(); });
  }

  // Prints one figure. The baseline runs between the repetitions, so that both meet the same
  // machine.
  void Measure(const std::string& name, std::optional<double> goal, const Action& baseline,
               const Action& prepare, const Action& action) {
    std::vector<double> times;
    std::vector<double> baselines;
    for (size_t i = 0; i < plan_.repetitions; ++i) {
      if (baseline) baselines.push_back(MillisecondsOf(baseline));
      prepare();
      times.push_back(MillisecondsOf(action));
    }
    Print({Named(name), Median(times), "ms",
           baseline ? std::optional(Median(baselines)) : std::nullopt, goal ? Goal(*goal) : goal});
  }

  std::string Named(const std::string& name) const {
    return name + ", " + std::to_string(plan_.rows) + " rows" +
           (plan_.words == &kAscii ? "" : std::string(", ") + plan_.words->name);
  }

  std::optional<double> Goal(double ratio) const {
    return plan_.rows == kJudgedRows ? std::optional(ratio) : std::nullopt;
  }

  // A baseline that is a program; none when the program is not there.
  static Action Program(const std::vector<std::string>& arguments) {
    if (!RunProgram(arguments)) return {};
    return [arguments] { RunProgram(arguments); };
  }
  Action WordCount() const { return Program({"wc", "-l", path_}); }
  Action Grep(const char* text) const {
    if (plan_.words != &kWindows1252) return Program({"rg", "-c", "-i", "-F", text, path_});
    return Program({"rg", "-c", "-i", "-F", "-E", plan_.words->name, text, path_});
  }

  // Reads every byte of the rows' texts once.
  void PassOverRows() {
    const size_t last = list_.Size() - 1;
    const std::string_view title = list_.Title(last);
    std::uint64_t sum = 0;
    for (const char* at = list_.Number(0).data(); at + sizeof sum <= title.data() + title.size();
         at += sizeof sum) {
      std::uint64_t word = 0;
      std::memcpy(&word, at, sizeof word);
      sum += word;
    }
    sink = sum;
  }

  void Clear() { list_.Clear(); }

  void Load() {
    dialogs_.fileAnswers.push_back(path_);
    loader_.mnuLoadListFile_Click();
    if (list_.Size() != plan_.rows) std::exit(EXIT_FAILURE);
  }

  void Search(const char* text) {
    if (!searching_) results_.Form_Load(resultsView_);
    searching_ = true;
    results_.cmdSearch_Click(text);
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
      if (const auto what = runs.Step(list_, *row, AfterRequest::kDeselect))
        length += what->what.size();
    }
    if (length == 0) std::exit(EXIT_FAILURE);
  }

  Plan plan_;
  std::string path_;
  FakeDialogs dialogs_;
  NoEvents events_;
  NoClock clock_;
  NoFiles files_;
  const std::string noPath_;
  Options options_;
  SettingsFile settings_{files_, noPath_};
  Finds finds_{files_, noPath_, options_, clock_};
  NoView view_;
  NoResultsView resultsView_;
  MailList list_;
  ListLoader loader_{dialogs_, events_, view_, list_};
  ListSelection selection_{dialogs_};
  Results results_{list_, finds_, settings_, dialogs_, clock_, events_};
  bool searching_ = false;
};

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
  brindle::Plan plan;
  const auto argument = [&](int i, size_t otherwise) {
    if (argc <= i) return otherwise;
    return static_cast<size_t>(brindle::WholeNumber(argv[i], 1, 100'000'000).value_or(1));
  };
  plan.rows = std::max(argument(1, plan.rows), size_t{10});
  plan.repetitions = argument(2, plan.repetitions);

  for (const auto* words : {&brindle::kCyrillic, &brindle::kWindows1252}) {
    if (argc > 3 && std::string_view(argv[3]) == words->name) plan.words = words;
  }

  const auto path = std::filesystem::temp_directory_path() /
                    ("brindle_bench_" + std::to_string(std::random_device()()) + ".txt");
  if (!brindle::GenerateList(path.string(), plan.rows, *plan.words)) return EXIT_FAILURE;
  brindle::Bench bench(plan, path.string());
  bench.Weigh();
  bench.TimeFirstLoad();
  bench.Time();
  std::filesystem::remove(path);
  return EXIT_SUCCESS;
}
