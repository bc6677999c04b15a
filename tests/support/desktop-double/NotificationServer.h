// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>
#include <QVariantMap>

/// Plays the desktop's notification service. Shows nothing. Records each message as a line of JSON in
/// /tmp/notifications.jsonl: app, icon, title, body, urgency (-1 if missing) and timeout (milliseconds).
class NotificationServer : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit NotificationServer(QObject* parent);

public slots:
    QStringList GetCapabilities();
    QString GetServerInformation(QString& vendor, QString& version, QString& protocolVersion);
    uint Notify(const QString& app, uint replacedId, const QString& icon, const QString& title, const QString& body,
                const QStringList& actions, const QVariantMap& hints, int timeoutMs);
    void CloseNotification(uint id);

signals:
    void NotificationClosed(uint id, uint reason);

private:
    uint m_lastId = 0;
};
