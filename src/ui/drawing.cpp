#include "ui/drawing.h"

#include <QPainter>
#include <QXmlStreamReader>

#include "ui/drawing_path.h"

namespace brindle {
namespace {

double Number(const QXmlStreamAttributes& attributes, const char* name) {
  return attributes.value(QLatin1String(name)).toDouble();
}

std::optional<QPainterPath> Outline(QStringView element, const QXmlStreamAttributes& attributes) {
  QPainterPath path;
  if (element == u"circle") {
    const double radius = Number(attributes, "r");
    path.addEllipse({Number(attributes, "cx"), Number(attributes, "cy")}, radius, radius);
  } else if (element == u"rect") {
    const QRectF rect(Number(attributes, "x"), Number(attributes, "y"), Number(attributes, "width"),
                      Number(attributes, "height"));
    path.addRoundedRect(rect, Number(attributes, "rx"), Number(attributes, "rx"));
  } else if (element == u"path") {
    return ReadDrawingPath(attributes.value("d"));
  } else {
    return std::nullopt;
  }
  return path;
}

QPen Stroke(const QXmlStreamAttributes& attributes) {
  const QStringView colour = attributes.value("stroke");
  if (colour.isEmpty() || colour == u"none") return Qt::NoPen;
  const bool isRound = attributes.value("stroke-linecap") == u"round";
  return QPen(QColor(colour.toString()), Number(attributes, "stroke-width"), Qt::SolidLine,
              isRound ? Qt::RoundCap : Qt::FlatCap, isRound ? Qt::RoundJoin : Qt::MiterJoin);
}

QBrush Fill(const QXmlStreamAttributes& attributes) {
  const QStringView colour = attributes.value("fill");
  return colour == u"none" ? QBrush(Qt::NoBrush) : QBrush(QColor(colour.toString()));
}

}  // namespace

Drawing::Drawing(const QByteArray& svg) {
  QXmlStreamReader xml(svg);
  xml.readNextStartElement();
  const QStringList box = xml.attributes().value("viewBox").toString().split(' ');
  if (box.size() != 4) return;
  box_ = {box[0].toDouble(), box[1].toDouble(), box[2].toDouble(), box[3].toDouble()};
  while (xml.readNextStartElement()) {
    const QXmlStreamAttributes attributes = xml.attributes();
    const std::optional<QPainterPath> path = Outline(xml.name(), attributes);
    if (!path) return;
    shapes_.push_back({*path, Fill(attributes), Stroke(attributes)});
    xml.skipCurrentElement();
  }
  whole_ = !xml.hasError() && box_.isValid();
}

void Drawing::Paint(QPainter& painter, const QRectF& bounds) const {
  if (!whole_) return;
  painter.save();
  painter.translate(bounds.topLeft());
  painter.scale(bounds.width() / box_.width(), bounds.height() / box_.height());
  painter.translate(-box_.topLeft());
  for (const Shape& shape : shapes_) {
    painter.setBrush(shape.fill);
    painter.setPen(shape.stroke);
    painter.drawPath(shape.path);
  }
  painter.restore();
}

}  // namespace brindle
