// The icons as we draw them, beside the toolkit's own reader of SVG.

#include "ui/drawing.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace brindle {
namespace {

// Of 255, over all of a picture: the toolkit's arcs are a little flat. An arc on the wrong side is
// at least three times that.
constexpr double kSlight = 2;

double Difference(const QImage& one, const QImage& other) {
  double all = 0;
  for (qsizetype i = 0; i < one.sizeInBytes(); ++i)
    all += std::abs(one.constBits()[i] - other.constBits()[i]);
  return 4 * all / static_cast<double>(one.sizeInBytes());
}

TEST(Drawing, IsWhatTheToolkitDraws) {
  int seen = 0;
  for (const char* folder : {"/src/ui/icons", "/data/icons"}) {
    QDirIterator files(BRINDLE_SOURCE + QString(folder), {"*.svg"});
    while (files.hasNext()) {
      QFile file(files.next());
      ASSERT_TRUE(file.open(QIODevice::ReadOnly));
      const QByteArray svg = file.readAll();
      const Drawing drawing(svg);
      QSvgRenderer reference(svg);
      EXPECT_TRUE(drawing.IsWhole());
      for (const int size : {32, 128}) {
        QImage ours(size, size, QImage::Format_ARGB32_Premultiplied);
        ours.fill(Qt::transparent);
        QImage theirs = ours;
        for (QImage* image : {&ours, &theirs}) {
          QPainter painter(image);
          painter.setRenderHint(QPainter::Antialiasing);
          image == &ours ? drawing.Paint(painter, ours.rect())
                         : reference.render(&painter, theirs.rect());
        }
        EXPECT_LE(Difference(ours, theirs), kSlight) << qPrintable(file.fileName()) << size;
      }
      ++seen;
    }
  }
  EXPECT_GT(seen, 20);
}

}  // namespace
}  // namespace brindle
