// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "UtilLog.h"

#include "AnnotatedMutex.h"
#include "FixedPaths.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <mutex>

namespace {

constexpr qint64 MaximumLogSizeBytes = 1048576;
constexpr std::size_t MessageBufferBytes = 1024;

// Read before the lock by every writer: while the log is off, a call costs this load and a branch.
std::atomic<bool> s_bEnable{false};
int s_iLogIndex = 0;
// Never destroyed: a worker that was let go may write a line while static objects are being destroyed.
QString& s_strLogNameTmp = *new QString;
QString& s_strLogName = *new QString;
// Serialises every write and every change of file.
AnnotatedMutex& s_mutexLog = *new AnnotatedMutex;

QString LogFileName(int index)
{
    return s_strLogNameTmp + QString::number(index) + QStringLiteral(".log");
}

QString LogLine(const char* file, int line, const char* function, const QString& message)
{
    return QDateTime::currentDateTime().toString(QStringLiteral("[yyyy-MM-dd hh:mm:ss.zzz] (")) +
        QString::fromUtf8(file) + QLatin1Char('@') + QString::number(line) + QLatin1Char(' ') +
        QString::fromUtf8(function) + QStringLiteral(") ") + message + QLatin1Char('\n');
}

// The line that pushes a file over the limit still belongs to it: the change comes with the next line.
void ContinueInNextFileWhenFull()
{
    if (QFile(s_strLogName).size() > MaximumLogSizeBytes) {
        ++s_iLogIndex;
        s_strLogName = LogFileName(s_iLogIndex);
    }
}

void AppendToLogFile(const QString& line)
{
    QFile file(s_strLogName);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        file.write(line.toLocal8Bit());
    }
}

void WriteLine(const char* file, int line, const char* function, const QString& format, va_list arguments)
{
    const std::lock_guard<AnnotatedMutex> lock(s_mutexLog);
    std::array<char, MessageBufferBytes> message{};
    // The format is the caller's: each is a literal at its call.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    vsnprintf(message.data(), message.size(), format.toLocal8Bit().constData(), arguments);
#pragma GCC diagnostic pop
    ContinueInNextFileWhenFull();
    AppendToLogFile(LogLine(file, line, function, QString::fromLocal8Bit(message.data())));
}

} // namespace

void SetLogEnable(bool bEnable)
{
    s_bEnable = bEnable;
    if (!bEnable) {
        s_strLogName.clear();
        return;
    }
    s_iLogIndex = 0;
    s_strLogNameTmp = QString::fromLatin1(FixedPaths::ToolDirectory);
    QDir().mkpath(s_strLogNameTmp);
    // The directory ends in a slash already; for the second one see docs/contract.md.
    s_strLogNameTmp += QStringLiteral("/") + QStringLiteral("log_tool") +
        QDateTime::currentDateTime().toString(QStringLiteral("_yyyyMMdd_hhmmss_"));
    s_strLogName = LogFileName(s_iLogIndex);
}

bool IsLogEnabled()
{
    return s_bEnable.load(std::memory_order_relaxed);
}

void WriteStringLog(const char* file, int line, const char* function, QString format, ...)
{
    if (!IsLogEnabled()) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    WriteLine(file, line, function, format, arguments);
    va_end(arguments);
}
