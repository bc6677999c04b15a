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

/// What happens to the printer list, and how many status workers it leaves the assistant with.
///
/// Changes that leave the number of printers alone may come at any time. Those that do not come as a storm: a series
/// of steps, each held for longer than the assistant's three seconds between two looks; or a list that flaps many
/// times between two looks, where the looks themselves are watched. So the number of workers is known after each.
class ListFaults
{
public:
    /// The printers stay the caller's.
    ListFaults(QVector<SimulatedPrinter>& printers, const Chance& chance);

    /// Writes the list of all printers.
    void clear();
    /// Another name, port, order or model, or a defect that costs no printer.
    void alter();

    /// The storms take turns: a flapping list, a shorter list, a list that is lost in several ways.
    void beginStorm();
    /// Goes on with the storm; to be called many times a second. `nowMs` may count from any moment.
    void tick(qint64 nowMs);
    bool isStormy() const
    {
        return !m_steps.isEmpty() || m_opened != nullptr;
    }

    int expectedWorkers() const
    {
        return m_workers.workers();
    }
    /// How often what was done, by name.
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
    QVector<PathFault> m_losses; ///< still to come before any comes again
    QQueue<Step> m_steps;
    qint64 m_nextStepMs = 0;
    std::unique_ptr<OpenedFiles> m_opened; ///< while the list flaps
    QVector<int> m_flappingLengths; ///< of the lists that are watched
};
