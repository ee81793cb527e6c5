// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtColorPreference.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariant>

bool TzDesktopPrefersDark() {
  constexpr int kPatience = 200;
  constexpr unsigned kPrefersDark = 1;
  // Without an address, asking may start a bus that nobody else is on.
  if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) return false;
  QDBusMessage question = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
      QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
  question << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
  const QDBusMessage reply = QDBusConnection::sessionBus().call(question, QDBus::Block, kPatience);
  if (reply.type() != QDBusMessage::ReplyMessage) return false;
  // Older portals put the value into two variants.
  QVariant value = reply.arguments().value(0);
  while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
    value = value.value<QDBusVariant>().variant();
  }
  return value.toUInt() == kPrefersDark;
}
