#include "ui/accessible_tree.h"

#include <QAccessibleWidget>
#include <QComboBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

namespace brindle {
namespace {

// All buttons, since a button may get its menu after it was first looked at.
class ButtonAccessible : public QAccessibleWidget {
 public:
  explicit ButtonAccessible(QPushButton* button) : QAccessibleWidget(button) {}

  QAccessible::Role role() const override {
    return HasMenu() ? QAccessible::ButtonMenu : QAccessible::PushButton;
  }

  int childCount() const override { return QAccessibleWidget::childCount() + (HasMenu() ? 1 : 0); }

  QAccessibleInterface* child(int index) const override {
    if (!HasMenu() || index != QAccessibleWidget::childCount()) {
      return QAccessibleWidget::child(index);
    }
    return QAccessible::queryAccessibleInterface(Button().menu());
  }

  int indexOfChild(const QAccessibleInterface* child) const override {
    if (HasMenu() && child->object() == Button().menu()) return QAccessibleWidget::childCount();
    return QAccessibleWidget::indexOfChild(child);
  }

  QString text(QAccessible::Text kind) const override {
    // The toolkit would call a button without a name of its own after the group around it.
    const bool isCaption = kind == QAccessible::Name && Button().accessibleName().isEmpty();
    if (isCaption && !Button().text().isEmpty()) return Button().text().remove('&');
    const QString own = QAccessibleWidget::text(kind);
    if (!own.isEmpty() || kind != QAccessible::Accelerator) return own;
    return QKeySequence::mnemonic(Button().text()).toString(QKeySequence::NativeText);
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.hasPopup = HasMenu();
    state.defaultButton = Button().isDefault();
    state.pressed = Button().isDown();
    return state;
  }

  QStringList actionNames() const override {
    QStringList names = QAccessibleWidget::actionNames();
    if (Button().isEnabled()) names.prepend(HasMenu() ? showMenuAction() : pressAction());
    return names;
  }

  void doAction(const QString& name) override {
    if (name != showMenuAction() && name != pressAction()) return QAccessibleWidget::doAction(name);
    // Not at once: who asks waits for the answer.
    if (Button().isEnabled()) Button().animateClick();
  }

 private:
  QPushButton& Button() const { return *static_cast<QPushButton*>(widget()); }
  bool HasMenu() const { return Button().menu() != nullptr; }
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
  auto* button = qobject_cast<QPushButton*>(object);
  return button == nullptr ? nullptr : new ButtonAccessible(button);
}

}  // namespace

void NameTextFields(QWidget& window) {
  for (const auto* box : window.findChildren<QComboBox*>()) {
    if (box->isEditable()) box->lineEdit()->setAccessibleName(box->accessibleName());
  }
  for (const auto* label : window.findChildren<QLabel*>()) {
    const auto* box = qobject_cast<const QComboBox*>(label->buddy());
    if (box != nullptr && box->isEditable()) {
      box->lineEdit()->setAccessibleName(label->text().remove('&'));
    }
  }
}

void InstallButtonAccessibility() {
  static const bool kInstalled = [] {
    QAccessible::installFactory(MakeAccessible);
    return true;
  }();
  static_cast<void>(kInstalled);
}

}  // namespace brindle
