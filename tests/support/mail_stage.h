#pragma once
// What stands around the mail rooms in a test: boxes, windows and time. Each writes every call as a
// few words into one journal, in order.

#include <ctime>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "base/dialogs.h"
#include "base/text.h"
#include "mail/list_view.h"
#include "mail/results.h"

namespace brindle {

// Rows as a text, "12=Some title|13=Another".
inline std::string RowsOf(const MailList& list) {
  std::string rows;
  for (size_t row = 0; row < list.Size(); ++row) {
    rows += (row > 0 ? "|" : "") + std::string(list.Number(row)) + "=";
    rows += list.Title(row);
  }
  return rows;
}

// One character a row, "x" for a checked one.
inline std::string ChecksOf(const MailList& list) {
  std::string checks;
  for (size_t row = 0; row < list.Size(); ++row) checks += list.IsChecked(row) ? 'x' : '.';
  return checks;
}

// Replaces the rows by those of such texts. Rows beyond the end of `checks` are not checked.
inline void Fill(MailList& list, std::string_view rows, std::string_view checks = "") {
  MailList filled;
  for (const std::string_view row : Split(rows, "|")) {
    const size_t end = row.find('=');
    if (end != std::string_view::npos) filled.Append(row.substr(0, end), row.substr(end + 1));
  }
  for (size_t row = 0; row < checks.size(); ++row) filled.SetChecked(row, checks[row] == 'x');
  list.Replace(filled);
}

class MailStage : public Dialogs,
                  public Clock,
                  public EventPump,
                  public ResultsView,
                  public ListView {
 public:
  void Note(const std::string& words) { journal_ += (journal_.empty() ? "" : "; ") + words; }
  // What was written since the last time, joined by "; "; "/" stands for a line break.
  std::string Taken() { return std::exchange(journal_, ""); }

  void Notice(Icon icon, const std::string& text) override { Box(icon, text); }
  bool Question(Icon icon, const std::string& text) override {
    Box(icon, text);
    return answer.has_value();
  }
  std::optional<std::string> Input(const std::string& prompt) override {
    Note("? " + prompt);
    return answer;
  }
  std::optional<std::string> OpenFile(const std::string& filter) override { return Input(filter); }
  std::optional<Colour> PickColour(Colour) override { return std::nullopt; }

  TickCount Ticks() const override { return ticks_ += 5; }
  std::tm LocalTime() const override {
    std::tm time{};
    time.tm_year = 126;
    time.tm_mon = 10;
    time.tm_mday = 21;
    return time;
  }
  void LetEventsRun(int) override {
    Note("events");
    if (onEvents) std::exchange(onEvents, nullptr)();
  }

  void SetSearchText(const std::string& text) override { Note("'" + text + "'"); }
  void SetSearchCaption(const std::string& text) override { Note(text); }
  void EnableSearch(bool enabled) override { Note(enabled ? "search" : "no search"); }
  void EnableSending(bool enabled) override { Note(enabled ? "send" : "no send"); }
  void SetCounts(size_t searched, size_t matches, TickCount milliseconds) override {
    Note(std::to_string(matches) + " of " + std::to_string(searched) + " in " +
         std::to_string(milliseconds));
  }
  void FocusSearch() override { Note("focus"); }

  void EnableListButtons(bool enabled) override { Note(enabled ? "buttons" : "no buttons"); }
  void ShowList(bool shown) override { Note(shown ? "list" : "wait"); }
  void SetListServer(const std::string& handle) override { Note("to " + (server = handle)); }
  std::string ListServer() const override { return server; }
  void ShowNote(const ListNote& note) override {
    if (!note.text.empty()) Note("'" + note.text + "'" + (note.canUndo ? " undo" : ""));
  }

  std::optional<std::string> answer;  // to every box; nothing cancels
  std::function<void()> onEvents;     // once
  std::string server;                 // that requests go to

 private:
  void Box(Icon icon, const std::string& text) {
    Note(std::string(1, "i!x"[static_cast<int>(icon)]) + " " +
         JoinFrom(Split(text, kCrLf), 0, "/"));
  }

  std::string journal_;
  mutable TickCount ticks_ = 0;
};

}  // namespace brindle
