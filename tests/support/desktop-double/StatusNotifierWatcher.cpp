// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "StatusNotifierWatcher.h"

#include "RecordFile.h"

#include <QDBusConnection>

StatusNotifierWatcher::StatusNotifierWatcher(QObject* parent)
    : QDBusAbstractAdaptor(parent)
{
    m_busWatcher.setConnection(QDBusConnection::sessionBus());
    m_busWatcher.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_busWatcher, &QDBusServiceWatcher::serviceUnregistered, this, &StatusNotifierWatcher::removeItem);
}

QStringList StatusNotifierWatcher::items() const
{
    return m_items;
}

bool StatusNotifierWatcher::hasHost() const
{
    return true;
}

int StatusNotifierWatcher::protocolVersion() const
{
    return 0;
}

void StatusNotifierWatcher::RegisterStatusNotifierItem(const QString& service)
{
    AppendRecord(QStringLiteral("/tmp/tray-items"), service.toUtf8());
    m_items.append(service);
    m_busWatcher.addWatchedService(service);
    emit StatusNotifierItemRegistered(service);
}

void StatusNotifierWatcher::RegisterStatusNotifierHost(const QString& /*service*/)
{
    emit StatusNotifierHostRegistered();
}

void StatusNotifierWatcher::removeItem(const QString& service)
{
    m_busWatcher.removeWatchedService(service);
    m_items.removeAll(service);
    emit StatusNotifierItemUnregistered(service);
}
