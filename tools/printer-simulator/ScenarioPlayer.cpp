// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "ScenarioPlayer.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <utility>

namespace {

const char* const ListFileName = "printerlist.ini";
const char* const StatusFileSuffix = ".dat";

} // namespace

ScenarioPlayer::ScenarioPlayer(Scenario scenario, const QDir& directory)
    : m_scenario(std::move(scenario))
    , m_directory(directory)
{
}

bool ScenarioPlayer::play(const Waiter& wait)
{
    do {
        for (const ScenarioFrame& frame : m_scenario.frames) {
            if (frame.delay > std::chrono::milliseconds::zero() && !wait(frame.delay)) {
                return true;
            }
            if (!show(frame)) {
                return false;
            }
        }
    } while (m_scenario.repeats);
    return true;
}

// Status files are written before the list that names them and removed after it. A listed printer therefore always has
// its file, unless the scenario made it vanish.
bool ScenarioPlayer::show(const ScenarioFrame& frame)
{
    QHash<QString, int> current;
    for (const SimulatedPrinter& printer : frame.printers) {
        if (!printer.listed || printer.content == StatusFileContent::Missing) {
            continue;
        }
        const QString name = printer.name + QLatin1String(StatusFileSuffix);
        current.insert(name, printer.revision);
        if (m_statusRevisions.value(name) == printer.revision) {
            continue;
        }
        if (!replaceFile(name, StatusFileBytes(printer))) {
            return false;
        }
        m_statusRevisions.insert(name, printer.revision);
    }
    return showList(EncodePrinterList(frame.printers)) && removeOldStatusFiles(current);
}

bool ScenarioPlayer::showList(const QByteArray& list)
{
    if (list == m_list) {
        return true;
    }
    m_list = list;
    return replaceFile(QLatin1String(ListFileName), list);
}

bool ScenarioPlayer::removeOldStatusFiles(const QHash<QString, int>& current)
{
    const QStringList names = m_statusRevisions.keys();
    for (const QString& name : names) {
        if (current.contains(name)) {
            continue;
        }
        QFile file(m_directory.filePath(name));
        if (!file.remove() && file.exists()) {
            m_errorText = QStringLiteral("cannot remove %1: %2").arg(file.fileName(), file.errorString());
            return false;
        }
        m_statusRevisions.remove(name);
    }
    return true;
}

bool ScenarioPlayer::replaceFile(const QString& name, const QByteArray& bytes)
{
    const QString path = m_directory.filePath(name);
    const QDateTime timeStamp = nextTimestamp(path);
    QSaveFile file(path);
    // The timestamp is set after Qt has flushed its buffer, because each write changes the timestamp.
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
        file.setFileTime(timeStamp, QFileDevice::FileModificationTime) && file.commit();
    if (!isWritten) {
        m_errorText = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
    }
    return isWritten;
}

// Readers notice a new status reply only by the file's timestamp in milliseconds. The kernel's clock for timestamps
// ticks only every few milliseconds. Each file therefore gets an explicit timestamp, later than all timestamps given
// before and later than that of the file that it replaces.
QDateTime ScenarioPlayer::nextTimestamp(const QString& path)
{
    QDateTime stamp = QDateTime::currentDateTimeUtc();
    const QDateTime replaced = QFileInfo(path).lastModified();
    if (m_lastTimestamp.isValid()) {
        stamp = std::max(stamp, m_lastTimestamp.addMSecs(1));
    }
    if (replaced.isValid()) {
        stamp = std::max(stamp, replaced.toUTC().addMSecs(1));
    }
    m_lastTimestamp = stamp;
    return stamp;
}
