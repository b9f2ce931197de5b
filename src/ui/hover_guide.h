#pragma once
// The one mechanism behind the hover help: watches a window and everything in it, and tells the
// hint and the option help of the control that the mouse is over or that gets the keyboard. The
// same texts are the descriptions of the controls for assistive technology.

#include <QObject>
#include <QWidget>
#include <functional>
#include <string>

namespace brindle {

class HoverGuide : public QObject {
  Q_OBJECT

 public:
  using Sink = std::function<void(const std::string& text)>;

  // Controls are known by their object names; those of a control array are the group's name, an
  // underscore and the index. Widgets that join the window later are watched as well; windows of
  // their own are not. The guide belongs to `window`.
  HoverGuide(QWidget& window, Sink showHint, Sink showOptionHelp);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Watch(QWidget& widget);
  // Tells about the control that `widget` is or is a part of.
  void Explain(QWidget* widget);
  bool ExplainNamed(QWidget& widget);
  void Describe(QWidget& widget);

  QWidget& window_;
  Sink showHint_;
  Sink showOptionHelp_;
};

}  // namespace brindle
