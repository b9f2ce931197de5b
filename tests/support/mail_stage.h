#pragma once
// What stands around the mail rooms in a test. In its journal "/" stands for a line break.

#include "mail/list_view.h"
#include "mail/results.h"
#include "support/stage.h"

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

struct MailStage : Stage, ResultsView, ListView {
  MailStage() : Stage("; ") {}
  TickCount Ticks() const override { return passed += 5; }
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

  std::function<void()> onEvents;  // once
  std::string server;              // that requests go to
  mutable TickCount passed = 0;
};

}  // namespace brindle
