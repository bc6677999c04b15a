// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "LogFolder.h"

#include "PrinterFolder.h"

#include <QDir>
#include <QRegularExpression>

namespace LogFolder {

QStringList Names()
{
    return QDir(QString::fromLatin1(PrinterFolder::ToolDirectory)).entryList(QDir::Files, QDir::Name);
}

QString Path(const QString& name)
{
    return QString::fromLatin1(PrinterFolder::ToolDirectory) + name;
}

QList<QByteArray> Lines()
{
    const QStringList names = Names();
    return names.size() == 1 ? Lines(names.first()) : QList<QByteArray>();
}

QList<QByteArray> Lines(const QString& name)
{
    QList<QByteArray> lines = PrinterFolder::ReadFile(Path(name)).split('\n');
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

QByteArray WithoutTime(const QByteArray& line)
{
    static const QRegularExpression timePattern(QStringLiteral(R"(^\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\] )"));
    const QRegularExpressionMatch match = timePattern.match(QString::fromLatin1(line));
    return match.hasMatch() ? line.mid(match.capturedLength()) : QByteArray();
}

} // namespace LogFolder
