// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "NotificationServer.h"

#include "RecordFile.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr uint ClosedByCall = 3;

} // namespace

NotificationServer::NotificationServer(QObject* parent)
    : QDBusAbstractAdaptor(parent)
{
}

QStringList NotificationServer::GetCapabilities()
{
    return {QStringLiteral("body")};
}

QString NotificationServer::GetServerInformation(QString& vendor, QString& version, QString& protocolVersion)
{
    vendor = QStringLiteral("tests");
    version = QStringLiteral("1");
    protocolVersion = QStringLiteral("1.2");
    return QStringLiteral("desktop-double");
}

uint NotificationServer::Notify(const QString& app, uint replacedId, const QString& icon, const QString& title,
                                const QString& body, const QStringList& /*actions*/, const QVariantMap& hints,
                                int timeoutMs)
{
    const QJsonObject message{
        {QStringLiteral("app"), app},
        {QStringLiteral("icon"), icon},
        {QStringLiteral("title"), title},
        {QStringLiteral("body"), body},
        {QStringLiteral("urgency"), hints.value(QStringLiteral("urgency"), -1).toInt()},
        {QStringLiteral("timeout"), timeoutMs},
    };
    AppendRecord(QStringLiteral("/tmp/notifications.jsonl"), QJsonDocument(message).toJson(QJsonDocument::Compact));
    return replacedId != 0 ? replacedId : ++m_lastId;
}

void NotificationServer::CloseNotification(uint id)
{
    emit NotificationClosed(id, ClosedByCall);
}
