#include "hosts/qt/desktop_settings.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QGuiApplication>

#include "hosts/qt/callbacks.h"

namespace orvello {
namespace {

constexpr int kPatience = 100;  // milliseconds
constexpr int kPrefersDark = 1;
const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kInterface = QStringLiteral("org.gnome.desktop.interface");

bool has_session_bus() {
  const QString platform = QGuiApplication::platformName();
  if (platform != u"xcb" && !platform.startsWith(u"wayland")) return false;
  return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
         QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

QDBusMessage settings_question(bool may_start) {
  QDBusMessage message = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.portal.Desktop"),
      QStringLiteral("/org/freedesktop/portal/desktop"),
      QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("ReadAll"));
  message.setAutoStartService(may_start);
  message << QStringList{kAppearance, kInterface};
  return message;
}

DesktopSettings read_answer(const QDBusMessage& answer) {
  DesktopSettings settings;
  if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != u"a{sa{sv}}")
    return settings;
  const auto all =
      qdbus_cast<QMap<QString, QVariantMap>>(answer.arguments().at(0).value<QDBusArgument>());
  const QVariant scheme = all[kAppearance].value(QStringLiteral("color-scheme"));
  if (scheme.isValid()) settings.dark = scheme.toInt() == kPrefersDark;
  const QVariant scale = all[kInterface].value(QStringLiteral("text-scaling-factor"));
  // On the other one it is in the density that the display has, and so in all lengths.
  const bool wayland = QGuiApplication::platformName().startsWith(u"wayland");
  if (wayland && scale.toDouble() > 0) settings.text_scale = scale.toDouble();
  return settings;
}

}  // namespace

DesktopSettings ask_desktop_settings() {
  if (!has_session_bus()) return {};
  return read_answer(
      QDBusConnection::sessionBus().call(settings_question(false), QDBus::Block, kPatience));
}

void ask_desktop_settings_later(QObject* context, std::function<void(DesktopSettings)> answer) {
  if (!has_session_bus()) return;
  auto* watcher = new QDBusPendingCallWatcher(
      QDBusConnection::sessionBus().asyncCall(settings_question(true)), context);
  on_signal(watcher, &QDBusPendingCallWatcher::finished, context,
            [watcher, answer = std::move(answer)] {
              watcher->deleteLater();
              if (!watcher->isError()) answer(read_answer(watcher->reply()));
            });
}

}  // namespace orvello
