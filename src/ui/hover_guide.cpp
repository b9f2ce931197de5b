#include "ui/hover_guide.h"

#include <QAbstractButton>
#include <QChildEvent>
#include <QLayout>
#include <QMouseEvent>
#include <QSplitter>
#include <QTabWidget>

#include "base/text.h"
#include "ui/hover_help.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

constexpr int kNoIndex = -1;

struct ControlName {
  std::string group;
  int index = kNoIndex;
};

// "chkOptionsMisc_3" is element 3 of chkOptionsMisc.
ControlName NameOf(const QWidget& widget) {
  const QString name = widget.objectName();
  bool isNumber = false;
  const int index = name.section('_', -1).toInt(&isNumber);
  if (!isNumber || !name.contains('_')) return {name.toStdString(), kNoIndex};
  return {name.section('_', 0, -2).toStdString(), index};
}

std::string CaptionOf(const QWidget& widget) {
  const auto* button = qobject_cast<const QAbstractButton*>(&widget);
  return button == nullptr ? "" : button->text().remove('&').toStdString();
}

struct Texts {
  std::optional<std::string> hint;
  std::optional<std::string> help;
};

Texts TextsOf(const QWidget& widget) {
  const ControlName name = NameOf(widget);
  const std::string caption = CaptionOf(widget);
  return {StatusHint(name.group, caption), OptionHelp(name.group, name.index, caption)};
}

// A part that the toolkit made, like the surface of a list or the line of an editable box.
bool IsPartOfAControl(const QWidget& widget) {
  return widget.objectName().isEmpty() || widget.objectName().startsWith("qt_");
}

// What only holds other widgets, so that being over it is being over what it lies on.
bool IsContainer(const QWidget& widget) {
  return widget.layout() != nullptr || qobject_cast<const QSplitter*>(&widget) != nullptr ||
         qobject_cast<const QTabWidget*>(&widget) != nullptr;
}

}  // namespace

HoverGuide::HoverGuide(QWidget& window, Sink showHint, Sink showOptionHelp)
    : QObject(&window),
      window_(window),
      showHint_(std::move(showHint)),
      showOptionHelp_(std::move(showOptionHelp)) {
  // A widget tells its parent when it is polished. Later, each would be watched again for that.
  window.ensurePolished();
  Watch(window);
}

void HoverGuide::Watch(QWidget& widget) {
  // Moves are told without a pressed button, and moving back from a control to what it lies on is
  // nothing but a move.
  widget.setMouseTracking(true);
  widget.installEventFilter(this);
  Describe(widget);
  for (QObject* child : widget.children()) {
    auto* inner = qobject_cast<QWidget*>(child);
    if (inner != nullptr && !inner->isWindow()) Watch(*inner);
  }
}

bool HoverGuide::eventFilter(QObject* watched, QEvent* event) {
  auto* widget = static_cast<QWidget*>(watched);
  switch (event->type()) {
    case QEvent::MouseMove:
      // A move that a control does not want comes again for what it lies on.
      if (widget->childAt(static_cast<QMouseEvent*>(event)->pos()) == nullptr) Explain(widget);
      break;
    case QEvent::Enter:
      if (widget->childAt(static_cast<QEnterEvent*>(event)->position().toPoint()) == nullptr) {
        Explain(widget);
      }
      break;
    case QEvent::FocusIn:
      // The window itself gets the keyboard when it comes to the front.
      if (!IsContainer(*widget)) Explain(widget);
      break;
    case QEvent::ChildPolished: {
      auto* child = qobject_cast<QWidget*>(static_cast<QChildEvent*>(event)->child());
      if (child != nullptr && !child->isWindow()) Watch(*child);
      break;
    }
    default:
      break;
  }
  return false;
}

void HoverGuide::Explain(QWidget* widget) {
  while (widget != nullptr && !ExplainNamed(*widget)) {
    if (widget->isWindow() || (!IsPartOfAControl(*widget) && !IsContainer(*widget))) return;
    widget = widget->parentWidget();
  }
}

bool HoverGuide::ExplainNamed(QWidget& widget) {
  const Texts texts = TextsOf(widget);
  if (texts.help) showOptionHelp_(*texts.help);
  if (texts.hint) showHint_(*texts.hint);
  Describe(widget);  // its caption may have changed
  return texts.help || texts.hint;
}

void HoverGuide::Describe(QWidget& widget) {
  if (widget.objectName().isEmpty()) return;
  const Texts texts = TextsOf(widget);
  // The heading of an option's help is its name, which is read anyway.
  if (texts.help) {
    widget.setAccessibleDescription(ToQString(*texts.help).section(ToQString(kCrLf), -1));
  } else if (texts.hint) {
    widget.setAccessibleDescription(ToQString(*texts.hint));
  }
}

}  // namespace brindle
