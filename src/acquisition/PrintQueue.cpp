// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "PrintQueue.h"

#include "ShellCommand.h"
#include "UtilLog.h"

#include <QFile>

#include <algorithm>

namespace {

// Labels under which support finds these lines in logs; see docs/contract.md.
constexpr char LogSource[] = "../TrdGetPrinterStatus";
constexpr char LogFunction[] = "SlotTaskStart";
constexpr int CancelLogLine = 513;
constexpr int CancelRefusedLogLine = 514;

// The shell sees bytes. In GBK and similar encodings the second byte of a Chinese character can equal a shell
// metacharacter.
bool HoldsAnyOf(const QString& name, const QString& characters)
{
    const QByteArray bytes = name.toLocal8Bit();
    return std::any_of(name.begin(), name.end(), [](QChar c) { return c.category() == QChar::Other_Control; }) ||
        std::any_of(bytes.begin(), bytes.end(), [&characters](char c) { return characters.contains(QLatin1Char(c)); });
}

// Unquoted in the command, such a name would name another queue or start another program, never its own. Its words are
// arguments: one with a dash is an option, which may mean the jobs of all queues, and none at all means the default
// queue.
bool IsRefusedUnquoted(const QString& name)
{
    const QLatin1Char blank(' ');
    return name.count(blank) == name.size() || (blank + name).contains(QLatin1String(" -")) ||
        HoldsAnyOf(name, QStringLiteral(R"(;&|<>()$`\"'#)"));
}

// In double quotes a shell still gives these characters a meaning.
bool IsRefusedQuoted(const QString& name)
{
    return HoldsAnyOf(name, QStringLiteral(R"($`\")"));
}

// Only the first line tells of the queue itself; it is in the language of the desktop.
bool SaysPrinting(const QString& lpstatOutputPath)
{
    QFile output(lpstatOutputPath);
    if (!output.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return false;
    }
    const QString firstLine = QString::fromLocal8Bit(output.readLine().constData());
    return firstLine.contains(QStringLiteral("printing")) || firstLine.contains(QStringLiteral("正在打印"));
}

} // namespace

void CancelJobOfQueue(const QString& name)
{
    const QByteArray localName = name.toLocal8Bit();
    WriteStringLog(LogSource, CancelLogLine, LogFunction, QStringLiteral("cancel by printer %s"),
                   localName.constData());
    if (IsRefusedUnquoted(name)) {
        WriteStringLog(LogSource, CancelRefusedLogLine, LogFunction,
                       QStringLiteral("cancel refused: the name %s is not fit for a shell"), localName.constData());
        return;
    }
    RunShellCommand("cancel %s", localName.constData());
}

bool IsQueuePrinting(const QString& name, const QString& outputPath)
{
    // A command that was not run says nothing, whatever an earlier one has left in the file.
    const bool isAsked = !IsRefusedQuoted(name) &&
        RunShellCommand("lpstat -p \"%s\"> %s", name.toLocal8Bit().constData(), outputPath.toLocal8Bit().constData()) !=
            -1;
    const bool isPrinting = isAsked && SaysPrinting(outputPath);
    QFile::remove(outputPath);
    return isPrinting;
}
