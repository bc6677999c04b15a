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
// each listed printer. Each file is replaced as a whole, so that a reader sees either the old or the new bytes.
class ScenarioPlayer
{
public:
    // Waits for the given time. Returns false if the player must stop.
    using Waiter = std::function<bool(std::chrono::milliseconds)>;

    ScenarioPlayer(Scenario scenario, const QDir& directory);

    // Plays until the scenario ends or is stopped, and leaves the files as they are. Returns false if a file could not
    // be written or removed; errorText() then gives the file and the reason.
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
    QHash<QString, int> m_statusRevisions; // of the existing status files, by file name
    QByteArray m_list; // content of the current printer list
    QDateTime m_lastTimestamp;
    QString m_errorText;
};
