// From the settings portal, which most desktops offer on the session's bus.

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFileInfo>

#include "platform/desktop_scheme_native.h"

namespace brindle {
namespace {

constexpr char kService[] = "org.freedesktop.portal.Desktop";
constexpr char kPath[] = "/org/freedesktop/portal/desktop";
constexpr char kInterface[] = "org.freedesktop.portal.Settings";
constexpr char kGroup[] = "org.freedesktop.appearance";
constexpr char kKey[] = "color-scheme";
// The window waits for the answer, so that it does not change its colours before the user's eyes.
constexpr int kMostMilliseconds = 200;

// Without a bus the toolkit would try to start one.
bool HasSessionBus() {
  if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) return true;
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  return !folder.isEmpty() && QFileInfo::exists(folder + "/bus");
}

// The portal wraps its answers in one variant or in two.
DesktopScheme SchemeFrom(QVariant value) {
  while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
    value = value.value<QDBusVariant>().variant();
  }
  switch (value.toUInt()) {
    case 1:
      return DesktopScheme::kDark;
    case 2:
      return DesktopScheme::kLight;
    default:
      return DesktopScheme::kUnknown;  // no preference
  }
}

class SchemeWatch : public QObject {
  Q_OBJECT

 public:
  SchemeWatch(QObject& owner, std::function<void(DesktopScheme)> tell)
      : QObject(&owner), tell_(std::move(tell)) {}

  void Start() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(kService, kPath, kInterface, "SettingChanged", this,
                SLOT(OnChange(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(kService, kPath, kInterface, "Read");
    question.setArguments({kGroup, kKey});
    question.setAutoStartService(false);
    const QDBusMessage answer = bus.call(question, QDBus::Block, kMostMilliseconds);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
      tell_(SchemeFrom(answer.arguments().first()));
    }
  }

 private slots:
  void OnChange(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == kGroup && key == kKey) tell_(SchemeFrom(value.variant()));
  }

 private:
  std::function<void(DesktopScheme)> tell_;
};

}  // namespace

void WatchDesktopScheme(QObject& owner, std::function<void(DesktopScheme)> tell) {
  if (!HasSessionBus()) return;
  auto* watch = new SchemeWatch(owner, std::move(tell));
  watch->Start();
}

}  // namespace brindle

#include "desktop_scheme_dbus.moc"
