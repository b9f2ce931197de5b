#pragma once
// What the options tab shows beside its controls: the card of the quick help, and samples of the
// colours.

#include <QColor>
#include <QLabel>
#include <optional>

namespace brindle {

// The paragraph of help: a heading, an empty line and a text, drawn as a card that is always high
// enough for all of it.
class QuickHelpCard : public QLabel {
 public:
  explicit QuickHelpCard(QWidget* parent = nullptr);

  QSize sizeHint() const override { return minimumSizeHint(); }
  QSize minimumSizeHint() const override;
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// Two lines in the colours that two swatches choose.
class ColourSample : public QWidget {
 public:
  struct Line {
    QString text;
    QColor colour;
  };

  explicit ColourSample(QWidget* parent = nullptr);

  void Show(const Line& first, const Line& second, const QColor& background);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Line first_;
  Line second_;
  QColor background_;
};

}  // namespace brindle
