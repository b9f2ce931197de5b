// Any line on its way to a view: as it may be shown, in colours, and in the log.

#include "base/encoding.h"
#include "base/text.h"
#include "base/utf8.h"
#include "fuzz/input.h"
#include "irc/chat_colours.h"
#include "irc/chat_log.h"
#include "irc/chat_log_find.h"
#include "irc/link_finder.h"

using namespace brindle;
using fuzz::Require;

namespace {

void CheckLinks(std::string_view line) {
  size_t last = 0;
  for (const LinkRange& link : FindLinks(line)) {
    Require(last <= link.begin && link.begin < link.end && link.end <= line.size(), "a link", line);
    const std::string address = LowerCase(line.substr(link.begin, link.end - link.begin));
    Require(address.starts_with("http://") || address.starts_with("https://"), "no link", address);
    Require(address.find_first_of(" \"<>") == std::string::npos, "more than a link", address);
    last = link.end;
  }
}

}  // namespace

void fuzz::Try(Bytes input) {
  Options options;
  options.keepDigitsApart = input.Byte() % 2 == 1;
  ChatLog log;
  std::string whole;
  while (!input.IsEmpty()) {
    const std::string text = input.Text();
    std::string changed;
    const std::string_view showable = ShowableText(text, changed);
    if (!IsValidUtf8(showable)) continue;  // the decoder of what is received lets none through
    const std::string shown = "\r\n" + std::string(WithoutFormatting(showable));
    const std::vector<ColouredRun> runs = ColouredRuns(shown, options);
    std::string plain;
    for (const ColouredRun& run : runs) plain += run.text;
    Require(plain.find('\003') == std::string::npos, "a mark is left", plain);
    Require(plain.size() <= shown.size(), "text was made up", plain);
    log.Append(runs);
    whole += plain;
  }
  const std::string text = log.PlainText(log.Everything(), "\r\n");
  Require(text == whole, "the log holds something else", text);
  for (size_t line = 0; line < log.LineCount(); ++line) {
    size_t covered = 0;
    for (const LogRun& run : log.Runs(line)) covered += run.length;
    Require(covered == log.Line(line).size(), "runs do not cover the line", log.Line(line));
    CheckLinks(log.Line(line));
    const LogRange range{{line, 0}, {line, log.Line(line).size()}};
    ChatLog again;
    again.Append(log.Coloured(range));
    Require(again.Line(again.LineCount() - 1) == log.Line(line), "a copy differs", log.Line(line));
  }
  const std::string wanted = whole.substr(whole.size() / 2, 3);
  if (!IsValidUtf8(wanted)) return;
  if (const auto hit = FindInLog(log, wanted, {}, FindDirection::kForward)) {
    Require(LowerCase(log.PlainText(*hit)) == LowerCase(wanted), "found something else", wanted);
  }
  const size_t gone = whole.size() % log.LineCount();
  const LogRange rest{{gone, 0}, log.End()};
  const std::string kept = log.PlainText(rest, "\r\n");
  log.DropOldest(gone);
  Require(log.PlainText(log.Everything(), "\r\n") == kept, "others were dropped", kept);
  Require(log.TextLength() == CharacterCount(kept), "another length", kept);
}
