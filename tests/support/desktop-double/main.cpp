// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Plays the desktop's tray and notification service on the session bus for the tests. Writes one line when both are
// ready, then serves until it is killed.

#include "NotificationServer.h"
#include "StatusNotifierWatcher.h"

#include <QCoreApplication>
#include <QDBusConnection>

#include <cstdio>

namespace {

bool Serve(QObject* object, const QString& path, const QString& name)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.registerObject(path, object, QDBusConnection::ExportAdaptors) && bus.registerService(name);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QObject tray;
    new StatusNotifierWatcher(&tray);
    QObject notifications;
    new NotificationServer(&notifications);
    if (!Serve(&tray, QStringLiteral("/StatusNotifierWatcher"), QStringLiteral("org.kde.StatusNotifierWatcher")) ||
        !Serve(&notifications, QStringLiteral("/org/freedesktop/Notifications"),
               QStringLiteral("org.freedesktop.Notifications"))) {
        std::fputs("desktop-double: there is no session bus, or it already has a desktop\n", stderr);
        return 1;
    }
    std::puts("ready");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
