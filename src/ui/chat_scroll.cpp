#include "ui/chat_scroll.h"

#include <algorithm>

namespace brindle {
namespace {

constexpr int kUnitsPerLine = 64;
// Above so many lines the parts would not fit the scroll bar's whole numbers.
constexpr size_t kMostLinesInParts = size_t{1} << 24;

}  // namespace

Place ChatScroll::Moved(Place place, int pixels) {
  place.y += pixels;
  while (place.y < 0) {
    if (!layout_.ToPrevious(place.segment)) {
      place.y = 0;
      break;
    }
    place.y += layout_.Height(place.segment);
  }
  for (int height = layout_.Height(place.segment); place.y >= height;
       height = layout_.Height(place.segment)) {
    if (!layout_.ToNext(place.segment)) {
      place.y = std::max(0, height - layout_.RowHeight());
      break;
    }
    place.y -= height;
  }
  return place;
}

Place ChatScroll::End(int height) {
  Place last{layout_.Last(), 0};
  last.y = layout_.Height(last.segment);
  // From the very end, which Moved() does not reach by itself.
  return Moved(last, -std::max(height, layout_.RowHeight()));
}

int ChatScroll::Distance(Place from, Place to, int limit) {
  int distance = -from.y;
  while (from.segment < to.segment && distance < limit) {
    distance += layout_.Height(from.segment);
    if (!layout_.ToNext(from.segment)) break;
  }
  return std::min(distance + (from.segment == to.segment ? to.y : 0), limit);
}

Place ChatScroll::PlaceOf(LogPosition position) {
  return {layout_.SegmentAt(position), layout_.RowOf(position) * layout_.RowHeight()};
}

LogPosition ChatScroll::PositionOf(Place place) {
  return layout_.RowBegin(place.segment, place.y / layout_.RowHeight());
}

int ChatScroll::UnitsPerLine() const {
  return log_.LineCount() < kMostLinesInParts ? kUnitsPerLine : 1;
}

int ChatScroll::Value(Place place) {
  const int units = UnitsPerLine();
  const auto segments = static_cast<double>(layout_.SegmentCount(place.segment.line));
  const int height = layout_.Height(place.segment);
  const double within = height == 0 ? 0 : static_cast<double>(place.y) / height;
  const double part = (static_cast<double>(place.segment.index) + within) / segments;
  return static_cast<int>(place.segment.line) * units + static_cast<int>(part * units);
}

Place ChatScroll::AtValue(int value) {
  const int units = UnitsPerLine();
  Place place;
  place.segment.line = std::min(static_cast<size_t>(value / units), log_.LineCount() - 1);
  const auto segments = static_cast<double>(layout_.SegmentCount(place.segment.line));
  const double part = static_cast<double>(value % units) / units * segments;
  place.segment.index = static_cast<size_t>(part);
  const double within = part - static_cast<double>(place.segment.index);
  // To a whole row, so that a jump does not leave half a row at the top.
  const int rows = layout_.Height(place.segment) / layout_.RowHeight();
  place.y = static_cast<int>(within * rows) * layout_.RowHeight();
  return Moved(place, 0);
}

}  // namespace brindle
