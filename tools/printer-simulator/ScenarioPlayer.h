// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
#pragma once

#include "Scenario.h"

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QHash>
#include <QString>

#include <chrono>
#include <functional>

// Writes the files of a scenario, frame by frame, as the driver package does: the printer list and a status file for
// each printer on it. A file is replaced as a whole, so that a reader finds the old bytes or the new ones.
class ScenarioPlayer
{
public:
    // Waits for the given time; false when the player is to stop.
    using Waiter = std::function<bool(std::chrono::milliseconds)>;

    ScenarioPlayer(Scenario scenario, const QDir& directory);

    // Plays until the end of the scenario or a stop, whereupon the files stay as they are. False when a file could
    // not be written or removed; ErrorText() then says which and why.
    bool Play(const Waiter& wait);
    QString ErrorText() const
    {
        return m_errorText;
    }

private:
    bool Show(const ScenarioFrame& frame);
    bool ShowList(const QByteArray& list);
    bool RemoveOldStatusFiles(const QHash<QString, int>& current);
    bool ReplaceFile(const QString& name, const QByteArray& bytes);
    QDateTime NextTimeStamp(const QString& path);

    const Scenario m_scenario;
    const QDir m_directory;
    QHash<QString, int> m_statusRevisions; // of the status files in place, by file name
    QByteArray m_list; // the printer list in place
    QDateTime m_lastTimeStamp;
    QString m_errorText;
};
