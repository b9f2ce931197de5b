#include "mail/list_loader.h"

#include <cstdint>
#include <optional>

#include "base/text.h"
#include "mail/list_fault.h"
#include "mail/list_reader.h"

namespace brindle {
namespace {

constexpr const char* kListFileFilter =
    "All List Files|*.txt;*.htm;*.html|Text Files (*.txt) |*.txt|Webpage Files (*.htm)|*.htm|"
    "Webpage Files (*.html)|*.html";

}  // namespace

void ListLoader::mnuLoadListFile_Click() {
  const std::optional<std::string> path = dialogs_.OpenFile(kListFileFilter);
  if (path && !IsBlank(*path) && IsListFile(*path)) LoadBusy(*path);
}

void ListLoader::OpenFile(const std::string& path) {
  if (IsListFile(path)) return LoadBusy(path);
  if (recent_ != nullptr) recent_->Remove(path);
  Tell(FileNameOf(path) + " could not be found.");
}

void ListLoader::mnuLoadListWeb_Click() {
  KeepForUndo();
  list_.ClearBelowHeader();
  Tell("From Web clears the list and fetches nothing.");
}

void ListLoader::Undo() {
  if (before_.Size() == 0) return;
  list_.Replace(before_);
  view_.SetListServer(serverBefore_);
  Tell("");
  view_.ShowList(true);
}

void ListLoader::KeepForUndo() {
  if (list_.Size() == 0) return;
  before_.CopyFrom(list_);
  serverBefore_ = view_.ListServer();
}

void ListLoader::Tell(const std::string& text) { view_.ShowNote({text, before_.Size() > 0}); }

void ListLoader::LoadBusy(const std::string& path) {
  view_.EnableListButtons(false);
  Load(path);
  view_.ShowList(true);
  view_.EnableListButtons(true);
}

void ListLoader::Load(const std::string& path) {
  KeepForUndo();
  list_.Clear();
  const std::uint64_t mine = list_.Generation();
  view_.ShowList(false);
  stopped_ = false;
  const auto keepGoing = [this, mine] {
    events_.LetEventsRun(0);
    return !stopped_ && list_.Generation() == mine;
  };
  if (!keepGoing()) return;

  // Read aside, so that nobody meets a list that is half there.
  MailList loaded;
  const ReadResult result = ReadListFile(path, loaded, keepGoing);
  if (list_.Generation() != mine) return;
  list_.Replace(loaded);
  if (result.handle) view_.SetListServer(*result.handle);
  const std::string wrong = WrongWithList(path, result.status, list_.Size());
  if (wrong.empty()) before_.Clear();
  Tell(wrong);
  if (wrong.empty() && recent_ != nullptr) recent_->Add(path);
}

}  // namespace brindle
