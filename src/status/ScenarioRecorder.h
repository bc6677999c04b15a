// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "status/PrinterReport.h"

#include <QHash>
#include <QStringList>

#include <chrono>

/// Writes what list and status files say over time as a scenario for printer-simulator (docs/printer-simulator.md).
/// Status files are recorded byte for byte, as far as the assistant reads them.
class ScenarioRecorder
{
public:
    /// Records the state at `now`, counted from any fixed point and never decreasing.
    void record(const PrinterReports& reports, std::chrono::milliseconds now);
    /// Lets the last state stay until `now`.
    void end(std::chrono::milliseconds now);
    /// The scenario so far: UTF-8.
    QByteArray text() const;
    int sizeBytes() const
    {
        return m_declarations.size() + m_steps.size();
    }
    int stepCount() const
    {
        return m_stepCount;
    }
    /// The names that a scenario cannot express: empty, twice on the list, too long, with a slash or a control
    /// character. These printers are left out.
    const QStringList& refusedNames() const
    {
        return m_refusedNames;
    }

private:
    // What the scenario says of a printer so far: the value of each property, by its name.
    using Properties = QHash<QByteArray, QByteArray>;

    QList<PrinterReport> recordable(const PrinterReports& reports);
    QByteArray differences(const PrinterReport& report, bool isDeclaration);
    QByteArray listChanges(const QList<PrinterReport>& printers);
    void appendWait(std::chrono::milliseconds now);

    QHash<QString, Properties> m_known;
    QStringList m_listed; ///< in the order of the scenario's list
    QByteArray m_declarations;
    QByteArray m_steps;
    QStringList m_refusedNames;
    std::chrono::milliseconds m_lastStep{-1}; ///< negative: nothing was recorded yet
    int m_stepCount = 0;
};
