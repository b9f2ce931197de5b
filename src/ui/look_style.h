#pragma once
// The program's style: the toolkit's plainest one with boxes, tabs, edges and arrows of our own,
// quiet and flat, in the colours of the current palette. What it does not know is drawn by the
// style below it, in the same palette.

#include <QProxyStyle>
#include <QStyleOption>
#include <QWidget>

namespace brindle {

// What an option says of itself, when it is of that kind.
template <typename Option>
const Option* As(const QStyleOption* option) {
  return qstyleoption_cast<const Option*>(option);
}

inline QFont FontOf(const QWidget* widget) { return widget == nullptr ? QFont() : widget->font(); }

// Of a button that leads on. The toolkit's mark for it goes and comes with the focus.
inline constexpr char kAccentedProperty[] = "accented";

class LookStyle : public QProxyStyle {
 public:
  LookStyle();

  void polish(QWidget* widget) override;
  using QProxyStyle::polish;

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;

  QRect subElementRect(SubElement element, const QStyleOption* option,
                       const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* more) const override;
};

}  // namespace brindle
