#include "mail/list_loader.h"

#include <cstdint>
#include <optional>

#include "base/text.h"
#include "mail/list_reader.h"

namespace brindle {
namespace {

constexpr const char* kListFileFilter =
    "All List Files|*.txt;*.htm;*.html|Text Files (*.txt) |*.txt|Webpage Files (*.htm)|*.htm|"
    "Webpage Files (*.html)|*.html";

}  // namespace

void ListLoader::mnuLoadListFile_Click() {
  const std::optional<std::string> path = dialogs_.OpenFile(kListFileFilter);
  if (!path || IsBlank(*path) || !IsListFile(*path)) return;

  view_.EnableListButtons(false);
  Load(*path);
  view_.ShowList(true);
  view_.EnableListButtons(true);
}

void ListLoader::Load(const std::string& path) {
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
}

}  // namespace brindle
