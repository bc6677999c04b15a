// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Chance.h"
#include "OpenedFiles.h"
#include "PathFaults.h"
#include "SimulatedPrinter.h"
#include "WorkerCount.h"

#include <QMap>
#include <QQueue>
#include <QString>
#include <QVector>

#include <functional>
#include <memory>

/// The faults of the printer list, and the number of status workers that the assistant has after them.
///
/// Changes that keep the number of printers may come at any time. The others come as a storm. A storm is either a
/// series of steps, each longer than the assistant's three seconds between two polls, or a list that flaps many times
/// between two polls, in which case the polls themselves are observed. So the number of workers is always known.
class ListFaults
{
public:
    /// `printers` must outlive the object.
    ListFaults(QVector<SimulatedPrinter>& printers, const Chance& chance);

    /// Writes the list of all printers.
    void clear();
    /// Changes a name, port, model or the order, or adds a defect that costs no printer.
    void alter();

    /// Starts the next kind of storm: a flapping list, a shorter list, a list that is lost in several ways.
    void beginStorm();
    /// Continues the storm; must be called many times a second. `nowMs` may count from any moment.
    void tick(qint64 nowMs);
    bool isStormy() const
    {
        return !m_steps.isEmpty() || m_opened != nullptr;
    }

    int expectedWorkers() const
    {
        return m_workers.workers();
    }
    /// The number of faults by name.
    const QMap<QString, int>& counts() const
    {
        return m_counts;
    }

private:
    struct Step
    {
        QString name;
        std::function<void()> apply;
        qint64 holdMs = 0;
    };

    void addStep(const QString& name, qint64 holdMs, std::function<void()> apply);
    void addReturnOfAll();
    void addFlapping();
    void addShorterList();
    void addLosses();
    void show(const QVector<SimulatedPrinter>& printers);
    void putInPlace(const QString& path) const;
    void followFlapping();

    QVector<SimulatedPrinter>& m_printers;
    Chance m_chance;
    WorkerCount m_workers;
    QMap<QString, int> m_counts;
    int m_storms = 0;
    QVector<PathFault> m_losses; ///< losses that come before any is repeated
    QQueue<Step> m_steps;
    qint64 m_nextStepMs = 0;
    std::unique_ptr<OpenedFiles> m_opened; ///< null unless the list flaps
    QVector<int> m_flappingLengths; ///< of the observed lists
};
