// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "PrinterFolder.h"

#include "SimulatedPrinter.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr char PackageDirectory[] = "/opt/tolmar/tolmar-printer-q727";
constexpr char CommandDirectory[] = "/tmp/bin";
constexpr qint64 MsPerSecond = 1000;
constexpr qint64 NanosecondsPerMs = 1000000;
constexpr char ArgumentEnd = '\037';
constexpr char CallEnd = '\036';

void Require(bool done, const QString& action)
{
    if (!done) {
        qFatal("cannot %s", qPrintable(action));
    }
}

qint64 NextModificationTime()
{
    static qint64 s_lastMs = 0;
    s_lastMs = std::max(s_lastMs + 1, QDateTime::currentMSecsSinceEpoch());
    return s_lastMs;
}

void PutFirstInPath(const QString& directory)
{
    const QByteArray path = qgetenv("PATH");
    const QByteArray first = QFile::encodeName(directory) + ':';
    if (!path.startsWith(first)) {
        qputenv("PATH", first + path);
    }
}

} // namespace

namespace PrinterFolder {

const char ConfigurationDirectory[] = "/opt/tolmar/tolmar-printer-q727/cfg/";
const char ToolDirectory[] = "/opt/tolmar/tolmar-printer-q727/tool/";
const char PrinterListPath[] = "/opt/tolmar/tolmar-printer-q727/cfg/printerlist.ini";

void Create()
{
    Remove();
    for (const char* directory : {ConfigurationDirectory, ToolDirectory}) {
        const QString path = QString::fromLatin1(directory);
        Require(QDir().mkpath(path), QStringLiteral("make ") + path);
    }
}

void Remove()
{
    const QString path = QString::fromLatin1(PackageDirectory);
    Require(QDir(path).removeRecursively(), QStringLiteral("remove ") + path);
}

void WritePrinterList(const QList<stPrinterInfo>& printers)
{
    QVector<SimulatedPrinter> listed;
    for (const stPrinterInfo& printer : printers) {
        listed.append({printer.strPrinterName, printer.enType, printer.iConnectType, printer.strPort, printer.strURI});
    }
    WritePrinterListText(EncodePrinterList(listed));
}

void WritePrinterListText(const QByteArray& text)
{
    WriteFile(QString::fromLatin1(PrinterListPath), text);
}

void RemovePrinterList()
{
    QFile::remove(QString::fromLatin1(PrinterListPath));
}

QString StatusFilePath(const QString& printerName)
{
    return QString::fromLatin1(ConfigurationDirectory) + printerName + QStringLiteral(".dat");
}

void WriteStatusFile(const QString& printerName, const QByteArray& content)
{
    WriteFile(StatusFilePath(printerName), content);
}

void WriteStatusFile(const QString& printerName, const QByteArray& content, qint64 modifiedMs)
{
    WriteFile(StatusFilePath(printerName), content, modifiedMs);
}

void RemoveStatusFile(const QString& printerName)
{
    QFile::remove(StatusFilePath(printerName));
}

void WriteFile(const QString& path, const QByteArray& content)
{
    WriteFile(path, content, NextModificationTime());
}

// Writes a temporary file and renames it, so that a reader sees either the old content and timestamp or the new ones.
void WriteFile(const QString& path, const QByteArray& content, qint64 modifiedMs)
{
    const QString newPath = path + QStringLiteral(".new");
    QFile file(newPath);
    Require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), QStringLiteral("write ") + path);
    file.close();
    SetModificationTime(newPath, modifiedMs);
    Require(rename(QFile::encodeName(newPath).constData(), QFile::encodeName(path).constData()) == 0,
            QStringLiteral("move into place ") + path);
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    Require(file.open(QIODevice::ReadOnly), QStringLiteral("read ") + path);
    return file.readAll();
}

void SetModificationTime(const QString& path, qint64 modifiedMs)
{
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = modifiedMs / MsPerSecond;
    times[1].tv_nsec = modifiedMs % MsPerSecond * NanosecondsPerMs;
    Require(utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0) == 0,
            QStringLiteral("set the time of ") + path);
}

qint64 ModificationTime(const QString& path)
{
    struct stat properties = {};
    Require(stat(QFile::encodeName(path).constData(), &properties) == 0, QStringLiteral("stat ") + path);
    return properties.st_mtim.tv_sec * MsPerSecond + properties.st_mtim.tv_nsec / NanosecondsPerMs;
}

stPrinterInfo Printer(const QString& name, const QString& port, const QString& uri, int connectType)
{
    stPrinterInfo info;
    info.strPrinterName = name;
    info.enType = QStringLiteral("K4510A");
    info.iConnectType = connectType;
    info.strPort = port;
    info.strURI = uri;
    return info;
}

stPrinterManager ListedPrinter(const QString& name, const QString& uri)
{
    return {Printer(name, QStringLiteral("usb0"), uri), stPrinterState()};
}

} // namespace PrinterFolder

FakeCommand::FakeCommand(const QString& name, const QString& body)
    : m_path(QString::fromLatin1(CommandDirectory) + QLatin1Char('/') + name)
    , m_recordPath(m_path + QStringLiteral(".calls"))
{
    Require(QDir().mkpath(QString::fromLatin1(CommandDirectory)), QStringLiteral("make the commands' folder"));
    PutFirstInPath(QString::fromLatin1(CommandDirectory));
    QFile::remove(m_recordPath);
    // One write per call, so that simultaneous calls do not mix.
    const QString script = QStringLiteral("#!/bin/sh\n"
                                          "call=\n"
                                          "end=$(printf '\\037')\n"
                                          "for argument; do call=$call$argument$end; done\n"
                                          "printf '%s\\036' \"$call\" >>'%1'\n")
                               .arg(m_recordPath);
    QFile file(m_path);
    Require(file.open(QIODevice::WriteOnly | QIODevice::Truncate), QStringLiteral("write ") + m_path);
    file.write((script + body + QLatin1Char('\n')).toUtf8());
    file.close();
    Require(chmod(QFile::encodeName(m_path).constData(), S_IRWXU) == 0, QStringLiteral("chmod ") + m_path);
}

FakeCommand::~FakeCommand()
{
    QFile::remove(m_path);
    QFile::remove(m_recordPath);
}

QList<QStringList> FakeCommand::calls() const
{
    QList<QStringList> calls;
    QFile record(m_recordPath);
    if (!record.open(QIODevice::ReadOnly)) {
        return calls; // not called yet
    }
    QList<QByteArray> lines = record.readAll().split(CallEnd);
    lines.removeLast(); // the rest after the last end
    for (const QByteArray& line : qAsConst(lines)) {
        QStringList arguments = QString::fromUtf8(line).split(QLatin1Char(ArgumentEnd));
        arguments.removeLast();
        calls.append(arguments);
    }
    return calls;
}
