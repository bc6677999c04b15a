// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Chance.h"
#include "SimulatedPrinter.h"

#include <QMap>
#include <QString>
#include <QVector>

/// The faults of the listed printers' status files, one file at a time.
class StatusFaults
{
public:
    /// `printers` must outlive the object.
    StatusFaults(QVector<SimulatedPrinter>& printers, const Chance& chance);

    /// Disturbs a random printer: half of the time with a good reply, otherwise with a job cancellation or a fault of
    /// its file.
    void disturb();
    /// Makes every printer report ready, in a good, new file.
    void clear();

    /// The number of disturbances by name.
    const QMap<QString, int>& counts() const
    {
        return m_counts;
    }

private:
    const char* put(SimulatedPrinter& printer, const QString& path);

    QVector<SimulatedPrinter>& m_printers;
    Chance m_chance;
    QMap<QString, int> m_counts;
};
