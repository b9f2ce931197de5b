// The chat view's layout: every place in a line maps to the screen and back.

#include <QGuiApplication>
#include <algorithm>

#include "base/encoding.h"
#include "base/utf8.h"
#include "fuzz/input.h"
#include "ui/chat_layout.h"

using namespace brindle;
using fuzz::Require;

void fuzz::Try(Bytes input) {
  static int argc = 3;
  static const char* argv[] = {"layout_fuzz", "-platform", "offscreen", nullptr};
  static const QGuiApplication application(argc, const_cast<char**>(argv));

  ChatLog log;
  const int width = 120 + static_cast<int>(input.Byte()) * 4;
  while (!input.IsEmpty()) {
    std::string changed;
    const std::string text(ShowableText(input.Text(), changed));
    if (IsValidUtf8(text)) log.Append(ColouredRuns("\r\n" + text, Options()));
  }
  ChatLayout layout(log);
  layout.SetWidth(width);
  LogPosition position{};
  for (LogPosition next = layout.Next(position); position < next; next = layout.Next(position)) {
    Require(layout.Previous(next) == position, "back is another place", log.Line(next.line));
    position = next;
    const Segment segment = layout.SegmentAt(position);
    const QRect rect = layout.CharacterRect(position);
    Require(rect.height() <= layout.Height(segment) || layout.Height(segment) == 0, "a row");
    const LogPosition nearest = layout.PositionAt(segment, rect.topLeft());
    Require(nearest.line == position.line, "another line");
    // Blanks at the end of a row hang over its edge; and where marks are combined across
    // fonts, the toolkit takes a neighbour for the nearest.
    const std::string_view text = log.Line(position.line);
    const bool isPlain = !text.ends_with(' ') && layout.Height(segment) <= layout.RowHeight() &&
                         std::all_of(text.begin(), text.end(), [](char c) { return c >= ' '; });
    Require(!isPlain || layout.CharacterRect(nearest).left() == rect.left(), "another place", text);
  }
  Require(position == log.End(), "the end is not reached");
}
