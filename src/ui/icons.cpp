#include "ui/icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <array>
#include <unordered_map>

#include "ui/drawing.h"
#include "ui/look_paint.h"

// The drawings lie in a static library, which must name them to have them linked.
static void KeepDrawings() { Q_INIT_RESOURCE(icons); }

namespace brindle {
namespace {

constexpr std::array<const char*, kIconNames> kFiles = {
    "add",          "check",  "clear", "colours", "dot",
    "filter",       "find",   "info",  "link",    "list",
    "load",         "manual", "misc",  "person",  "person-operator",
    "person-voice", "play",   "plug",  "remove",  "room",
    "send",         "sound",  "stop",  "theme",   "tray",
    "update"};
constexpr char kApplicationFile[] = "brindle";

const Drawing& DrawingIn(const QString& name) {
  static std::unordered_map<QString, Drawing> drawings;
  auto drawing = drawings.find(name);
  if (drawing == drawings.end()) {
    KeepDrawings();
    QFile file(":/icons/" + name + ".svg");
    const QByteArray svg = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    drawing = drawings.emplace(name, svg).first;
    Q_ASSERT(drawing->second.IsWhole());
  }
  return drawing->second;
}

// A drawing in `size` pixels of the screen, all of it in `tint` where that is a colour.
QPixmap Render(const QString& file, QSize size, const QColor& tint) {
  const QString key = QString("brindle/%1/%2x%3/%4")
                          .arg(file)
                          .arg(size.width())
                          .arg(size.height())
                          .arg(tint.isValid() ? tint.name() : QString());
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  pixmap = QPixmap(size);
  pixmap.fill(Qt::transparent);
  {
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const int side = std::min(size.width(), size.height());
    const QPoint corner((size.width() - side) / 2, (size.height() - side) / 2);
    DrawingIn(file).Paint(painter, QRectF(corner, QSize(side, side)));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    if (tint.isValid()) painter.fillRect(pixmap.rect(), tint);
  }
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

// An icon that is drawn anew in each size.
class DrawnIcon : public QIconEngine {
 public:
  explicit DrawnIcon(QString file) : file_(std::move(file)) {}

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    return Render(file_, size, Tint(mode));
  }
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal ratio = painter->device()->devicePixelRatio();
    painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
  }
  QIconEngine* clone() const override { return new DrawnIcon(*this); }
  bool isNull() override { return false; }

 protected:
  virtual QColor Tint(QIcon::Mode) const { return {}; }

 private:
  QString file_;
};

class TintedIcon : public DrawnIcon {
 public:
  TintedIcon(IconName name, LookRole role)
      : DrawnIcon(kFiles[static_cast<size_t>(name)]), role_(role) {}

  QIconEngine* clone() const override { return new TintedIcon(*this); }

 protected:
  QColor Tint(QIcon::Mode mode) const override {
    if (mode == QIcon::Disabled) return CurrentColours().disabled;
    const bool plain = role_ == LookRole::kText || role_ == LookRole::kDim;
    return mode == QIcon::Selected && plain ? CurrentColours().selectionText : ColourOf(role_);
  }

 private:
  LookRole role_;
};

class Swatch : public QIconEngine {
 public:
  Swatch(const QColor& colour, QColor LookColours::*role) : colour_(colour), role_(role) {}

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, pixmap.rect(), mode, state);
    return pixmap;
  }
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
    const QColor fill = role_ == nullptr ? colour_ : CurrentColours().*role_;
    DrawBox(*painter, rect, {fill, CurrentColours().outline, 2});
  }
  QIconEngine* clone() const override { return new Swatch(*this); }
  bool isNull() override { return false; }

 private:
  QColor colour_;
  QColor LookColours::*role_;
};

}  // namespace

QIcon SwatchIcon(const QColor& colour) { return QIcon(new Swatch(colour, nullptr)); }

QIcon SwatchIcon(QColor LookColours::*role) { return QIcon(new Swatch({}, role)); }

QIcon MakeIcon(IconName name, LookRole role) { return QIcon(new TintedIcon(name, role)); }

QIcon ApplicationIcon() { return QIcon(new DrawnIcon(kApplicationFile)); }

IconLabel::IconLabel(IconName name, LookRole role, int size, QWidget* parent)
    : QLabel(parent), icon_(MakeIcon(name, role)), size_(size) {}

void IconLabel::SetIcon(IconName name, LookRole role) {
  icon_ = MakeIcon(name, role);
  update();
}

QSize IconLabel::sizeHint() const {
  const QMargins margins = contentsMargins();
  return QSize(size_, size_).grownBy(margins);
}

void IconLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QRect rect({0, 0}, QSize(size_, size_));
  rect.moveCenter(contentsRect().center());
  icon_.paint(&painter, rect, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
}

}  // namespace brindle
