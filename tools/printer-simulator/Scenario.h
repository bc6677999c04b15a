// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include "SimulatedPrinter.h"

#include <QString>
#include <QVector>

#include <chrono>

// The state of all printers at one moment. Listed printers are in the order of the printer list; the others may stand
// anywhere.
struct ScenarioFrame
{
    std::chrono::milliseconds delay = std::chrono::milliseconds::zero(); // since the previous frame
    QVector<SimulatedPrinter> printers = {};
};

struct Scenario
{
    QVector<ScenarioFrame> frames = {}; // the first one is the start
    bool repeats = false; // the first frame follows the last one
};

struct ScenarioError
{
    int line = 0; // from 1
    QString reason = {};
};
