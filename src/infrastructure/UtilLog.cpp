// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/UtilLog.h"

#include "infrastructure/AnnotatedMutex.h"
#include "infrastructure/FixedPaths.h"

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

// Writers read this flag before they take the lock: a call costs one load and a branch while the log is off.
std::atomic<bool> s_bEnable{false};
int s_iLogIndex = 0;
// Never destroyed: a worker that was left running may write a line while static objects are being destroyed.
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

// The line that exceeds the limit stays in its file; the next line starts a new one.
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
    // The compiler cannot check this format. Every caller passes a literal.
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
    // The directory already ends in a slash. See docs/contract.md for the second one.
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
