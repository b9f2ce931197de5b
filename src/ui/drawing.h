#pragma once
// Reads and paints the drawings of our icons: the small part of SVG that they are made of, so that
// no library is needed for a few dozen lines and arcs.

#include <QPainterPath>
#include <QPen>
#include <vector>

namespace brindle {

// Paths, circles and rectangles with a fill and a stroke of one colour each. Arcs are parts of
// circles.
class Drawing {
 public:
  // `svg` is a whole SVG document. One that holds anything else is no drawing.
  explicit Drawing(const QByteArray& svg);

  // False when the document could not be read; then nothing is painted.
  bool IsWhole() const { return whole_; }
  // Fills `bounds`, which has the drawing's proportions.
  void Paint(QPainter& painter, const QRectF& bounds) const;

 private:
  struct Shape {
    QPainterPath path;
    QBrush fill;
    QPen stroke;
  };

  QRectF box_;  // what is to be seen, in the drawing's own measure
  std::vector<Shape> shapes_;
  bool whole_ = false;
};

}  // namespace brindle
