#include "ui/option_widgets.h"

#include <QPainter>

#include "base/text.h"
#include "ui/look.h"
#include "ui/look_paint.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

constexpr int kCardInset = 16;
constexpr int kLeastTextLines = 2;
constexpr int kLeastCardWidth = 160;
constexpr int kSampleWidth = 260;
constexpr int kLeastSampleWidth = 90;

struct HelpText {
  QString heading;
  QString text;
};

HelpText PartsOf(const QString& help) {
  const QString gap = ToQString(kCrLf) + ToQString(kCrLf);
  const qsizetype end = help.indexOf(gap);
  return end < 0 ? HelpText{{}, help} : HelpText{help.left(end), help.mid(end + gap.size())};
}

int TextHeight(const QFontMetrics& metrics, int width, const QString& text) {
  return metrics.boundingRect(0, 0, width, 0, Qt::TextWordWrap, text).height();
}

}  // namespace

QuickHelpCard::QuickHelpCard(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

QSize QuickHelpCard::minimumSizeHint() const {
  return {kLeastCardWidth, heightForWidth(std::max(width(), kLeastCardWidth))};
}

int QuickHelpCard::heightForWidth(int width) const {
  const HelpText help = PartsOf(text());
  const QFontMetrics metrics(font());
  const int inner = std::max(1, width - 2 * kCardInset);
  const int least = kLeastTextLines * metrics.lineSpacing();
  return 2 * kInset + TextHeight(QFontMetrics(Medium(font())), inner, help.heading) + kSmallGap +
         std::max(least, TextHeight(metrics, inner, help.text));
}

void QuickHelpCard::paintEvent(QPaintEvent*) {
  if (text().isEmpty()) return;
  QPainter painter(this);
  const LookColours& colours = CurrentColours();
  DrawBox(painter, rect(), {colours.raised, colours.divider, kCardRadius});
  const HelpText help = PartsOf(text());
  QRect inner = rect().adjusted(kCardInset, kInset, -kCardInset, -kInset);
  painter.setFont(Medium(font()));
  painter.setPen(colours.text);
  QRect drawn;
  painter.drawText(inner, Qt::TextWordWrap, help.heading, &drawn);
  inner.setTop(inner.top() + drawn.height() + kSmallGap);
  painter.setFont(font());
  painter.setPen(colours.dim);
  painter.drawText(inner, Qt::TextWordWrap, help.text);
}

ColourSample::ColourSample(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

void ColourSample::Show(const Line& first, const Line& second, const QColor& background) {
  first_ = first;
  second_ = second;
  background_ = background;
  update();
}

QSize ColourSample::sizeHint() const {
  return {kSampleWidth, 2 * fontMetrics().lineSpacing() + 2 * kInset + kSmallGap};
}

QSize ColourSample::minimumSizeHint() const { return {kLeastSampleWidth, sizeHint().height()}; }

void ColourSample::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawBox(painter, rect(), {background_, CurrentColours().outline});
  QRect line = rect().adjusted(kInset, kInset, -kInset, -kInset);
  line.setHeight(fontMetrics().lineSpacing());
  for (const Line* shown : {&first_, &second_}) {
    painter.setPen(shown->colour);
    painter.drawText(line, Qt::AlignVCenter,
                     fontMetrics().elidedText(shown->text, Qt::ElideRight, line.width()));
    line.translate(0, line.height() + kSmallGap);
  }
}

}  // namespace brindle
