// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "TrayProbe.h"

#include "XEmbedTray.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFileInfo>
#include <QString>
#include <QStringList>

#include <future>
#include <memory>
#include <thread>

namespace {

constexpr std::chrono::milliseconds LookInterval(250);
constexpr int BusCallTimeOutMSec = 1000;

bool HasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY");
}

// Where a session's bus is looked for. Asking without either would start a bus that nobody else is on.
bool HasBus()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
        QFileInfo::exists(QString::fromLocal8Bit(qgetenv("XDG_RUNTIME_DIR")) + QStringLiteral("/bus"));
}

// A host, not only a watcher: a watcher without one has no place to show an icon.
bool IsStatusNotifierHostRegistered(const QDBusConnection& bus)
{
    const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
    QDBusMessage request =
        QDBusMessage::createMethodCall(watcher, QStringLiteral("/StatusNotifierWatcher"),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    request.setArguments({watcher, QStringLiteral("IsStatusNotifierHostRegistered")});
    request.setAutoStartService(false);
    const QVariantList answer = bus.call(request, QDBus::Block, BusCallTimeOutMSec).arguments();
    return !answer.isEmpty() && answer.first().value<QDBusVariant>().variant().toBool();
}

class TrayProbe
{
public:
    bool IsTrayThere()
    {
        return (bHasDisplay && xembedTray.IsThere()) || (HasBus() && IsHostThere());
    }

private:
    // A bus that is not there yet, or that was lost, is connected to anew.
    bool IsHostThere()
    {
        const QString connectionName = QStringLiteral("tray probe");
        if (!bus.isConnected()) {
            QDBusConnection::disconnectFromBus(connectionName);
            bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
        }
        return bus.isConnected() && IsStatusNotifierHostRegistered(bus);
    }

    const bool bHasDisplay = HasDisplay();
    XEmbedTray xembedTray;
    QDBusConnection bus{QString()};
};

void LookUntilThere(std::promise<void> found)
{
    TrayProbe probe;
    while (!probe.IsTrayThere()) {
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
