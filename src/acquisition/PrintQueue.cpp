// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "acquisition/PrintQueue.h"

#include "infrastructure/ShellCommand.h"
#include "infrastructure/UtilLog.h"

#include <QFile>

#include <algorithm>

namespace {

// Support scripts find the log lines by these labels; see docs/contract.md.
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

// The name stands unquoted in the command, so each of its words is an argument. A word with a dash is an option, which
// may cancel the jobs of all queues. A name without a word cancels a job of the default queue. The listed characters
// would address another queue or start another program.
bool IsRefusedUnquoted(const QString& name)
{
    const QLatin1Char blank(' ');
    return name.count(blank) == name.size() || (blank + name).contains(QLatin1String(" -")) ||
        HoldsAnyOf(name, QStringLiteral(R"(;&|<>()$`\"'#)"));
}

// A shell interprets these characters even in double quotes.
bool IsRefusedQuoted(const QString& name)
{
    return HoldsAnyOf(name, QStringLiteral(R"($`\")"));
}

// Only the first line is about the queue itself. It is in the desktop's language.
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
    // If the command was not run, the file may hold the output of an earlier one and is not read.
    const bool isAsked = !IsRefusedQuoted(name) &&
        RunShellCommand("lpstat -p \"%s\"> %s", name.toLocal8Bit().constData(), outputPath.toLocal8Bit().constData()) !=
            -1;
    const bool isPrinting = isAsked && SaysPrinting(outputPath);
    QFile::remove(outputPath);
    return isPrinting;
}
