// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "FixedPaths.h"
#include "RegularFile.h"
#include "StatusEvaluation.h"
#include "TrdGetPrinterStatus.h"
#include "UtilLog.h"

#include <QFile>

#include <cstring>
#include <sys/stat.h>

namespace {

// Labels under which support looks these lines up in logs; they do not follow the source.
constexpr char LogSource[] = "../TrdGetPrinterStatus";
constexpr int FileErrorLogLine = 268;
constexpr int UsbErrorLogLine = 216;

constexpr qint64 MsPerSecond = 1000;
constexpr qint64 NanosecondsPerMs = 1000000;

// Null when there is no such file. One stat and nothing else: taken as local time, it would cost look-ups of the
// time-zone file and lock traffic among the workers, every second.
QDateTime ModificationTime(const QByteArray& path)
{
    struct stat properties = {};
    if (stat(path.constData(), &properties) != 0) {
        return {};
    }
    // Unsigned, since a file may bear any time at all: far ones wrap round, which serves to tell them apart.
    const quint64 ms = static_cast<quint64>(properties.st_mtim.tv_sec) * MsPerSecond +
        static_cast<quint64>(properties.st_mtim.tv_nsec / NanosecondsPerMs);
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(ms), Qt::UTC);
}

} // namespace

int TrdGetPrinterStatus::GetPrinterStatusFile(QString name, bool force)
{
    try {
        unsigned long length = 0;
        switch (ReadStatusFile(name, force, length)) {
        case FileRead::Unchanged:
            return 1;
        case FileRead::Done:
            return EvaluateReply(FamilyOf(name), byReplyBuffer, length, stCurrent.stState) ? 0 : -1;
        case FileRead::Missing:
        case FileRead::Unreadable:
            return -1;
        }
        return -1;
    } catch (...) {
        WriteStringLog(LogSource, FileErrorLogLine, "GetPrinterStatusFile", QStringLiteral("throw error"));
        return 0;
    }
}

int TrdGetPrinterStatus::GetPrinterStatusUSB(QString /*name*/)
{
    try {
        unsigned long length = 0;
        return ReadStatusFile(stCurrent.stInfo.strPrinterName, false, length) == FileRead::Unchanged ? 1 : -1;
    } catch (...) {
        WriteStringLog(LogSource, UsbErrorLogLine, "GetPrinterStatusUSB", QStringLiteral("throw error"));
        return 0;
    }
}

// The time is remembered before the file is opened: one that cannot be opened is left alone until it changes again.
// Forgetting the time of a missing file makes its return be noticed whatever time it bears.
TrdGetPrinterStatus::FileRead TrdGetPrinterStatus::ReadStatusFile(const QString& name, bool force,
                                                                  unsigned long& length)
{
    const QByteArray& path = StatusFilePath(name);
    const QDateTime modified = ModificationTime(path);
    if (modified.isNull()) {
        tLastModified = QDateTime();
        return FileRead::Missing;
    }
    if (!force && modified == tLastModified) {
        return FileRead::Unchanged;
    }
    tLastModified = modified;
    const RegularFile file(path);
    if (!file.isOpen()) {
        return FileRead::Unreadable;
    }
    std::memset(byReplyBuffer, 0, sizeof byReplyBuffer);
    length = file.read(byReplyBuffer, sizeof byReplyBuffer);
    return FileRead::Done;
}

// In the file system's encoding, and made once a name: making it every second took half of the instructions and all
// of the heap allocations of a cycle in which nothing changes. A name with a zero character has the empty path, which
// is no file: the system would look at what stands before the zero.
const QByteArray& TrdGetPrinterStatus::StatusFilePath(const QString& name)
{
    if (byStatusFilePath.isNull() || name != strStatusFileName) {
        strStatusFileName = name;
        byStatusFilePath = name.contains(QChar::Null)
            ? QByteArray("")
            : FixedPaths::ConfigurationDirectory + QFile::encodeName(name) + FixedPaths::StatusFileExtension;
    }
    return byStatusFilePath;
}
