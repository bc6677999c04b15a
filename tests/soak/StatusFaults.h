// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Chance.h"
#include "SimulatedPrinter.h"

#include <QMap>
#include <QString>
#include <QVector>

/// What happens to the status files of the listed printers, one file at a time.
class StatusFaults
{
public:
    /// The printers stay the caller's.
    StatusFaults(QVector<SimulatedPrinter>& printers, const Chance& chance);

    /// One printer at random: every other time a good reply, else it cancels a job or its file suffers a fault.
    void disturb();
    /// Every printer reports that it is ready, in a good and new file.
    void clear();

    /// How often what was done, by name.
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
