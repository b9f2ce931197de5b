#include "ui/drawing_path.h"

#include <QtMath>
#include <array>
#include <cmath>

namespace brindle {
namespace {

// The steps that are known, and how many numbers each takes.
constexpr std::pair<char, size_t> kSteps[] = {{'M', 2}, {'L', 2}, {'H', 1}, {'V', 1},
                                              {'C', 6}, {'S', 4}, {'A', 7}, {'Z', 0}};

double Degrees(QPointF from) { return qRadiansToDegrees(std::atan2(from.y(), from.x())); }

// Part of a circle from where the path is. Of the four ways to `end`, `large` takes the longer
// ones, and `clockwise` those that turn that way on the screen.
void AddArc(QPainterPath& path, double radius, bool large, bool clockwise, QPointF end) {
  const QPointF start = path.currentPosition();
  const QPointF half = (end - start) / 2;
  const double distance = std::hypot(half.x(), half.y());
  if (distance == 0) return;
  radius = std::max(radius, distance);
  const double away = std::sqrt(radius * radius - distance * distance) / distance;
  const QPointF aside = QPointF(-half.y(), half.x()) * (large != clockwise ? away : -away);
  const QPointF centre = start + half + aside;
  const double from = Degrees(start - centre);
  double turn = Degrees(end - centre) - from;
  if (clockwise && turn < 0) turn += 360;
  if (!clockwise && turn > 0) turn -= 360;
  // The toolkit counts angles against the clock.
  const QPointF corner(radius, radius);
  path.arcTo(QRectF(centre - corner, centre + corner), -from, -turn);
}

class PathReader {
 public:
  explicit PathReader(QStringView text) : rest_(text) { path_.setFillRule(Qt::WindingFill); }

  std::optional<QPainterPath> Read() {
    for (SkipBlanks(); !rest_.isEmpty(); SkipBlanks()) {
      if (rest_[0].isLetter()) {
        command_ = rest_[0].toLatin1();
        rest_ = rest_.mid(1);
      } else if (command_ == 'M' || command_ == 'm') {
        command_ = command_ == 'M' ? 'L' : 'l';  // further points of a beginning are lines
      } else if (command_ == 'Z' || command_ == 'z') {
        return std::nullopt;
      }
      if (!Step()) return std::nullopt;
    }
    return path_;
  }

 private:
  void SkipBlanks() {
    while (!rest_.isEmpty() && (rest_[0].isSpace() || rest_[0] == ',')) rest_ = rest_.mid(1);
  }

  // A number may follow the one before without a blank, where it can be no part of it.
  bool ReadNumber(double& number) {
    SkipBlanks();
    qsizetype length = 0;
    bool hasPoint = false;
    for (; length < rest_.size(); ++length) {
      const QChar sign = rest_[length];
      if (sign == '.' && !hasPoint) {
        hasPoint = true;
      } else if (!sign.isDigit() && !(length == 0 && sign == '-')) {
        break;
      }
    }
    bool isNumber = false;
    number = rest_.left(length).toDouble(&isNumber);
    rest_ = rest_.mid(length);
    return isNumber;
  }

  bool Step() {
    const bool isRelative = command_ >= 'a';
    const char step = isRelative ? static_cast<char>(command_ - 'a' + 'A') : command_;
    const auto* known = std::find_if(std::begin(kSteps), std::end(kSteps),
                                     [step](const auto& entry) { return entry.first == step; });
    if (known == std::end(kSteps)) return false;
    std::array<double, 7> n{};
    for (size_t i = 0; i < known->second; ++i) {
      if (!ReadNumber(n[i])) return false;
    }
    const QPointF here = path_.currentPosition();
    const QPointF base = isRelative ? here : QPointF();
    const auto point = [&](size_t first) { return base + QPointF(n[first], n[first + 1]); };
    switch (step) {
      case 'M':
        path_.moveTo(point(0));
        break;
      case 'L':
        path_.lineTo(point(0));
        break;
      case 'H':
        path_.lineTo(base.x() + n[0], here.y());
        break;
      case 'V':
        path_.lineTo(here.x(), base.y() + n[0]);
        break;
      case 'C':
        Curve(point(0), point(2), point(4));
        return true;
      case 'S':
        Curve(lastControl_ ? 2 * here - *lastControl_ : here, point(0), point(2));
        return true;
      case 'A':
        if (n[0] != n[1]) return false;
        AddArc(path_, n[0], n[3] != 0, n[4] != 0, point(5));
        break;
      default:
        path_.closeSubpath();
    }
    lastControl_.reset();
    return true;
  }

  void Curve(QPointF first, QPointF second, QPointF end) {
    path_.cubicTo(first, second, end);
    lastControl_ = second;
  }

  QStringView rest_;
  QPainterPath path_;
  char command_ = 'Z';
  std::optional<QPointF> lastControl_;
};

}  // namespace

std::optional<QPainterPath> ReadDrawingPath(QStringView text) { return PathReader(text).Read(); }

}  // namespace brindle
