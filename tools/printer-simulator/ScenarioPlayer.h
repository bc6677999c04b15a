// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
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

    // Plays until the end of the scenario or a stop, after which the files stay as they are. False when a file could
    // not be written or removed; errorText() then says which and why.
    bool play(const Waiter& wait);
    QString errorText() const
    {
        return m_errorText;
    }

private:
    bool show(const ScenarioFrame& frame);
    bool showList(const QByteArray& list);
    bool removeOldStatusFiles(const QHash<QString, int>& current);
    bool replaceFile(const QString& name, const QByteArray& bytes);
    QDateTime nextTimestamp(const QString& path);

    const Scenario m_scenario;
    const QDir m_directory;
    QHash<QString, int> m_statusRevisions; // of the status files in place, by file name
    QByteArray m_list; // the printer list in place
    QDateTime m_lastTimestamp;
    QString m_errorText;
};
