// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "DesktopMessages.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr char RecordPath[] = "/tmp/notifications.jsonl";

// Offset of the first message that was not forgotten. Old messages stay in the file because the desktop may be writing
// to it.
qint64 s_readFrom = 0;

} // namespace

QList<DesktopMessage> DesktopMessages()
{
    QList<DesktopMessage> messages;
    QFile file(QString::fromLatin1(RecordPath));
    if (!file.open(QIODevice::ReadOnly) || !file.seek(s_readFrom)) {
        return messages;
    }
    QList<QByteArray> lines = file.readAll().split('\n');
    lines.removeLast(); // the rest after the last line
    for (const QByteArray& line : qAsConst(lines)) {
        const QJsonObject json = QJsonDocument::fromJson(line).object();
        DesktopMessage message;
        message.app = json.value(QStringLiteral("app")).toString();
        message.icon = json.value(QStringLiteral("icon")).toString();
        message.title = json.value(QStringLiteral("title")).toString();
        message.body = json.value(QStringLiteral("body")).toString();
        message.urgency = json.value(QStringLiteral("urgency")).toInt();
        message.timeoutMs = json.value(QStringLiteral("timeout")).toInt();
        messages.append(message);
    }
    return messages;
}

void ForgetDesktopMessages()
{
    s_readFrom = QFile(QString::fromLatin1(RecordPath)).size();
}
