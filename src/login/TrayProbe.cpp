// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "login/TrayProbe.h"

#include "login/XEmbedTray.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFileInfo>
#include <QString>
#include <QStringList>

#include <future>
#include <thread>
#include <utility>

namespace {

constexpr std::chrono::milliseconds LookInterval(250);
constexpr int BusCallTimeOutMSec = 1000;
// How long to wait for a StatusNotifierWatcher, after the start or after another one has gone, before a tray of the
// older kind is accepted.
constexpr std::chrono::seconds WatcherLimit(3);

bool HasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY");
}

// Checks the two places of a session bus. Asking without either would start a bus that no other program uses.
bool HasBus()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
        QFileInfo::exists(QString::fromLocal8Bit(qgetenv("XDG_RUNTIME_DIR")) + QStringLiteral("/bus"));
}

enum class Watcher
{
    Absent,
    WithoutHost, // cannot show an icon yet
    WithHost
};

Watcher AskWatcher(const QDBusConnection& bus)
{
    const QString name = QStringLiteral("org.kde.StatusNotifierWatcher");
    QDBusMessage request =
        QDBusMessage::createMethodCall(name, QStringLiteral("/StatusNotifierWatcher"),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    request.setArguments({name, QStringLiteral("IsStatusNotifierHostRegistered")});
    request.setAutoStartService(false);
    const QDBusMessage answer = bus.call(request, QDBus::Block, BusCallTimeOutMSec);
    const QList<QVariant> values = answer.arguments();
    if (answer.type() == QDBusMessage::ReplyMessage && !values.isEmpty()) {
        const QVariant hasHost = values.first().value<QDBusVariant>().variant();
        return hasHost.toBool() ? Watcher::WithHost : Watcher::WithoutHost;
    }
    const QStringList noOwner{QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"),
                              QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown")};
    // Any other error on a live bus comes from an owner that is slow or still starting.
    return !bus.isConnected() || noOwner.contains(answer.errorName()) ? Watcher::Absent : Watcher::WithoutHost;
}

class TrayProbe
{
public:
    // If there is a watcher, only its host counts, even if there is a tray of the older kind. On some desktops a proxy
    // offers such a tray before the panel registers as host, and an icon in the proxy cannot send notifications.
    bool isTrayThere()
    {
        const Watcher watcher = HasBus() ? lookForWatcher() : Watcher::Absent;
        const auto now = std::chrono::steady_clock::now();
        if (watcher != Watcher::Absent) {
            m_withoutWatcherSince = now;
            return watcher == Watcher::WithHost;
        }
        return m_hasDisplay && now - m_withoutWatcherSince >= WatcherLimit && m_xembedTray.isThere();
    }

private:
    // Connects again if the bus was not there yet or the connection was lost.
    Watcher lookForWatcher()
    {
        const QString connectionName = QStringLiteral("tray probe");
        if (!m_bus.isConnected()) {
            QDBusConnection::disconnectFromBus(connectionName);
            m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
        }
        return m_bus.isConnected() ? AskWatcher(m_bus) : Watcher::Absent;
    }

    const bool m_hasDisplay = HasDisplay();
    std::chrono::steady_clock::time_point m_withoutWatcherSince = std::chrono::steady_clock::now();
    XEmbedTray m_xembedTray;
    QDBusConnection m_bus{QString()};
};

void LookUntilThere(std::promise<void> found)
{
    TrayProbe probe;
    while (!probe.isTrayThere()) {
        std::this_thread::sleep_for(LookInterval);
    }
    found.set_value();
}

} // namespace

void WaitForTray(std::chrono::milliseconds limit)
{
    if (!HasDisplay() && !HasBus()) {
        return;
    }
    std::promise<void> found;
    const std::future<void> tray = found.get_future();
    std::thread(LookUntilThere, std::move(found)).detach();
    tray.wait_for(limit);
}
