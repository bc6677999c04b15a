// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "AssistantProcess.h"
#include "Chance.h"
#include "ListFaults.h"
#include "PrinterFolder.h"
#include "SoakSample.h"
#include "StatusFaults.h"

#include <QElapsedTimer>
#include <QFile>
#include <QVector>

/// The layout of a run of a given length. Times in seconds.
struct SoakPlan
{
    explicit SoakPlan(double seconds);

    double duration;
    double warmUp; ///< faults occur, but nothing is judged yet
    double stormInterval; ///< between the starts of two storms of the printer list
    double settling; ///< after a storm, before samples count again
};

/// Runs the assistant among failing printers. Needs a sandbox with a screen and the desktop double, as an ordinary
/// user.
class Soak
{
public:
    Soak(const SoakPlan& plan, quint64 seed, const QString& csvPath);

    /// Returns false, with a line on stderr, if the assistant does not start, crashes or does not answer at the end.
    bool run();

private:
    bool start();
    bool rage();
    void disturb(int tick);
    void changeCancelCommand(const QByteArray& body);
    bool takeSample();
    bool showsAllPrinters();
    bool cancelsJobs();
    bool exits();
    bool leftNothingBehind() const;
    double seconds() const;

    const SoakPlan m_plan;
    QVector<SimulatedPrinter> m_printers;
    // Each has its own random numbers, so the order of their calls does not matter.
    StatusFaults m_statusFaults;
    ListFaults m_listFaults;
    Chance m_chance; ///< for the cancel command
    FakeCommand m_cancel;
    AssistantProcess m_assistant;
    QFile m_csv;
    SoakSample m_previous;
    QElapsedTimer m_timer;
    double m_nextStorm;
    double m_settledFrom;
};
