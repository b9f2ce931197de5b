#pragma once
// Where a chat view stands: the segment at its top edge and how much of it is above the edge. Moves
// by laying out only what it passes, so the whole log's height is never needed. The scroll bar
// counts logical lines in fixed parts.

#include "ui/chat_layout.h"

namespace brindle {

struct Place {
  Segment segment;
  int y = 0;  // pixels of the segment above the edge
  friend auto operator<=>(const Place&, const Place&) = default;
};

class ChatScroll {
 public:
  ChatScroll(const ChatLog& log, ChatLayout& layout) : log_(log), layout_(layout) {}

  // `place` so many pixels further down or, where negative, up; stops at either end of the log.
  Place Moved(Place place, int pixels);

  // The place from which the last row stands at the bottom of a view of `height`; the beginning
  // when everything fits.
  Place End(int height);

  // Pixels from `from` down to `to`, at most `limit`. REQUIRES: from <= to.
  int Distance(Place from, Place to, int limit);

  // The place of the row that shows `position`.
  Place PlaceOf(LogPosition position);
  // The beginning of the row at the top edge.
  LogPosition PositionOf(Place place);

  // Between places and values of the scroll bar. Value() of a later place is never smaller.
  int Value(Place place);
  Place AtValue(int value);
  int UnitsPerLine() const;

 private:
  const ChatLog& log_;
  ChatLayout& layout_;
};

}  // namespace brindle
