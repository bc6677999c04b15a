// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusServiceWatcher>
#include <QStringList>

/// Plays the desktop's tray, watcher and host. Draws nothing. Records the bus name of each registered item as a line in
/// /tmp/tray-items. Programs read the properties, by introspection, before they use a tray.
class StatusNotifierWatcher : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items NOTIFY StatusNotifierItemRegistered)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost CONSTANT)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion CONSTANT)

public:
    explicit StatusNotifierWatcher(QObject* parent);

    /// The registered items that are still on the bus.
    QStringList items() const;
    bool hasHost() const;
    int protocolVersion() const;

public slots:
    void RegisterStatusNotifierItem(const QString& service);
    void RegisterStatusNotifierHost(const QString& service);

signals:
    void StatusNotifierItemRegistered(const QString& service);
    void StatusNotifierItemUnregistered(const QString& service);
    void StatusNotifierHostRegistered();

private:
    void removeItem(const QString& service);

    QStringList m_items;
    QDBusServiceWatcher m_busWatcher;
};
